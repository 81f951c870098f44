#include "support/win32/wide.h"

#include <windows.h>

#include "support/encoding.h"

namespace support {

namespace {

/// The text that a system call writes. The call gets a buffer and its size, and returns the length or the size that it
/// needs.
template <typename Call>
std::wstring filled(Call call) {
  std::wstring text(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = call(text.data(), static_cast<DWORD>(text.size()));
    const bool fits = length < text.size();
    text.resize(length);
    if (fits) return text;
  }
}

}  // namespace

std::wstring wide(std::string_view utf8) {
  const std::u16string units = utf16_from_utf8(utf8);
  return {units.begin(), units.end()};
}

std::string narrow(std::wstring_view text) { return utf8_from_utf16(std::u16string(text.begin(), text.end())); }

std::wstring wide_path(std::string_view path) {
  if (path.empty() || path.find('\0') != std::string_view::npos) return {};
  const std::wstring given = wide(path);
  return filled([&](wchar_t* buffer, DWORD size) { return GetFullPathNameW(given.c_str(), size, buffer, nullptr); });
}

std::optional<std::string> ansi_path(std::string_view path) {
  const std::wstring full = wide_path(path);
  if (full.empty()) return std::nullopt;
  const auto shortened = [&] {
    return filled([&](wchar_t* buffer, DWORD size) { return GetShortPathNameW(full.c_str(), buffer, size); });
  };
  std::string text = narrow(full);
  if (!fits_cp1252(text)) text = narrow(shortened());
  if (text.empty() || !fits_cp1252(text)) return std::nullopt;
  return cp1252_from_utf8(text);
}

}  // namespace support
