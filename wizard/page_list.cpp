#include "wizard/page_list.h"

#include <algorithm>

#include "support/encoding.h"

namespace wizard {

std::span<const Page* const> all_pages() noexcept { return pages_in_order; }

const Page* find_page(std::string_view step) {
  std::string name(step);
  std::erase(name, '-');
  const auto match = std::ranges::find_if(
      pages_in_order, [&](const Page* page) { return support::equal_ignoring_case(page->tag, name); });
  return match == std::end(pages_in_order) ? nullptr : *match;
}

int page_index(const Page& page) {
  return static_cast<int>(std::ranges::find(pages_in_order, &page) - std::begin(pages_in_order));
}

std::string default_steps(bool professional) {
  const auto edition = static_cast<unsigned>(professional ? Edition::Professional : Edition::Standard);
  std::string steps;
  for (const Page* page : pages_in_order) {
    if ((static_cast<unsigned>(page->shown_in) & edition) == 0) continue;
    steps += (steps.empty() ? "" : "|") + std::string(page->step.empty() ? page->tag : page->step);
  }
  return steps;
}

void start_animation(form::Form& form, const Page* page) {
  form::Control& timer = form.at("Timer1");
  // The timer is stopped first, so that the same interval starts again.
  timer.set_interval(0);
  if (page) timer.set_interval(page->animation.interval);
}

void advance_animation(Context& context, const Page* page) {
  if (page && page->animation.tick) page->animation.tick(context);
}

void blink(form::Form& form, std::string_view picture) {
  form::Control& mark = form.at(picture);
  mark.set_visible(!mark.visible());
}

}  // namespace wizard
