// Keys and mouse, as the user's own.
#pragma once

#include <windows.h>

#include <string_view>

namespace window_driver {

/// Presses and releases a virtual key; `held` (Alt or Shift) is held down meanwhile.
void press_key(WORD key, WORD held = 0);

/// Holds a virtual key down for so many repetitions, 20 ms each; `held` (Alt or Shift) is held down meanwhile.
void hold_key(WORD key, int repetitions, WORD held = 0);

/// Types characters.
void type_keys(std::string_view text);

/// Clicks into the middle of a window, or at a place inside it (pixels).
void click_mouse(HWND window);
void click_mouse(HWND window, POINT place);

/// The first presses the left button at a place inside a window, the second moves to another place without changing the
/// button, the third releases it.
void press_mouse(HWND window, POINT place);
void draw_mouse(HWND window, POINT place);
void release_mouse();

/// Clicks twice, as fast as can be.
void double_click_mouse(HWND window);

/// Sets the time within which two clicks are a double click, for programs that are started meanwhile; restores it at
/// the end.
class DoubleClickTime {
 public:
  explicit DoubleClickTime(UINT milliseconds);
  ~DoubleClickTime();
  DoubleClickTime(const DoubleClickTime&) = delete;
  DoubleClickTime& operator=(const DoubleClickTime&) = delete;

 private:
  UINT before_;
};

/// Turns the wheel over a window; a negative number turns it towards the user.
void turn_wheel(HWND window, int notches);

}  // namespace window_driver
