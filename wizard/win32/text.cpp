#include "wizard/win32/text.h"

#include "support/encoding.h"

namespace wizard::win32 {

std::wstring wide(std::string_view text) {
  const std::u16string units = support::utf16_from_utf8(text);
  return {units.begin(), units.end()};
}

std::string narrow(std::wstring_view text) {
  return support::utf8_from_utf16(std::u16string(text.begin(), text.end()));
}

std::string window_text(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return narrow(text);
}

}  // namespace wizard::win32
