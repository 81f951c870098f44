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

/// The separator where it is one ASCII character; otherwise what users type for the narrow blank or the apostrophe that
/// newer versions of the system write.
char thousands_separator() {
  const std::string text = locale_text(LOCALE_STHOUSAND);
  if (text.size() == 1) return text.front();
  if (text == "\u2019") return '\'';
  return text.empty() ? '\0' : ' ';
}

}  // namespace

std::unique_ptr<Registry> host_registry(std::string_view hive_path) {
  if (!hive_path.empty()) return open_hive(hive_path);
  return std::make_unique<Win32Registry>();
}

UserLocale host_locale() {
  UserLocale locale;
  const std::string decimal_separator = locale_text(LOCALE_SDECIMAL);
  if (decimal_separator.size() == 1) locale.decimal_separator = decimal_separator.front();
  locale.thousands_separator = thousands_separator();
  // Set by hand to the same character, only one of them can be meant.
  if (locale.thousands_separator == locale.decimal_separator) locale.thousands_separator = '\0';
  const std::string short_date = locale_text(LOCALE_SSHORTDATE);
  const std::string long_time = locale_text(LOCALE_STIMEFORMAT);
  if (!short_date.empty()) locale.short_date = short_date;
  if (!long_time.empty()) locale.long_time = long_time;
  return locale;
}

}  // namespace support
