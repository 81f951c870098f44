#include "database/transfer/value_text.h"

#include <fmt/core.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <optional>

#include "database/engine/engine_error.h"
#include "support/text.h"

namespace transfer {
namespace {

constexpr std::string_view days_word = "days:";

template <typename Number>
void append_number(std::string& text, Number number) {
  std::array<char, 40> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  text.append(digits.data(), end);
}

bool same_bits(double left, double right) {
  return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

/// Takes the digits at the text's beginning off it.
std::optional<int> take_number(std::string_view& text, std::size_t digits, char before) {
  if (before != '\0') {
    if (!text.starts_with(before)) return std::nullopt;
    text.remove_prefix(1);
  }
  const std::string_view part = text.substr(0, digits);
  if (part.size() != digits || part.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  text.remove_prefix(digits);
  return support::parse_whole<int>(part);
}

/// The seconds behind the minute; nothing where the text is no number below 60.
std::optional<double> take_seconds(std::string_view text) {
  const std::string_view digits = text.empty() ? text : text.substr(1);
  if (!take_number(text, 2, ':')) return std::nullopt;
  if (!text.empty() && (text.front() != '.' || text.size() == 1)) return std::nullopt;
  if (!text.empty() && text.find_first_not_of("0123456789", 1) != std::string_view::npos) return std::nullopt;
  const std::optional<double> seconds = support::parse_whole<double>(digits);
  if (!seconds || *seconds >= 60) return std::nullopt;
  return seconds;
}

std::optional<engine::Date> parse_iso(std::string_view text) {
  const auto year = take_number(text, 4, '\0'), month = take_number(text, 2, '-'), day = take_number(text, 2, '-');
  if (!year || !month || !day || *month < 1 || *month > 12 || *day < 1) return std::nullopt;
  if (*year < 100 || *day > engine::days_in_month(*year, *month)) return std::nullopt;
  int hour = 0, minute = 0;
  double seconds = 0;
  if (!text.empty()) {
    const char before = text.front() == ' ' ? ' ' : 'T';
    const auto hours = take_number(text, 2, before), minutes = take_number(text, 2, ':');
    const auto rest = text.empty() ? std::optional(0.0) : take_seconds(text);
    if (!hours || !minutes || !rest || *hours > 23 || *minutes > 59) return std::nullopt;
    hour = *hours, minute = *minutes, seconds = *rest;
  }
  const std::int64_t number = engine::day_number(*year, *month, *day);
  const std::int64_t before = (std::int64_t{hour} * 60 + minute) * 60;
  if (seconds == std::floor(seconds)) {
    return engine::date_of_seconds(number * engine::seconds_per_day + before + static_cast<std::int64_t>(seconds));
  }
  const double part = (static_cast<double>(before) + seconds) / static_cast<double>(engine::seconds_per_day);
  return engine::Date{number < 0 ? static_cast<double>(number) - part : static_cast<double>(number) + part};
}

std::string whole_seconds(engine::Date date) {
  std::string text = engine::iso_text(date);
  text[10] = 'T';
  return text;
}

/// The date with this many digits of a fraction. It may be no valid date where rounding carries over.
std::string with_fraction(double days, int digits) {
  const double day = std::trunc(days);
  const double of_day = std::abs(days - day) * static_cast<double>(engine::seconds_per_day);
  const int hour = static_cast<int>(of_day / 3600), minute = static_cast<int>(std::fmod(of_day, 3600) / 60);
  const double seconds = of_day - hour * 3600.0 - minute * 60.0;
  return fmt::format("{:.10}T{:02}:{:02}:{:0{}.{}f}", engine::iso_text(engine::Date{day}), hour, minute, seconds,
                     digits + 3, digits);
}

engine::Value date_of_text(std::string_view text) {
  if (text.starts_with(days_word)) {
    const auto days = support::parse_whole<double>(text.substr(days_word.size()));
    if (days && std::isfinite(*days)) return engine::Date{*days};
  } else if (const auto date = parse_iso(text)) {
    return *date;
  }
  engine::raise(cannot_convert);
}

struct Append {
  std::string& text;
  void operator()(engine::Null) const {}
  void operator()(bool value) const { text += value ? "-1" : "0"; }
  void operator()(std::int32_t value) const { append_number(text, value); }
  void operator()(float value) const { append_number(text, value); }
  void operator()(double value) const { append_number(text, value); }
  void operator()(engine::Date value) const { text += date_text(value); }
  void operator()(const std::string& value) const { text += value; }
};

}  // namespace

std::string date_text(engine::Date date) {
  if (std::isfinite(date.days) && engine::in_calendar(date.days)) {
    if (same_bits(engine::date_of_seconds(engine::seconds_of(date)).days, date.days)) return whole_seconds(date);
    for (const int digits : {1, 2, 3, 6, 7, 9, 12}) {
      std::string text = with_fraction(date.days, digits);
      const auto read = parse_iso(text);
      if (read && same_bits(read->days, date.days)) return text;
    }
  }
  std::string text(days_word);
  append_number(text, date.days);
  return text;
}

void append_text(std::string& text, const engine::Value& value) { std::visit(Append{text}, value); }

std::string text_of(const engine::Value& value) {
  std::string text;
  append_text(text, value);
  return text;
}

engine::Value value_of_text(engine::DataType type, std::string_view text) {
  using enum engine::DataType;
  if (type == Date) return date_of_text(text);
  if (engine::is_text(type)) return std::string(text);
  if (type == Single) {
    if (const auto number = support::parse_whole<float>(text); number && !std::isnan(*number)) return *number;
  } else if (type == Double) {
    if (const auto number = support::parse_whole<double>(text); number && !std::isnan(*number)) return *number;
  } else if (const auto number = support::parse_whole<std::int32_t>(text)) {
    return type == Boolean ? engine::Value(*number != 0) : engine::Value(*number);
  }
  engine::raise(cannot_convert);
}

}  // namespace transfer
