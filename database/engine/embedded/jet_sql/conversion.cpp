#include "database/engine/embedded/jet_sql/conversion.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "database/engine/engine_error.h"
#include "database/engine/format/number_picture.h"
#include "support/text.h"
#include "support/user_locale.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr double beyond_digits = 1e15;

int digit_value(char character) noexcept {
  if (support::is_digit(character)) return character - '0';
  const char letter = static_cast<char>(character | 0x20);
  return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : 16;
}

constexpr std::string_view passed_over = " \t\n";

/// The text without the characters that Val passes over.
std::string without_blanks(std::string_view text) {
  std::string rest;
  for (const char character : text) {
    if (passed_over.find(character) == std::string_view::npos) rest += character;
  }
  return rest;
}

/// Length of the number at the text's beginning.
std::size_t number_length(std::string_view text) noexcept {
  const auto at = [&](std::size_t position) { return position < text.size() ? text[position] : '\0'; };
  std::size_t end = at(0) == '-' || at(0) == '+' ? 1 : 0;
  bool digits = false;
  for (; support::is_digit(at(end)); ++end) digits = true;
  if (at(end) == '.') {
    for (++end; support::is_digit(at(end)); ++end) digits = true;
  }
  if (!digits) return 0;
  const char exponent = static_cast<char>(at(end) | 0x20);
  const std::size_t sign = at(end + 1) == '-' || at(end + 1) == '+' ? 1 : 0;
  if ((exponent == 'e' || exponent == 'd') && support::is_digit(at(end + 1 + sign))) {
    for (end += 1 + sign; support::is_digit(at(end)); ++end) {
    }
  }
  return end;
}

double decimal_number(std::string_view digits) {
  double value = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    // A number that is too small becomes 0.
    if (digits.find("e-") == std::string_view::npos && digits.find("E-") == std::string_view::npos) {
      raise(error_number::overflow);
    }
    return 0;
  }
  return value;
}

double number_at_beginning(std::string_view text) {
  if (text.size() > 2 && text[0] == '&') {
    const char base = static_cast<char>(text[1] | 0x20);
    if (base == 'h') return prefixed_number(text.substr(2), 16);
    if (base == 'o') return prefixed_number(text.substr(2), 8);
  }
  std::string_view digits = text.substr(0, number_length(text));
  if (digits.starts_with('+')) digits.remove_prefix(1);
  const std::size_t exponent = digits.find_first_of("dD");
  if (exponent == std::string_view::npos) return decimal_number(digits);
  std::string with_e(digits);
  with_e[exponent] = 'e';
  return decimal_number(with_e);
}

}  // namespace

std::string number_text(double number, char decimal_separator) {
  std::array<char, 40> buffer{};
  // Most numbers are whole; this is the faster way for them.
  if (std::abs(number) < beyond_digits && number == std::trunc(number)) {
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), static_cast<std::int64_t>(number)).ptr;
    return {buffer.data(), end};
  }
  return pictures::general_text(pictures::decimal_number(number), decimal_separator);
}

std::string number_text(double number) { return number_text(number, support::user_locale().decimal_separator); }

std::size_t prefixed_digits(std::string_view text, int base) noexcept {
  const auto* const end =
      std::find_if(text.begin(), text.end(), [&](char character) { return digit_value(character) >= base; });
  return static_cast<std::size_t>(end - text.begin());
}

double prefixed_number(std::string_view digits, int base, bool wide) {
  constexpr std::uint64_t largest = 0xFFFFFFFF;
  constexpr std::uint64_t largest_narrow = 0xFFFF;
  std::uint64_t value = 0;
  for (const char digit : digits.substr(0, prefixed_digits(digits, base))) {
    value = value * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(digit_value(digit));
    if (value > largest) raise(error_number::overflow);
  }
  if (value <= largest_narrow && !wide) return static_cast<std::int16_t>(value);
  return static_cast<std::int32_t>(value);
}

double widened(double single) {
  const auto narrow = static_cast<float>(single);
  if (!std::isfinite(narrow)) return single;
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), narrow).ptr;
  double value = single;
  std::from_chars(buffer.data(), end, value);
  return value;
}

double leading_number(std::string_view text) {
  if (text.find_first_of(passed_over) == std::string_view::npos) return number_at_beginning(text);
  return number_at_beginning(without_blanks(text));
}

}  // namespace engine::embedded::jet_sql
