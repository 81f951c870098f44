// Text at the window's edge: UTF-8 inside, UTF-16 in windows.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace wizard::win32 {

std::wstring wide(std::string_view text);
std::string narrow(std::wstring_view text);
/// The text of a window; empty where it has none.
std::string window_text(HWND window);

}  // namespace wizard::win32
