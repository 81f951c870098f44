#include "database/engine/week.h"

#include "database/engine/engine_error.h"

namespace engine {
namespace {

/// The day on which the first week of the year begins.
std::int64_t first_week_start(std::int64_t year, WeekRule rule) noexcept {
  const std::int64_t new_year = day_number(year, 1, 1);
  const int weekday = weekday_from(new_year, rule.first_day);
  const std::int64_t start = new_year - (weekday - 1);
  const int days_of_year = 8 - weekday;
  const bool counts = rule.first_week == FirstWeek::FourDays   ? days_of_year >= 4
                      : rule.first_week == FirstWeek::FullWeek ? days_of_year == 7
                                                               : true;
  return counts ? start : start + 7;
}

}  // namespace

int first_weekday_of(int number) {
  if (number < 0 || number > 7) raise(error_number::invalid_call);
  return number == 0 ? 1 : number;
}

FirstWeek first_week_of(int number) {
  if (number < 0 || number > 3) raise(error_number::invalid_call);
  return static_cast<FirstWeek>(number);
}

std::int64_t day_of(Date date) noexcept { return divide_down(seconds_of(date), seconds_per_day); }

std::int64_t time_of(Date date) noexcept { return seconds_of(date) - day_of(date) * seconds_per_day; }

int weekday_from(std::int64_t day, int week_start) noexcept {
  // Day 1 was a Sunday.
  const std::int64_t days = day - week_start;
  return static_cast<int>(days - divide_down(days, 7) * 7) + 1;
}

std::int64_t week_number(std::int64_t day, int week_start) noexcept {
  return divide_down(day - weekday_from(day, week_start), 7);
}

std::int64_t week_of_year(Date date, WeekRule rule) noexcept {
  const std::int64_t day = day_of(date);
  const std::int64_t year = calendar_time(date).year;
  const std::int64_t start = first_week_start(year, rule);
  if (day < start) return (day - first_week_start(year - 1, rule)) / 7 + 1;
  const bool may_be_next = rule.first_week == FirstWeek::FourDays || rule.first_week == FirstWeek::FullWeek;
  return may_be_next && day >= first_week_start(year + 1, rule) ? 1 : (day - start) / 7 + 1;
}

}  // namespace engine
