#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "database/engine/embedded/jet_sql/calendar.h"
#include "database/engine/embedded/jet_sql/conversion.h"
#include "database/engine/embedded/jet_sql/function_call.h"
#include "database/engine/embedded/jet_sql/jet_error.h"
#include "support/encoding.h"
#include "support/user_locale.h"

namespace engine::embedded::jet_sql {

namespace {

enum class Unit { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

struct UnitRow {
  std::string_view text;
  Unit unit;
};

constexpr UnitRow interval_units[] = {
    {"yyyy", Unit::Year}, {"q", Unit::Quarter}, {"m", Unit::Month}, {"y", Unit::DayOfYear}, {"d", Unit::Day},
    {"w", Unit::Weekday}, {"ww", Unit::Week},   {"h", Unit::Hour},  {"n", Unit::Minute},    {"s", Unit::Second},
};

Unit unit_of(std::string_view text) {
  const std::string lower = support::to_lower(text.substr(0, 8));
  const auto* const found = std::find_if(std::begin(interval_units), std::end(interval_units),
                                         [&](const UnitRow& row) { return row.text == lower; });
  if (found == std::end(interval_units)) fail(error_invalid_call);
  return found->unit;
}

std::int64_t divide_down(std::int64_t value, std::int64_t divisor) noexcept {
  return value / divisor - (value % divisor != 0 && (value < 0) != (divisor < 0) ? 1 : 0);
}

std::int64_t day_of(double days) noexcept { return divide_down(to_seconds(days), seconds_per_day); }

void result_date(FunctionCall& call, double days) {
  if (!is_date(days)) fail(error_invalid_call);
  call.result(days);
}

/// Months are counted by the calendar; a day that the month lacks becomes its last one.
double add_months(double days, std::int64_t months) {
  const Moment moment = to_moment(days);
  const std::int64_t counted = moment.year * 12 + moment.month - 1 + months;
  const std::int64_t year = divide_down(counted, 12);
  if (year < 100 || year > 9999) fail(error_invalid_call);
  const int month = static_cast<int>(counted - year * 12) + 1;
  const int day = std::min(moment.day, days_in_month(year, month));
  const std::int64_t time = (moment.hour * std::int64_t{60} + moment.minute) * 60 + moment.second;
  return from_seconds(days_from_civil(year, month, day) * seconds_per_day + time);
}

std::int64_t seconds_of(Unit unit) noexcept {
  switch (unit) {
    case Unit::Week:
      return 7 * seconds_per_day;
    case Unit::Hour:
      return 3600;
    case Unit::Minute:
      return 60;
    case Unit::Second:
      return 1;
    default:
      return seconds_per_day;
  }
}

void date_add(FunctionCall& call) {
  const Unit unit = unit_of(call.text(0));
  const std::int64_t count = call.whole(1);
  const double days = call.date(2);
  if (unit == Unit::Year) return result_date(call, add_months(days, count * 12));
  if (unit == Unit::Quarter) return result_date(call, add_months(days, count * 3));
  if (unit == Unit::Month) return result_date(call, add_months(days, count));
  result_date(call, from_seconds(to_seconds(days) + count * seconds_of(unit)));
}

/// 1 Sunday … 7 Saturday; 0, the system's setting, counts as Sunday.
int first_weekday(const FunctionCall& call, int position) {
  const int first = call.has(position) ? call.whole(position) : 1;
  if (first < 0 || first > 7) fail(error_invalid_call);
  return first == 0 ? 1 : first;
}

int weekday_from(std::int64_t day, int first) noexcept { return (weekday_of(day) - first + 7) % 7 + 1; }

std::int64_t week_number(std::int64_t day, int first) noexcept {
  return divide_down(day - weekday_from(day, first), 7);
}

void date_difference(FunctionCall& call) {
  const Unit unit = unit_of(call.text(0));
  const double from = call.date(1);
  const double until = call.date(2);
  const Moment first = to_moment(from);
  const Moment second = to_moment(until);
  const std::int64_t years = second.year - first.year;
  const std::int64_t days = day_of(until) - day_of(from);
  switch (unit) {
    case Unit::Year:
      return call.result(years);
    case Unit::Quarter:
      return call.result(years * 4 + (second.month - 1) / 3 - (first.month - 1) / 3);
    case Unit::Month:
      return call.result(years * 12 + second.month - first.month);
    case Unit::Day:
    case Unit::DayOfYear:
      return call.result(days);
    case Unit::Weekday:
      return call.result(days / 7);
    case Unit::Week: {
      const int start = first_weekday(call, 3);
      return call.result(week_number(day_of(until), start) - week_number(day_of(from), start));
    }
    default: {
      const std::int64_t size = seconds_of(unit);
      return call.result(divide_down(to_seconds(until), size) - divide_down(to_seconds(from), size));
    }
  }
}

enum class FirstWeek { System, January1, FourDays, FullWeek };

/// The day on which the first week of the year begins.
std::int64_t first_week_start(std::int64_t year, int first, FirstWeek rule) noexcept {
  const std::int64_t new_year = days_from_civil(year, 1, 1);
  const int weekday = weekday_from(new_year, first);
  const std::int64_t start = new_year - (weekday - 1);
  const int days_of_year = 8 - weekday;
  const bool counts = rule == FirstWeek::FourDays   ? days_of_year >= 4
                      : rule == FirstWeek::FullWeek ? days_of_year == 7
                                                    : true;
  return counts ? start : start + 7;
}

std::int64_t week_of_year(double days, int first, FirstWeek rule) noexcept {
  const std::int64_t day = day_of(days);
  const std::int64_t year = to_moment(days).year;
  const std::int64_t start = first_week_start(year, first, rule);
  if (day < start) return (day - first_week_start(year - 1, first, rule)) / 7 + 1;
  const bool next_year =
      rule != FirstWeek::January1 && rule != FirstWeek::System && day >= first_week_start(year + 1, first, rule);
  return next_year ? 1 : (day - start) / 7 + 1;
}

void date_part(FunctionCall& call) {
  const Unit unit = unit_of(call.text(0));
  const double days = call.date(1);
  const Moment moment = to_moment(days);
  switch (unit) {
    case Unit::Year:
      return call.result(moment.year);
    case Unit::Quarter:
      return call.result((moment.month - 1) / 3 + 1);
    case Unit::Month:
      return call.result(moment.month);
    case Unit::DayOfYear:
      return call.result(day_of(days) - days_from_civil(moment.year, 1, 1) + 1);
    case Unit::Day:
      return call.result(moment.day);
    case Unit::Weekday:
      return call.result(weekday_from(day_of(days), first_weekday(call, 2)));
    case Unit::Week: {
      const int rule = call.has(3) ? call.whole(3) : 1;
      if (rule < 0 || rule > 3) fail(error_invalid_call);
      return call.result(week_of_year(days, first_weekday(call, 2), static_cast<FirstWeek>(rule)));
    }
    case Unit::Hour:
      return call.result(moment.hour);
    case Unit::Minute:
      return call.result(moment.minute);
    case Unit::Second:
      return call.result(moment.second);
  }
}

void weekday(FunctionCall& call) { call.result(weekday_from(day_of(call.date(0)), first_weekday(call, 1))); }
void year(FunctionCall& call) { call.result(to_moment(call.date(0)).year); }
void month(FunctionCall& call) { call.result(to_moment(call.date(0)).month); }
void day(FunctionCall& call) { call.result(to_moment(call.date(0)).day); }

std::int64_t time_of(double days) noexcept { return to_seconds(days) - day_of(days) * seconds_per_day; }
void hour(FunctionCall& call) { call.result(time_of(call.date(0)) / 3600); }
void minute(FunctionCall& call) { call.result(time_of(call.date(0)) / 60 % 60); }
void second(FunctionCall& call) { call.result(time_of(call.date(0)) % 60); }

void date_serial(FunctionCall& call) {
  std::int64_t years = call.whole(0);
  if (years >= 0 && years < 100) years += years < 30 ? 2000 : 1900;
  result_date(call, static_cast<double>(days_from_civil(years, call.whole(1), call.whole(2))));
}

void time_serial(FunctionCall& call) {
  const std::int64_t seconds =
      (std::int64_t{call.whole(0)} * 60 + std::int64_t{call.whole(1)}) * 60 + std::int64_t{call.whole(2)};
  result_date(call, from_seconds(seconds));
}

void date_value(FunctionCall& call) { call.result(static_cast<double>(day_of(call.date(0)))); }
void time_value(FunctionCall& call) { call.result(from_seconds(time_of(call.date(0)))); }
void to_date(FunctionCall& call) { call.result(call.date(0)); }

void is_date_text(FunctionCall& call) { call.result(call.is_text(0) && date_of(call.text(0)) ? -1 : 0); }
void is_date_value(FunctionCall& call) { call.result(call.is_null(0) ? 0 : -1); }

constexpr ScalarRow functions[] = {
    row<to_date>("jet_date", 1),
    row<to_date>("jet_cdate", 1),
    row<date_add>("jet_dateadd", 3),
    row<date_difference>("jet_datediff", 3),
    row<date_difference>("jet_datediff", 4),
    row<date_difference>("jet_datediff", 5),
    row<date_part>("jet_datepart", 2),
    row<date_part>("jet_datepart", 3),
    row<date_part>("jet_datepart", 4),
    row<date_serial>("jet_dateserial", 3),
    row<time_serial>("jet_timeserial", 3),
    row<date_value>("jet_datevalue", 1),
    row<time_value>("jet_timevalue", 1),
    row<weekday>("jet_weekday", 1),
    row<weekday>("jet_weekday", 2),
    row<year>("jet_year", 1),
    row<month>("jet_month", 1),
    row<day>("jet_day", 1),
    row<hour>("jet_hour", 1),
    row<minute>("jet_minute", 1),
    row<second>("jet_second", 1),
    row<is_date_text>("jet_isdate", 1, NullRule::IsTaken),
    row<is_date_value>("jet_isdate_date", 1, NullRule::IsTaken),
};

}  // namespace

std::span<const ScalarRow> date_functions() noexcept { return functions; }

}  // namespace engine::embedded::jet_sql
