// Converts numbers to texts and back as the dialect does.
#pragma once

#include <string>
#include <string_view>

namespace engine::embedded::jet_sql {

/// Writes at most 15 significant digits; larger and smaller numbers become "1E+15" and "1E-05".
std::string number_text(double number, char decimal_separator);
/// Does the same in the user's locale.
std::string number_text(double number);
/// The double of the number that a Single's shortest text shows.
double widened(double single);
/// The number behind "&H" or "&O", of as many digits of the base (16 or 8) as there are. Numbers are signed. One that
/// fits into 16 bits is a number of 16 bits unless `wide` is asked for; any other is one of 32 bits. Raises 6 beyond
/// these.
double prefixed_number(std::string_view digits, int base, bool wide = false);
/// How many characters at the beginning of the text are digits of the base.
std::size_t prefixed_digits(std::string_view text, int base) noexcept;
/// The number that Val reads at the text's beginning. Raises 6 where it is too large.
double leading_number(std::string_view text);

}  // namespace engine::embedded::jet_sql
