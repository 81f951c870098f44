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

/// Moves the pointer along with the buttons: SetCursorPos would move it by way of the display, some time later.
INPUT pointer_at(HWND window, POINT place) {
  constexpr int whole_screen = 65536;
  ClientToScreen(window, &place);
  INPUT input = mouse_input(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
  // The middle of the pixel.
  input.mi.dx = (place.x * 2 + 1) * (whole_screen / 2) / GetSystemMetrics(SM_CXSCREEN);
  input.mi.dy = (place.y * 2 + 1) * (whole_screen / 2) / GetSystemMetrics(SM_CYSCREEN);
  return input;
}

void send(std::vector<INPUT> inputs) {
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof inputs.front());
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
  send({pointer_at(window, place), mouse_input(MOUSEEVENTF_LEFTDOWN), mouse_input(MOUSEEVENTF_LEFTUP)});
}

void turn_wheel(HWND window, int notches) {
  send({pointer_at(window, middle(window)), mouse_input(MOUSEEVENTF_WHEEL, notches * WHEEL_DELTA)});
}

}  // namespace window_driver
