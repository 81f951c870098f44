#include "database/engine/format/decimal_number.h"

#include <fmt/core.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "database/engine/engine_error.h"
#include "support/user_locale.h"

namespace engine::pictures {
namespace {

/// Reads "d.ddde±xx".
DecimalNumber read_scientific(std::string_view text, bool negative) {
  DecimalNumber number;
  const std::size_t mark = text.find('e');
  for (const char digit : text.substr(0, mark)) {
    if (digit != '.') number.digits += digit;
  }
  const bool below_one = text[mark + 1] == '-';
  int exponent = 0;
  std::from_chars(text.data() + mark + 2, text.data() + text.size(), exponent);
  number.exponent = (below_one ? -exponent : exponent) + 1;
  number.digits.erase(number.digits.find_last_not_of('0') + 1);
  number.negative = negative && !number.digits.empty();
  return number;
}

std::string scientific_text(const DecimalNumber& number, char decimal_separator) {
  const int exponent = number.exponent - 1;
  std::string text = number.digits;
  if (text.size() > 1) text.insert(1, 1, decimal_separator);
  return fmt::format("{}E{}{:02}", text, exponent < 0 ? '-' : '+', std::abs(exponent));
}

}  // namespace

std::string DecimalNumber::scaled(int decimals) const {
  const int kept = exponent + decimals;
  if (digits.empty() || kept < 0) return {};
  const auto count = static_cast<std::size_t>(kept);
  std::string result = digits;
  const bool up = count < digits.size() && digits[count] >= '5';
  result.resize(count, '0');
  if (!up) return result;
  auto position = result.rbegin();
  for (; position != result.rend() && *position == '9'; ++position) *position = '0';
  if (position == result.rend()) return "1" + result;
  ++*position;
  return result;
}

DecimalNumber decimal_number(double value) {
  if (!std::isfinite(value)) raise(error_number::overflow);
  constexpr int digits_behind_first = 14;
  std::array<char, 64> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                 std::chars_format::scientific, digits_behind_first)
                       .ptr;
  return read_scientific({buffer.data(), end}, value < 0);
}

DecimalNumber decimal_number(float value) {
  if (!std::isfinite(value)) raise(error_number::overflow);
  std::array<char, 64> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value), std::chars_format::scientific).ptr;
  return read_scientific({buffer.data(), end}, value < 0);
}

std::string general_text(const DecimalNumber& number, char decimal_separator) {
  constexpr int most_places = 15, most_leading_zeros = 3;
  if (number.digits.empty()) return "0";
  std::string text = number.digits;
  const auto count = static_cast<int>(text.size());
  if (number.exponent > most_places || number.exponent < -most_leading_zeros) {
    text = scientific_text(number, decimal_separator);
  } else if (number.exponent >= count) {
    text.append(static_cast<std::size_t>(number.exponent - count), '0');
  } else if (number.exponent > 0) {
    text.insert(static_cast<std::size_t>(number.exponent), 1, decimal_separator);
  } else {
    text.insert(0,
                "0" + std::string(1, decimal_separator) + std::string(static_cast<std::size_t>(-number.exponent), '0'));
  }
  return (number.negative ? "-" : "") + text;
}

std::string general_text(const DecimalNumber& number) {
  return general_text(number, support::user_locale().decimal_separator);
}

}  // namespace engine::pictures
