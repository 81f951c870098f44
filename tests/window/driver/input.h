// Keys and mouse, as the user's own.
#pragma once

#include <windows.h>

#include <string_view>

namespace window_driver {

/// Presses and releases a virtual key, with Alt or Shift held down where asked.
void press_key(WORD key, WORD held = 0);

/// Holds a virtual key down for that many of its repetitions, 20 ms each, with Alt or Shift where asked.
void hold_key(WORD key, int repetitions, WORD held = 0);

/// Types characters.
void type_keys(std::string_view text);

/// Clicks into the middle of a window, or at a place inside it (pixels).
void click_mouse(HWND window);
void click_mouse(HWND window, POINT place);

/// Presses the left button at a place inside a window; draws to another place, with the button as it is; lets go.
void press_mouse(HWND window, POINT place);
void draw_mouse(HWND window, POINT place);
void release_mouse();

/// Clicks twice, as fast as can be.
void double_click_mouse(HWND window);

/// The time within which two clicks are a double click, until it is put back: for programs that are started meanwhile.
class DoubleClickTime {
 public:
  explicit DoubleClickTime(UINT milliseconds);
  ~DoubleClickTime();
  DoubleClickTime(const DoubleClickTime&) = delete;
  DoubleClickTime& operator=(const DoubleClickTime&) = delete;

 private:
  UINT before_;
};

/// Turns the wheel over a window; negative towards the user.
void turn_wheel(HWND window, int notches);

}  // namespace window_driver
