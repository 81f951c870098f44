// How a control's native window shows the properties that the control has in the form.
#pragma once

#include <windows.h>

#include <string>

#include "wizard/form/form.h"

namespace wizard::win32 {

/// Shows one property in the window; those that need more than the window (font, bounds, picture, tip), and those that
/// this kind of control does not show, it leaves alone.
void show_property(HWND window, const form::Control& control, form::Property property);

/// Shows how far a scroll bar reaches: what is seen at once, the last position, and the present one, in any unit. One
/// that has nowhere to go takes no input.
void show_scroll_range(HWND bar, int page, int last, int position);

/// What stands in the window now; empty where it has no text.
std::string window_text(HWND window);

}  // namespace wizard::win32
