// Values to texts and back, as the dialect converts them; numbers and dates of texts in the user's locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace engine::embedded::jet_sql {

/// At most 15 significant digits, "1E+15" and "1E-05" beyond them.
std::string number_text(double number, char decimal_separator);
/// In the user's locale.
std::string number_text(double number);
/// The day where there is one, the time where there is one.
std::string date_text(double days);
/// Nothing where the text is not entirely a number.
std::optional<double> number_of(std::string_view text);
std::optional<double> date_of(std::string_view text);
/// The number that a Single's shortest text stands for.
double widened(double single);
/// The number a Val takes from the text's beginning; 6 where it is too large.
double leading_number(std::string_view text);

}  // namespace engine::embedded::jet_sql
