#include "support/host.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "support/hive_registry.h"
#include "support/text.h"
#include "support/win32/ini_files.h"
#include "support/win32/wide.h"
#include "support/win32/win32_registry.h"

namespace support {

namespace {

std::string locale_text(LCTYPE type) {
  std::array<wchar_t, 128> buffer{};
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buffer.data(), static_cast<int>(buffer.size()));
  return length > 0 ? narrow(buffer.data()) : std::string();
}

/// The separator if it is one ASCII character. Otherwise the character that users type for it: newer versions of the
/// system write a narrow blank or a typographic apostrophe.
char thousands_separator() {
  const std::string text = locale_text(LOCALE_STHOUSAND);
  if (text.size() == 1) return text.front();
  if (text == "\u2019") return '\'';
  return text.empty() ? '\0' : ' ';
}

/// Reads `count` texts whose types are consecutive numbers.
template <std::size_t count>
void take_names(std::array<std::string, count>& names, LCTYPE first) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::string text = locale_text(first + static_cast<LCTYPE>(i));
    if (!text.empty()) names[i] = text;
  }
}

LocaleNames names_of_calendar() {
  LocaleNames names = german_names();
  take_names(names.months, LOCALE_SMONTHNAME1);
  take_names(names.short_months, LOCALE_SABBREVMONTHNAME1);
  // The system's weeks begin on Monday.
  take_names(names.weekdays, LOCALE_SDAYNAME1);
  take_names(names.short_weekdays, LOCALE_SABBREVDAYNAME1);
  for (auto* const days : {&names.weekdays, &names.short_weekdays})
    std::rotate(days->begin(), days->end() - 1, days->end());
  names.morning = locale_text(LOCALE_S1159);
  names.afternoon = locale_text(LOCALE_S2359);
  return names;
}

std::size_t locale_number(LCTYPE type) {
  const std::string text = locale_text(type);
  return text.size() == 1 && is_digit(text.front()) ? static_cast<std::size_t>(text.front() - '0')
         : text.size() == 2 && text.front() == '1'  ? 10 + static_cast<std::size_t>(text.back() - '0')
                                                    : 99;
}

CurrencyPicture currency_picture() {
  // Indexed by the numbers that the system gives its pictures.
  constexpr std::array positive = {"cn", "nc", "c n", "n c"};
  constexpr std::array negative = {"(cn)", "-cn",  "c-n",  "cn-",  "(nc)", "-nc",  "n-c",   "nc-",
                                   "-n c", "-c n", "n c-", "c n-", "c -n", "n- c", "(c n)", "(n c)"};
  CurrencyPicture picture;
  const std::size_t above = locale_number(LOCALE_ICURRENCY), below = locale_number(LOCALE_INEGCURR);
  const std::size_t decimals = locale_number(LOCALE_ICURRDIGITS);
  picture.symbol = locale_text(LOCALE_SCURRENCY);
  if (above < positive.size()) picture.positive = positive[above];
  if (below < negative.size()) picture.negative = negative[below];
  if (decimals < 10) picture.decimals = static_cast<int>(decimals);
  return picture;
}

}  // namespace

std::string host_local_data() {
  std::wstring path(32768, L'\0');
  path.resize(GetEnvironmentVariableW(L"LOCALAPPDATA", path.data(), static_cast<DWORD>(path.size())));
  return narrow(path);
}

std::unique_ptr<Registry> host_registry(std::string_view hive_path) {
  if (!hive_path.empty()) return open_hive(hive_path);
  return std::make_unique<Win32Registry>();
}

IniFiles& host_ini_files() {
  static Win32IniFiles files;
  return files;
}

UserLocale host_locale() {
  UserLocale locale;
  const std::string decimal_separator = locale_text(LOCALE_SDECIMAL);
  if (decimal_separator.size() == 1) locale.decimal_separator = decimal_separator.front();
  locale.thousands_separator = thousands_separator();
  // If the user has set both to the same character, only the decimal separator can be meant.
  if (locale.thousands_separator == locale.decimal_separator) locale.thousands_separator = '\0';
  const std::string short_date = locale_text(LOCALE_SSHORTDATE);
  const std::string long_time = locale_text(LOCALE_STIMEFORMAT);
  if (!short_date.empty()) locale.short_date = short_date;
  const std::string long_date = locale_text(LOCALE_SLONGDATE);
  if (!long_time.empty()) locale.long_time = long_time;
  if (!long_date.empty()) locale.long_date = long_date;
  locale.names = names_of_calendar();
  locale.currency = currency_picture();
  return locale;
}

}  // namespace support
