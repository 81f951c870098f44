// How the user writes numbers and dates, and what the user's language calls months, weekdays and the halves of a day.
// The process has one locale, which the program sets at its start.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace support {

struct LocaleNames {
  std::array<std::string, 12> months;
  std::array<std::string, 12> short_months;
  /// Sunday first.
  std::array<std::string, 7> weekdays;
  std::array<std::string, 7> short_weekdays;
  /// Before and after noon; empty if the language counts 24 hours.
  std::string morning;
  std::string afternoon;
};

LocaleNames german_names();
LocaleNames english_names();
LocaleNames french_names();

/// In the pictures, "n" is the number without its sign, "c" the symbol.
struct CurrencyPicture {
  std::string symbol = "€";
  std::string positive = "n c";
  std::string negative = "-n c";
  int decimals = 2;
};

struct UserLocale {
  char decimal_separator = ',';
  /// NUL if numbers are not grouped.
  char thousands_separator = '.';
  /// "Short Date" as a picture made of d to dddd, M to MMMM, yy, yyyy and literals (in single quotes if they hold such
  /// letters).
  std::string short_date = "dd.MM.yyyy";
  std::string long_time = "HH:mm:ss";
  /// "Long Date", likewise.
  std::string long_date = "dddd, d. MMMM yyyy";
  LocaleNames names = german_names();
  CurrencyPicture currency = {};
};

/// The locale by name: "de", "de_DE", "de_AT", "de_CH", "fr", "fr_FR", "en", "en_US", "en_GB", "en_IE", "C", "POSIX",
/// each also with an ending like ".UTF-8"; nothing for another name.
std::optional<UserLocale> user_locale_by_name(std::string_view name);

/// The process's locale; German until set.
const UserLocale& user_locale() noexcept;
void set_user_locale(UserLocale locale);

/// Reads a number as the user types it: optional sign, digits, the locale's decimal separator, exponent. Blanks around
/// it are ignored. The thousands separator is accepted if it groups the whole part properly: in German "1.234" is 1234.
/// Every other text gives nothing, above all "5.6" in German: reading it as 56 or guessing 5,6 would put a wrong number
/// into a diary. A number that a double cannot hold also gives nothing.
std::optional<double> parse_number(std::string_view text);

/// The shortest text that reads back as the same number, with the locale's decimal separator ("5,6", "101", "-0,5").
/// Numbers below 0.00001 and from 1E+15 on have an exponent.
std::string number_text(double value);
std::string number_text(float value);

/// A fixed number of decimals, with the locale's decimal separator. Halves are rounded away from zero, on the decimal
/// text as users know it (5.55 with one decimal gives "5,6"). A number of decimals below 0 or above 15 is taken as 0 or
/// 15.
std::string fixed_text(double value, int decimals);

/// A day (days since 1899-12-30, the fraction is the time) as "Short Date"; empty outside the years 100 to 9999.
std::string short_date_text(double day);
/// The same as "Long Date".
std::string long_date_text(double day);

/// The nearest whole number, halves to even.
double round_half_even(double value) noexcept;

}  // namespace support
