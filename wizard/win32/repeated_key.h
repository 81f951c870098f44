// Keys that are held down.
#pragma once

#include <windows.h>

namespace wizard::win32 {

/// True for the messages that a key sends again and again after its first one.
inline bool is_repeated_key(const MSG& message) noexcept {
  constexpr LPARAM was_down_before = 1 << 30;
  switch (message.message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_CHAR:
    case WM_SYSCHAR:
      return (message.lParam & was_down_before) != 0;
    default:
      return false;
  }
}

}  // namespace wizard::win32
