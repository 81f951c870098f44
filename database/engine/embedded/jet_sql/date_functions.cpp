#include <algorithm>
#include <array>
#include <iterator>

#include "database/engine/date.h"
#include "database/engine/date_text.h"
#include "database/engine/embedded/jet_sql/sqlite_functions.h"
#include "database/engine/engine_error.h"
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
  if (found == std::end(interval_units)) raise(error_number::invalid_call);
  return found->unit;
}

void result_date(FunctionCall& call, Date date) {
  if (!in_calendar(date.days)) raise(error_number::invalid_call);
  call.result(date);
}

void result_date(FunctionCall& call, std::int64_t day) { result_date(call, Date{static_cast<double>(day)}); }

/// Months are counted by the calendar. A day that the month lacks becomes the month's last day.
Date add_months(Date date, std::int64_t months) {
  const CalendarTime from = calendar_time(date);
  const std::int64_t counted = from.year * std::int64_t{12} + from.month - 1 + months;
  const std::int64_t year = divide_down(counted, 12);
  const int month = static_cast<int>(counted - year * 12) + 1;
  const int day = std::min(from.day, days_in_month(year, month));
  return date_of_seconds(day_number(year, month, day) * seconds_per_day + time_of(date));
}

/// Seconds of a unit that always has the same length; a day for units that are counted by the calendar.
std::int64_t length_of(Unit unit) noexcept {
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
  const Date date = call.date(2);
  if (unit == Unit::Year) return result_date(call, add_months(date, count * 12));
  if (unit == Unit::Quarter) return result_date(call, add_months(date, count * 3));
  if (unit == Unit::Month) return result_date(call, add_months(date, count));
  result_date(call, date_of_seconds(seconds_of(date) + count * length_of(unit)));
}

int first_weekday(const FunctionCall& call, int position) {
  return first_weekday_of(call.has(position) ? call.whole(position) : 1);
}

std::int64_t difference_of(const FunctionCall& call, Unit unit, Date from, Date until) {
  const CalendarTime first = calendar_time(from);
  const CalendarTime second = calendar_time(until);
  const std::int64_t years = std::int64_t{second.year} - first.year;
  const std::int64_t days = day_of(until) - day_of(from);
  switch (unit) {
    case Unit::Year:
      return years;
    case Unit::Quarter:
      return years * 4 + (second.month - 1) / 3 - (first.month - 1) / 3;
    case Unit::Month:
      return years * 12 + second.month - first.month;
    case Unit::Day:
    case Unit::DayOfYear:
      return days;
    case Unit::Weekday:
      return days / 7;
    case Unit::Week: {
      const int start = first_weekday(call, 3);
      return week_number(day_of(until), start) - week_number(day_of(from), start);
    }
    default: {
      const std::int64_t length = length_of(unit);
      return divide_down(seconds_of(until), length) - divide_down(seconds_of(from), length);
    }
  }
}

/// The result is a Long.
void date_difference(FunctionCall& call) {
  const Unit unit = unit_of(call.text(0));
  const std::int64_t difference = difference_of(call, unit, call.date(1), call.date(2));
  if (difference != static_cast<std::int32_t>(difference)) raise(error_number::overflow);
  call.result(difference);
}

void date_part(FunctionCall& call) {
  const Unit unit = unit_of(call.text(0));
  const Date date = call.date(1);
  const CalendarTime moment = calendar_time(date);
  switch (unit) {
    case Unit::Year:
      return call.result(moment.year);
    case Unit::Quarter:
      return call.result((moment.month - 1) / 3 + 1);
    case Unit::Month:
      return call.result(moment.month);
    case Unit::DayOfYear:
      return call.result(day_of(date) - day_number(moment.year, 1, 1) + 1);
    case Unit::Day:
      return call.result(moment.day);
    case Unit::Weekday:
      return call.result(weekday_from(day_of(date), first_weekday(call, 2)));
    case Unit::Week: {
      const FirstWeek first_week = first_week_of(call.has(3) ? call.whole(3) : 1);
      return call.result(week_of_year(date, {first_weekday(call, 2), first_week}));
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
void year(FunctionCall& call) { call.result(calendar_time(call.date(0)).year); }
void month(FunctionCall& call) { call.result(calendar_time(call.date(0)).month); }
void day(FunctionCall& call) { call.result(calendar_time(call.date(0)).day); }

void hour(FunctionCall& call) { call.result(time_of(call.date(0)) / 3600); }
void minute(FunctionCall& call) { call.result(time_of(call.date(0)) / 60 % 60); }
void second(FunctionCall& call) { call.result(time_of(call.date(0)) % 60); }

void date_serial(FunctionCall& call) {
  std::int64_t years = call.whole(0);
  if (years >= 0 && years < 100) years += years < 30 ? 2000 : 1900;
  result_date(call, day_number(years, call.whole(1), call.whole(2)));
}

void time_serial(FunctionCall& call) {
  const std::int64_t seconds =
      (std::int64_t{call.whole(0)} * 60 + std::int64_t{call.whole(1)}) * 60 + std::int64_t{call.whole(2)};
  result_date(call, date_of_seconds(seconds));
}

void date_value(FunctionCall& call) { call.result(static_cast<double>(day_of(call.date(0)))); }
void time_value(FunctionCall& call) { call.result(date_of_seconds(time_of(call.date(0)))); }
void to_date(FunctionCall& call) { call.result(call.date(0)); }

void is_date_text(FunctionCall& call) { call.result(call.is_text(0) && parse_user_date(call.text(0)) ? -1 : 0); }
void is_date_value(FunctionCall& call) { call.result(call.is_null(0) ? 0 : -1); }

/// The name of a number that counts from 1; the short name where the second argument is true.
template <std::size_t count>
const std::string& name_of(FunctionCall& call, std::size_t number, const std::array<std::string, count>& names,
                           const std::array<std::string, count>& short_names) {
  const bool abbreviated = call.has(1) && call.number(1) != 0;
  return abbreviated ? short_names.at(number) : names.at(number);
}

void month_name(FunctionCall& call) {
  const support::LocaleNames& names = support::user_locale().names;
  const std::int32_t month = call.whole(0);
  if (month < 1 || month > 12) raise(error_number::invalid_call);
  call.result(std::string_view(name_of(call, static_cast<std::size_t>(month - 1), names.months, names.short_months)));
}

/// Days are counted from the day that the third argument names, without one from Sunday.
void weekday_name(FunctionCall& call) {
  const support::LocaleNames& names = support::user_locale().names;
  const std::int32_t weekday = call.whole(0);
  if (weekday < 1 || weekday > 7) raise(error_number::invalid_call);
  const int from_sunday = (weekday + first_weekday(call, 2) - 2) % 7;
  call.result(
      std::string_view(name_of(call, static_cast<std::size_t>(from_sunday), names.weekdays, names.short_weekdays)));
}

constexpr ScalarRow date_rows[] = {
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
    row<month_name>("jet_monthname", 1),
    row<month_name>("jet_monthname", 2),
    row<weekday_name>("jet_weekdayname", 1),
    row<weekday_name>("jet_weekdayname", 2),
    row<weekday_name>("jet_weekdayname", 3),
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

const std::span<const ScalarRow> date_functions = date_rows;

}  // namespace engine::embedded::jet_sql
