#include "wizard/win32/page_images.h"

#include <algorithm>

#include "wizard/win32/look.h"

namespace wizard::win32 {
namespace {

bool is_image_beside(const form::Control& control, const form::Control& image) {
  return control.kind() == form::Kind::Image && control.parent() == image.parent();
}

/// The part of a picture that has the shape of its place: nothing is drawn out of shape. Of tall pictures, what they
/// show stands a little above the middle.
RECT part_of_shape(const RECT& place, int width, int height) {
  const int across = std::max<int>(place.right - place.left, 1), down = std::max<int>(place.bottom - place.top, 1);
  const int wanted_height = std::min(height, MulDiv(width, down, across));
  const int wanted_width = std::min(width, MulDiv(height, across, down));
  const int left = (width - wanted_width) / 2,
            top = std::min(std::max(height * 43 / 100 - wanted_height / 2, 0), height - wanted_height);
  return {left, top, left + wanted_width, top + wanted_height};
}

void draw_overlapping_images(HDC target, const form::Control& image, const ShownControls& controls) {
  const RECT place = place_in_container(image, picture_dpi);
  for (const auto& shown : controls) {
    if (!is_image_beside(*shown->control, image) || !shown->control->visible()) continue;
    RECT there = place_in_container(*shown->control, picture_dpi), common;
    if (IntersectRect(&common, &there, &place) == 0) continue;
    if (!shown->picture) continue;
    OffsetRect(&there, -place.left, -place.top);
    draw_picture(target, there, shown->picture);
  }
}

}  // namespace

/// Composed at the resolution of the pictures and then scaled as a whole: transparent edges stay smooth, and nothing is
/// scaled twice.
void draw_image(const DRAWITEMSTRUCT& request, const ShownControls& controls) {
  const ShownControl* shown = controls.of(request.hwndItem);
  if (shown == nullptr) return;
  const RECT place = place_in_container(*shown->control, picture_dpi);
  const int width = place.right - place.left, height = place.bottom - place.top;
  const MemoryContext memory(CreateCompatibleDC(request.hDC));
  const Bitmap canvas(CreateCompatibleBitmap(request.hDC, width, height));
  const Selection selection(memory.get(), canvas.get());
  const RECT whole{0, 0, width, height};
  FillRect(memory.get(), &whole, page_brush());
  draw_overlapping_images(memory.get(), *shown->control, controls);
  stretch(request.hDC, request.rcItem, memory.get(), part_of_shape(request.rcItem, width, height));
}

void redraw_images_around(const form::Control& image, const ShownControls& controls) {
  for (const auto& shown : controls) {
    if (is_image_beside(*shown->control, image)) InvalidateRect(shown->window, nullptr, FALSE);
  }
}

}  // namespace wizard::win32
