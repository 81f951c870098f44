// The images of a page. They overlap (the hand over the picture that it points at, the highlight over the picture that
// it marks), so each draws whatever images lie in its place, in the form's order, as far as they are loaded.
#pragma once

#include <windows.h>

#include "wizard/win32/shown_controls.h"

namespace wizard::win32 {

/// Draws the image control that an owner-draw request is about.
void draw_image(const DRAWITEMSTRUCT& request, const ShownControls& controls);

/// Has the images drawn again that may overlap this one.
void redraw_images_around(const form::Control& image, const ShownControls& controls);

}  // namespace wizard::win32
