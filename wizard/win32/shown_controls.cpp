#include "wizard/win32/shown_controls.h"

#include <utility>

#include "wizard/form_layout.h"
#include "wizard/win32/control_window.h"
#include "wizard/win32/twips.h"

namespace wizard::win32 {
namespace {

/// How far a combo box drops its list, in twips.
constexpr std::int32_t list_height = 3000;
/// What a combo box draws around its text, in pixels of any resolution.
constexpr int list_edge = 4;

}  // namespace

ShownControl& ShownControls::add(const form::Control& control) {
  shown_.push_back(std::make_unique<ShownControl>());
  ShownControl& shown = *shown_.back();
  shown.control = form_.find(control.name(), control.index());
  shown.id = control_id(control, shown_.size() - 1);
  by_control_[&control] = &shown;
  return shown;
}

void ShownControls::create_window(ShownControl& shown, HWND form_window, const RECT& place, UINT dpi) {
  shown.placed = window_place(*shown.control, place, dpi);
  shown.window =
      create_control_window(*shown.control, container_window(*shown.control, form_window), shown.id, shown.placed);
  if (shown.window != nullptr) by_window_[shown.window] = &shown;
}

ShownControl* ShownControls::of(const form::Control& control) const {
  const auto found = by_control_.find(&control);
  return found == by_control_.end() ? nullptr : found->second;
}

ShownControl* ShownControls::of(HWND window) const {
  const auto found = by_window_.find(window);
  return found == by_window_.end() ? nullptr : found->second;
}

HWND ShownControls::container_window(const form::Control& control, HWND form_window) const {
  for (const form::Control* at = control.parent(); at != nullptr; at = at->parent()) {
    const ShownControl* around = of(*at);
    if (is_container(*at) && around != nullptr) return around->window;
  }
  return form_window;
}

const form::Control& outermost(const form::Control& control) {
  const form::Control* at = &control;
  while (at->parent() != nullptr) at = at->parent();
  return *at;
}

bool is_seen(const form::Control& control) {
  for (const form::Control* at = &control; at != nullptr; at = at->parent()) {
    if (!at->visible()) return false;
  }
  return true;
}

RECT place_in_container(const form::Control& control, UINT dpi) {
  form::Bounds bounds = control.bounds();
  // Group boxes are no containers: what lies in them is a neighbour of theirs.
  for (const form::Control* at = control.parent(); at != nullptr && !is_container(*at); at = at->parent()) {
    bounds.left += at->bounds().left;
    bounds.top += at->bounds().top;
  }
  return pixels(bounds, dpi);
}

RECT window_place(const form::Control& control, RECT place, UINT dpi) {
  if (control.kind() == form::Kind::ComboBox && IsRectEmpty(&place) == 0) place.bottom += pixels(list_height, dpi);
  return place;
}

void fit_combo_box(const ShownControl& shown, UINT dpi) {
  const int height = shown.placed.bottom - shown.placed.top - pixels(list_height, dpi) - 2 * list_edge;
  SendMessageW(shown.window, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), height);
}

namespace {

/// What lies below is erased when all is painted, not before: the images of a sequence take each other's place.
void set_image(const ShownControl& shown, const RECT& place, UINT flags) {
  const HWND holder = GetParent(shown.window);
  const RECT before = std::exchange(shown.placed, place);
  SetWindowPos(shown.window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
               flags | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW | SWP_NOCOPYBITS);
  InvalidateRect(holder, &before, TRUE);
  InvalidateRect(shown.window, nullptr, FALSE);
}

}  // namespace

void show_image(const ShownControl& shown) {
  set_image(shown, shown.placed, shown.control->visible() ? SWP_SHOWWINDOW : SWP_HIDEWINDOW);
}

void place(const ShownControl& shown, RECT place, UINT dpi) {
  if (shown.window == nullptr) return;
  place = window_place(*shown.control, place, dpi);
  if (EqualRect(&place, &shown.placed) != 0) return;
  const SIZE size{place.right - place.left, place.bottom - place.top};
  if (shown.control->kind() == form::Kind::Image) return set_image(shown, place, 0);
  // A new window has no size, and paints itself.
  const bool keeps_size = IsRectEmpty(&shown.placed) != 0 || (size.cx == shown.placed.right - shown.placed.left &&
                                                              size.cy == shown.placed.bottom - shown.placed.top);
  shown.placed = place;
  if (shown.control->kind() == form::Kind::ComboBox) fit_combo_box(shown, dpi);
  SetWindowPos(shown.window, nullptr, place.left, place.top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
  // What is centred or wrapped stands elsewhere in another size.
  if (!keeps_size) InvalidateRect(shown.window, nullptr, TRUE);
}

}  // namespace wizard::win32
