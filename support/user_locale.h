// How the user writes numbers and dates. One locale for the process, set at start-up by the program's edge.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace support {

struct UserLocale {
  char decimal_separator = ',';
  char thousands_separator = '.';
  /// "Short Date" as a picture of d, dd, M, MM, yy, yyyy and literals.
  std::string short_date = "dd.MM.yyyy";
  std::string long_time = "HH:mm:ss";
};

/// The locale by name: "de" and "de_DE" (also with ".UTF-8"), "en_US", "en_GB", "C"; nothing for an unknown name.
std::optional<UserLocale> user_locale_by_name(std::string_view name);

/// The process's locale; German until set.
const UserLocale& user_locale() noexcept;
void set_user_locale(UserLocale locale);

/// Reads a number as the user types it: optional sign, digits, the locale's decimal separator ("." is taken too where
/// the locale's own thousands separator would make no valid grouping), exponent; blanks around it are ignored.
/// Nothing where the text is not entirely a number.
std::optional<double> parse_number(std::string_view text);

/// The shortest text that reads back as the same number, with the locale's decimal separator ("5,6", "101", "-0,5").
std::string number_text(double value);
std::string number_text(float value);

/// Fixed number of decimals, halves away from zero on the decimal text as users know it (5.55 gives "5,6" with one),
/// with the locale's decimal separator.
std::string fixed_text(double value, int decimals);

/// A day (days since 1899-12-30, the fraction is the time) as "Short Date".
std::string short_date_text(double day);

/// The nearest whole number, halves to even.
double round_half_even(double value) noexcept;

}  // namespace support
