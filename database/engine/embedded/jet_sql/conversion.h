// Numbers to texts and back, as the dialect converts them.
#pragma once

#include <string>
#include <string_view>

namespace engine::embedded::jet_sql {

/// At most 15 significant digits, "1E+15" and "1E-05" beyond them.
std::string number_text(double number, char decimal_separator);
/// In the user's locale.
std::string number_text(double number);
/// The number that a Single's shortest text stands for.
double widened(double single);
/// The number of digits of the base, 8 or 16, as far as they are such, behind "&H" or "&O": signed, up to 16 bits of 16
/// bits, beyond that, or where `wide` is asked for, of 32; 6 beyond these.
double prefixed_number(std::string_view digits, int base, bool wide = false);
/// How many of the text's first characters are digits of the base.
std::size_t prefixed_digits(std::string_view text, int base) noexcept;
/// The number a Val takes from the text's beginning; 6 where it is too large.
double leading_number(std::string_view text);

}  // namespace engine::embedded::jet_sql
