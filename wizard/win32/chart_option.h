// A chart as a check box with a picture: a native check box, so that keys and screen readers work, that draws itself.
#pragma once

#include <windows.h>

#include "wizard/win32/picture.h"

namespace wizard::win32 {

/// Makes a check box draw its thumbnail, its check mark in the corner, its title in a strip below. `title_height` in
/// pixels. Called again, it takes the new height.
void draw_as_chart(HWND check_box, int title_height);

/// The thumbnail; in place of an empty one stands the title.
void set_thumbnail(HWND check_box, Picture thumbnail);

}  // namespace wizard::win32
