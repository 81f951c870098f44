#include "database/engine/format/number_picture.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "database/engine/engine_error.h"
#include "support/user_locale.h"

namespace engine::pictures {
namespace {

constexpr std::size_t most_sections = 4;

bool is_placeholder(const PictureCharacter& character) { return character.is_one_of("0#"); }

}  // namespace

NumberSection::NumberSection(const Section& section) {
  for (std::size_t i = 0; i < section.size(); ++i) {
    const PictureCharacter& character = section[i];
    if (is_placeholder(character)) {
      read_digit(character);
    } else if (character.is('.')) {
      if (std::exchange(has_point_, true)) raise(error_number::invalid_call);
      elements_.push_back({Part::Point, {}});
    } else if (character.is(',')) {
      read_comma(section, i);
    } else if (character.letter() == 'e') {
      i = read_exponent(section, i);
    } else {
      if (character.is('%')) {
        if (std::exchange(percent_, true)) raise(error_number::invalid_call);
        shift_ += 2;
      }
      elements_.push_back({Part::Sign, {}});
      print_sign(elements_.back().text, character);
    }
  }
  check();
}

void NumberSection::read_digit(const PictureCharacter& placeholder) {
  if (scientific_) raise(error_number::invalid_call);
  has_digits_ = true;
  elements_.push_back({Part::Digit, {}});
  const bool zero = placeholder.is('0');
  if (has_point_) {
    ++decimals_;
    if (zero) fixed_decimals_ = decimals_;
  } else {
    ++whole_places_;
    if (zero || whole_digits_ > 0) ++whole_digits_;
  }
}

/// A comma between digits groups them; one behind the last digit before the point divides by 1000.
void NumberSection::read_comma(const Section& section, std::size_t position) {
  if (whole_places_ == 0 || has_point_ || scientific_) raise(error_number::invalid_call);
  const auto rest = section.begin() + static_cast<std::ptrdiff_t>(position);
  const auto point = std::find_if(rest, section.end(), [](const PictureCharacter& next) { return next.is('.'); });
  if (std::any_of(rest, point, is_placeholder)) {
    grouped_ = true;
  } else {
    shift_ -= 3;
  }
}

std::size_t NumberSection::read_exponent(const Section& section, std::size_t position) {
  const std::size_t sign = position + 1;
  if (scientific_ || sign >= section.size() || !section[sign].is_one_of("+-")) raise(error_number::invalid_call);
  scientific_ = true;
  positive_sign_ = section[sign].is('+');
  exponent_letter_ = section[position].text.front();
  std::size_t end = sign + 1;
  while (end < section.size() && is_placeholder(section[end])) ++end;
  exponent_digits_ = end - sign - 1;
  elements_.push_back({Part::Exponent, {}});
  return end - 1;
}

void NumberSection::check() const {
  if (has_point_ && !has_digits_) raise(error_number::invalid_call);
  // A scientific picture with more places before the point, or with commas, has no defined meaning.
  if (scientific_ && (exponent_digits_ == 0 || whole_places_ != 1 || grouped_ || shift_ < 0))
    raise(error_number::invalid_call);
}

DecimalNumber NumberSection::shifted(DecimalNumber number) const {
  number.exponent += shift_;
  return number;
}

bool NumberSection::shows(const DecimalNumber& number) const {
  if (scientific_) return !number.digits.empty();
  return has_digits_ && shifted(number).scaled(static_cast<int>(decimals_)).find_first_not_of('0') != std::string::npos;
}

/// The digits with at least as many places as the picture asks for.
std::string NumberSection::whole_text(std::string digits) const {
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
  if (digits.size() < whole_digits_) digits.insert(0, whole_digits_ - digits.size(), '0');
  return digits;
}

std::vector<std::string> NumberSection::whole_places(const std::string& digits) const {
  const char separator = support::user_locale().thousands_separator;
  std::vector<std::string> places(std::max<std::size_t>(whole_places_, 1));
  for (std::size_t i = 0; i < digits.size(); ++i) {
    const std::size_t from_right = digits.size() - 1 - i;
    // Digits that exceed the places go into the first place.
    std::string& place = places[places.size() - 1 - std::min(from_right, places.size() - 1)];
    place += digits[i];
    if (grouped_ && separator != '\0' && from_right > 0 && from_right % 3 == 0) place += separator;
  }
  return places;
}

std::string NumberSection::exponent_text(int exponent) const {
  const std::string_view sign = exponent < 0 ? "-" : positive_sign_ ? "+" : "";
  return fmt::format("{}{}{:0{}}", exponent_letter_, sign, std::abs(exponent), exponent_digits_);
}

std::string NumberSection::print(const DecimalNumber& number) const {
  DecimalNumber shown = shifted(number);
  int exponent = 0;
  if (scientific_ && !shown.digits.empty()) {
    exponent = shown.exponent - 1;
    shown.exponent = 1;
    // 9.99 may round up to 10.
    if (shown.scaled(static_cast<int>(decimals_)).size() > decimals_ + 1) {
      shown = {"1", 1, shown.negative};
      ++exponent;
    }
  }
  std::string digits = has_digits_ ? shown.scaled(static_cast<int>(decimals_)) : std::string();
  if (digits.size() < decimals_) digits.insert(0, decimals_ - digits.size(), '0');
  std::string decimals = digits.substr(digits.size() - decimals_);
  while (decimals.size() > fixed_decimals_ && decimals.ends_with('0')) decimals.pop_back();
  const std::vector<std::string> whole = whole_places(whole_text(digits.substr(0, digits.size() - decimals_)));
  std::string text;
  std::size_t place = 0;
  for (const Element& element : elements_) {
    if (element.part == Part::Sign) {
      text += element.text;
    } else if (element.part == Part::Point) {
      // If there is no place before the point, the whole digits stand here.
      if (whole_places_ == 0) text += whole.front();
      text += support::user_locale().decimal_separator;
    } else if (element.part == Part::Exponent) {
      text += exponent_text(exponent);
    } else {
      if (place < whole_places_) text += whole[place];
      if (place >= whole_places_ && place - whole_places_ < decimals.size()) text += decimals[place - whole_places_];
      ++place;
    }
  }
  return text;
}

std::string print_number(const DecimalNumber& number, const Picture& picture) {
  const std::vector<Section>& sections = picture.sections;
  if (sections.size() > most_sections || sections.front().empty()) raise(error_number::invalid_call);
  std::vector<NumberSection> known;
  known.reserve(sections.size());
  for (const Section& section : sections) known.emplace_back(section);
  const bool own_negative = number.negative && sections.size() > 1 && !sections[1].empty();
  const bool own_zero = number.digits.empty() && sections.size() > 2 && !sections[2].empty();
  const NumberSection& section = known[own_zero ? 2 : own_negative ? 1 : 0];
  const bool minus = number.negative && !own_negative && section.shows(number);
  return (minus ? "-" : "") + section.print(number);
}

std::string print_null_number(const Picture& picture) {
  if (picture.sections.size() != most_sections) return {};
  const NumberSection section(picture.sections.back());
  if (section.has_digits()) raise(error_number::invalid_call);
  return section.print({});
}

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
