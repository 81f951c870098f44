#include "wizard/win32/window_layout.h"

#include <algorithm>

#include "wizard/win32/step_list_window.h"

namespace wizard::win32 {
namespace {

// Pixels at 96 to the inch.
constexpr int side_width = 196, least_page_width = 440, least_illustration = 96;
constexpr int bar_margin = 14, button_gap = 8, least_bar_button = 100, bar_button_sides = 32, bar_button_room = 14;
constexpr int widest_progress = 180, progress_height = 16;

int button_width(const form::Form& form, const TextSizes& sizes) {
  int widest = sizes.scaled(least_bar_button);
  for (const form::Control* button : form.array("Command1"))
    widest = std::max(widest, sizes.width(*button) + sizes.scaled(bar_button_sides));
  return widest;
}

/// The last button stands a little apart: it leads out. Buttons that do not fit beside each other get narrower, and
/// their texts wrap.
void place_bar(WindowParts& parts, const form::Form& form, const TextSizes& sizes, SIZE window) {
  const int margin = sizes.scaled(bar_margin), gap = sizes.scaled(button_gap);
  const int room = window.cx - 3 * margin - 2 * gap;
  const int width = std::min(button_width(form, sizes), room / 3);
  int text = 0;
  for (const form::Control* button : form.array("Command1"))
    text = std::max({text, sizes.line(*button), sizes.height(*button, width - sizes.scaled(bar_button_room))});
  const int height = text + sizes.scaled(bar_button_room);
  const int top = window.cy - margin - height;
  parts.bar = {0, top - margin, window.cx, window.cy};
  int right = window.cx - margin;
  const auto place = [&](RECT& button, int behind) {
    button = {right - width, top, right, top + height};
    right -= width + behind;
  };
  place(parts.cancel, margin + gap);
  place(parts.next, gap);
  place(parts.back, margin + gap);
  const int progress = std::min(right - margin, sizes.scaled(widest_progress)), bar = sizes.scaled(progress_height);
  if (progress >= sizes.scaled(least_bar_button) / 2)
    parts.progress = {margin, top + (height - bar) / 2, margin + progress, top + (height - bar) / 2 + bar};
}

}  // namespace

WindowParts place_parts(const form::Form& form, const TextSizes& sizes, SIZE window) {
  WindowParts parts{};
  place_bar(parts, form, sizes, window);
  parts.page = {0, 0, window.cx, parts.bar.top};
  const int side = sizes.with_text(side_width);
  if (window.cx - side < sizes.with_text(least_page_width)) return parts;
  parts.page.left = side;
  const form::Control* steps = form.find("lstSteps");
  const int list = steps == nullptr ? 0 : (static_cast<int>(steps->items().size()) + 1) * sizes.with_text(step_height);
  const int illustration = std::max<int>(parts.bar.top - list, 0);
  parts.steps = {0, illustration, side, parts.bar.top};
  if (illustration >= sizes.scaled(least_illustration))
    parts.illustration = {0, 0, side, illustration};
  else
    parts.steps.top = 0;
  return parts;
}

}  // namespace wizard::win32
