// How the user writes numbers and dates, and what the user's language calls months, days of the week and halves of a
// day. One locale for the process, set at start-up by the program's edge.
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
  /// Before and after noon; empty where the language counts 24 hours.
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
  /// NUL where numbers are not grouped.
  char thousands_separator = '.';
  /// "Short Date" as a picture of d to dddd, M to MMMM, yy, yyyy and literals ('quoted' where they hold such letters).
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

/// Reads a number as the user types it: optional sign, digits, the locale's decimal separator, exponent; blanks around
/// it are ignored. The thousands separator is taken where it groups the whole part properly: in German "1.234" is 1234.
/// Everything else is nothing, above all "5.6" in German: reading it as 56 or guessing 5,6 would put a wrong number
/// into a diary. Nothing too for a number that a double cannot hold.
std::optional<double> parse_number(std::string_view text);

/// The shortest text that reads back as the same number, with the locale's decimal separator ("5,6", "101", "-0,5");
/// with an exponent below 0.00001 and from 1E+15 on.
std::string number_text(double value);
std::string number_text(float value);

/// Fixed number of decimals, halves away from zero on the decimal text as users know it (5.55 gives "5,6" with one),
/// with the locale's decimal separator. Decimals outside 0 to 15 are taken as the nearer bound.
std::string fixed_text(double value, int decimals);

/// A day (days since 1899-12-30, the fraction is the time) as "Short Date"; empty outside the years 100 to 9999.
std::string short_date_text(double day);
/// The same as "Long Date".
std::string long_date_text(double day);

/// The nearest whole number, halves to even.
double round_half_even(double value) noexcept;

}  // namespace support
