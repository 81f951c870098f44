#include "database/engine/value.h"

#include <cmath>
#include <limits>

#include "database/engine/date_text.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"
#include "support/user_locale.h"

namespace engine {
namespace {

template <typename Integer>
Integer whole_number(const Value& value) {
  const double rounded = support::round_half_even(to_double(value));
  if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) {
    raise(error_number::overflow);
  }
  return static_cast<Integer>(rounded);
}

struct ToDouble {
  double operator()(Null) const { raise(error_number::invalid_null); }
  double operator()(bool yes) const { return yes ? -1 : 0; }
  double operator()(std::int32_t number) const { return number; }
  double operator()(float number) const { return static_cast<double>(number); }
  double operator()(double number) const { return number; }
  double operator()(Date date) const { return date.days; }
  double operator()(const std::string& text) const {
    const std::optional<double> number = support::parse_number(text);
    if (!number) raise(error_number::type_mismatch);
    return *number;
  }
};

struct ToText {
  std::string operator()(Null) const { raise(error_number::invalid_null); }
  std::string operator()(bool yes) const { return yes ? "True" : "False"; }
  std::string operator()(std::int32_t number) const { return std::to_string(number); }
  std::string operator()(float number) const { return support::number_text(number); }
  std::string operator()(double number) const { return support::number_text(number); }
  std::string operator()(Date date) const { return date_text(date); }
  std::string operator()(const std::string& text) const { return text; }
};

}  // namespace

std::optional<double> floating_number(const Value& value) noexcept {
  if (const auto* number = std::get_if<float>(&value)) return *number;
  if (const auto* number = std::get_if<double>(&value)) return *number;
  return std::nullopt;
}

bool is_negative_zero(const Value& value) noexcept {
  const std::optional<double> number = floating_number(value);
  return number && *number == 0 && std::signbit(*number);
}

std::int16_t to_int16(const Value& value) { return whole_number<std::int16_t>(value); }

std::int32_t to_int32(const Value& value) { return whole_number<std::int32_t>(value); }

float to_single(const Value& value) {
  const double number = to_double(value);
  if (std::abs(number) > static_cast<double>(std::numeric_limits<float>::max())) raise(error_number::overflow);
  return static_cast<float>(number);
}

double to_double(const Value& value) { return std::visit(ToDouble{}, value); }

std::string to_text(const Value& value) { return std::visit(ToText{}, value); }

bool to_bool(const Value& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    if (support::equal_ignoring_case(*text, "True")) return true;
    if (support::equal_ignoring_case(*text, "False")) return false;
  }
  return to_double(value) != 0;
}

Date to_date(const Value& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    if (const std::optional<Date> date = parse_user_date(*text)) return *date;
  }
  const double days = to_double(value);
  if (!in_calendar(days)) raise(error_number::overflow);
  return Date{days};
}

}  // namespace engine
