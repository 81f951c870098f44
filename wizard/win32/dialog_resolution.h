// Another resolution for a window whose controls keep their places and sizes in inches.
#pragma once

#include <windows.h>

#include <functional>

namespace wizard::win32 {

/// Gives the window the place that the system suggests with a resolution (pixels to the inch), and its controls the
/// same places in inches as before, and the fonts that `font` names for them.
void take_resolution(HWND window, UINT from, UINT to, const RECT& suggested, const std::function<HFONT(HWND)>& font);

}  // namespace wizard::win32
