// Keys and mouse, as the user's own.
#pragma once

#include <windows.h>

#include <string_view>

namespace window_driver {

/// Presses and releases a virtual key, with Alt or Shift held down where asked.
void press_key(WORD key, WORD held = 0);

/// Types characters.
void type_keys(std::string_view text);

/// Clicks into the middle of a window, or at a place inside it (pixels).
void click_mouse(HWND window);
void click_mouse(HWND window, POINT place);

/// Turns the wheel over a window; negative towards the user.
void turn_wheel(HWND window, int notches);

}  // namespace window_driver
