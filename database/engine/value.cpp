#include "database/engine/value.h"

#include <cmath>
#include <cstdio>
#include <limits>

#include "database/engine/date_text.h"
#include "support/encoding.h"
#include "support/error.h"
#include "support/user_locale.h"

namespace engine {
namespace {

using support::RuntimeError;

constexpr double first_day = -657434;         // 0100-01-01
constexpr double last_day = 2958465;          // 9999-12-31
constexpr std::int64_t epoch_offset = 25569;  // 1970-01-01
constexpr double seconds_per_day = 86400;

[[noreturn]] void raise_overflow() { throw RuntimeError(6, "Overflow"); }
[[noreturn]] void raise_type_mismatch() { throw RuntimeError(13, "Type mismatch"); }
[[noreturn]] void raise_null() { throw RuntimeError(94, "Invalid use of Null"); }

template <typename Integer>
Integer whole_number(const Value& value) {
  const double rounded = support::round_half_even(to_double(value));
  if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) {
    raise_overflow();
  }
  return static_cast<Integer>(rounded);
}

struct ToDouble {
  double operator()(Null) const { raise_null(); }
  double operator()(bool yes) const { return yes ? -1 : 0; }
  double operator()(std::int32_t number) const { return number; }
  double operator()(float number) const { return static_cast<double>(number); }
  double operator()(double number) const { return number; }
  double operator()(Date date) const { return date.days; }
  double operator()(const std::string& text) const {
    const std::optional<double> number = support::parse_number(text);
    if (!number) raise_type_mismatch();
    return *number;
  }
};

struct ToText {
  std::string operator()(Null) const { raise_null(); }
  std::string operator()(bool yes) const { return yes ? "True" : "False"; }
  std::string operator()(std::int32_t number) const { return std::to_string(number); }
  std::string operator()(float number) const { return support::number_text(number); }
  std::string operator()(double number) const { return support::number_text(number); }
  std::string operator()(Date date) const { return date_text(date); }
  std::string operator()(const std::string& text) const { return text; }
};

/// Days since 1970-01-01 of a day of the proleptic Gregorian calendar, counted in eras of 400 years that begin on 1
/// March.
std::int64_t days_of_calendar(std::int64_t year, int month, int day) {
  if (month <= 2) --year;
  const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
  const std::int64_t year_of_era = year - era * 400;
  const std::int64_t day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const std::int64_t day_of_era = year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
  return era * 146097 + day_of_era - 719468;
}

CalendarTime calendar_of_days(std::int64_t days) {
  days += 719468;
  const std::int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  const std::int64_t day_of_era = days - era * 146097;
  const std::int64_t year_of_era = (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::int64_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t shifted_month = (5 * day_of_year + 2) / 153;
  const int month = static_cast<int>(shifted_month < 10 ? shifted_month + 3 : shifted_month - 9);
  const int year = static_cast<int>(year_of_era + era * 400 + (month <= 2 ? 1 : 0));
  return {year, month, static_cast<int>(day_of_year - (153 * shifted_month + 2) / 5 + 1), 0, 0, 0};
}

bool in_calendar(double days) { return days > first_day - 1 && days < last_day + 1; }

}  // namespace

std::int16_t to_int16(const Value& value) { return whole_number<std::int16_t>(value); }

std::int32_t to_int32(const Value& value) { return whole_number<std::int32_t>(value); }

float to_single(const Value& value) {
  const double number = to_double(value);
  if (std::abs(number) > static_cast<double>(std::numeric_limits<float>::max())) raise_overflow();
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
    if (const std::optional<Date> date = parse_date(*text)) return *date;
  }
  const double days = to_double(value);
  if (!in_calendar(days)) raise_overflow();
  return Date{days};
}

Date date_from(int year, int month, int day, int hour, int minute, int second) {
  const std::int64_t months = std::int64_t{year} * 12 + month - 1;
  const std::int64_t whole_year = months >= 0 ? months / 12 : (months - 11) / 12;
  const int month_of_year = static_cast<int>(months - whole_year * 12) + 1;
  const std::int64_t days = days_of_calendar(whole_year, month_of_year, 1) + day - 1 + epoch_offset;
  const double time = (hour * 3600.0 + minute * 60.0 + second) / seconds_per_day;
  const auto whole = static_cast<double>(days);
  // Before day 0 the time of day still counts forward, away from zero.
  const double moment = days < 0 ? whole - time : whole + time;
  if (!in_calendar(moment)) raise_overflow();
  return Date{moment};
}

CalendarTime calendar_time(Date date) {
  const double days = in_calendar(date.days) ? date.days : (date.days < 0 ? first_day : last_day);
  double whole = std::trunc(days);
  auto seconds = std::llround(std::abs(days - whole) * seconds_per_day);
  if (seconds == 86400) {
    seconds = 0;
    whole += 1;
  }
  CalendarTime time = calendar_of_days(static_cast<std::int64_t>(whole) - epoch_offset);
  time.hour = static_cast<int>(seconds / 3600);
  time.minute = static_cast<int>(seconds / 60 % 60);
  time.second = static_cast<int>(seconds % 60);
  return time;
}

std::string iso_text(Date date) {
  const CalendarTime time = calendar_time(date);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.year, time.month, time.day, time.hour,
                time.minute, time.second);
  return text;
}

}  // namespace engine
