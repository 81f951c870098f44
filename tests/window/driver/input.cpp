#include "tests/window/driver/input.h"

#include <vector>

#include "support/win32/wide.h"

namespace window_driver {
namespace {

INPUT key_input(WORD key, WORD character, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = key != 0 ? static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC)) : character;
  input.ki.dwFlags = flags;
  return input;
}

INPUT mouse_input(DWORD flags, int data = 0) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  input.mi.mouseData = static_cast<DWORD>(data);
  return input;
}

void send(std::vector<INPUT> inputs) {
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof inputs.front());
}

/// The display moves the pointer a little later than it is told to; a click before that would go to the old place.
void point_at(HWND window, POINT place) {
  constexpr DWORD settling_time = 30;
  ClientToScreen(window, &place);
  SetCursorPos(place.x, place.y);
  Sleep(settling_time);
  SetCursorPos(place.x, place.y);
}

void set_double_click_time(UINT milliseconds) {
  SystemParametersInfoW(SPI_SETDOUBLECLICKTIME, milliseconds, nullptr, SPIF_UPDATEINIFILE);
}

POINT middle(HWND window) {
  RECT inside;
  GetClientRect(window, &inside);
  return {inside.right / 2, inside.bottom / 2};
}

}  // namespace

void press_key(WORD key, WORD held) {
  std::vector<INPUT> inputs;
  if (held != 0) inputs.push_back(key_input(held, 0, 0));
  inputs.push_back(key_input(key, 0, 0));
  inputs.push_back(key_input(key, 0, KEYEVENTF_KEYUP));
  if (held != 0) inputs.push_back(key_input(held, 0, KEYEVENTF_KEYUP));
  send(inputs);
}

void hold_key(WORD key, int repetitions, WORD held) {
  constexpr DWORD interval = 20;
  if (held != 0) send({key_input(held, 0, 0)});
  for (int n = 0; n <= repetitions; ++n) {
    send({key_input(key, 0, 0)});
    Sleep(interval);
  }
  send({key_input(key, 0, KEYEVENTF_KEYUP)});
  if (held != 0) send({key_input(held, 0, KEYEVENTF_KEYUP)});
}

void type_keys(std::string_view text) {
  std::vector<INPUT> inputs;
  for (const wchar_t unit : support::wide(text)) {
    inputs.push_back(key_input(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE));
    inputs.push_back(key_input(0, static_cast<WORD>(unit), KEYEVENTF_UNICODE | KEYEVENTF_KEYUP));
  }
  if (!inputs.empty()) send(inputs);
}

void click_mouse(HWND window) { click_mouse(window, middle(window)); }

void click_mouse(HWND window, POINT place) {
  point_at(window, place);
  send({mouse_input(MOUSEEVENTF_LEFTDOWN), mouse_input(MOUSEEVENTF_LEFTUP)});
}

void press_mouse(HWND window, POINT place) {
  point_at(window, place);
  send({mouse_input(MOUSEEVENTF_LEFTDOWN)});
}

void draw_mouse(HWND window, POINT place) { point_at(window, place); }

void release_mouse() { send({mouse_input(MOUSEEVENTF_LEFTUP)}); }

void double_click_mouse(HWND window) {
  point_at(window, middle(window));
  send({mouse_input(MOUSEEVENTF_LEFTDOWN), mouse_input(MOUSEEVENTF_LEFTUP), mouse_input(MOUSEEVENTF_LEFTDOWN),
        mouse_input(MOUSEEVENTF_LEFTUP)});
}

DoubleClickTime::DoubleClickTime(UINT milliseconds) : before_(GetDoubleClickTime()) {
  set_double_click_time(milliseconds);
}
DoubleClickTime::~DoubleClickTime() { set_double_click_time(before_); }

void turn_wheel(HWND window, int notches) {
  point_at(window, middle(window));
  send({mouse_input(MOUSEEVENTF_WHEEL, notches * WHEEL_DELTA)});
}

}  // namespace window_driver
