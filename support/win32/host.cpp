#include "support/host.h"

#include <windows.h>

#include <array>

#include "support/hive_registry.h"
#include "support/win32/wide.h"
#include "support/win32/win32_registry.h"

namespace support {

namespace {

std::string locale_text(LCTYPE type) {
  std::array<wchar_t, 128> buffer{};
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buffer.data(), static_cast<int>(buffer.size()));
  return length > 0 ? narrow(buffer.data()) : std::string();
}

/// Separators that are no ASCII character are typed as the blank or apostrophe they look like.
char separator(LCTYPE type, char otherwise) {
  const std::string text = locale_text(type);
  if (text.empty()) return otherwise;
  if (static_cast<unsigned char>(text.front()) < 0x80) return text.front();
  return text == "\u2019" ? '\'' : ' ';
}

}  // namespace

std::unique_ptr<Registry> host_registry(std::string_view hive_path) {
  if (!hive_path.empty()) return open_hive(hive_path);
  return std::make_unique<Win32Registry>();
}

UserLocale host_locale() {
  UserLocale locale;
  locale.decimal_separator = separator(LOCALE_SDECIMAL, locale.decimal_separator);
  locale.thousands_separator = separator(LOCALE_STHOUSAND, '\0');
  const std::string short_date = locale_text(LOCALE_SSHORTDATE);
  const std::string long_time = locale_text(LOCALE_STIMEFORMAT);
  if (!short_date.empty()) locale.short_date = short_date;
  if (!long_time.empty()) locale.long_time = long_time;
  return locale;
}

void YieldToInput() {
  if (GetInputState() == 0) return;
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    if (message.message == WM_QUIT) {
      // Not ours to take: the window's own loop ends by it.
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace support
