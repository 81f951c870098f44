#include "database/engine/date.h"

#include <fmt/compile.h>

#include <chrono>
#include <cmath>

#include "database/engine/engine_error.h"

namespace engine {
namespace {

/// The calendar repeats itself after this many years, which have this many days.
constexpr std::int64_t years_of_era = 400, days_of_era = 146097;

}  // namespace

std::int64_t day_number(std::int64_t year, std::int64_t month, std::int64_t day) noexcept {
  const std::int64_t months = year * 12 + month - 1;
  const std::int64_t whole_year = divide_down(months, 12);
  // The standard library's years end at 32767.
  const std::int64_t era = divide_down(whole_year, years_of_era);
  const std::chrono::year year_of_era{static_cast<int>(whole_year - era * years_of_era)};
  const std::chrono::month month_of_year{static_cast<unsigned>(months - whole_year * 12 + 1)};
  return support::day_number(year_of_era / month_of_year / 1) + era * days_of_era + day - 1;
}

int days_in_month(std::int64_t year, int month) noexcept {
  return static_cast<int>(day_number(year, month + 1, 1) - day_number(year, month, 1));
}

std::int64_t seconds_of(Date date) noexcept {
  const double day = std::trunc(date.days);
  const auto time = std::llround(std::abs(date.days - day) * static_cast<double>(seconds_per_day));
  return static_cast<std::int64_t>(day) * seconds_per_day + time;
}

Date date_of_seconds(std::int64_t seconds) noexcept {
  const std::int64_t day = divide_down(seconds, seconds_per_day);
  const double time = static_cast<double>(seconds - day * seconds_per_day) / static_cast<double>(seconds_per_day);
  return {static_cast<double>(day) + (day < 0 ? -time : time)};
}

Date date_from(int year, int month, int day, int hour, int minute, int second) {
  const std::int64_t time = (std::int64_t{hour} * 60 + minute) * 60 + second;
  const Date date = date_of_seconds(day_number(year, month, day) * seconds_per_day + time);
  if (!in_calendar(date.days)) raise(error_number::overflow);
  return date;
}

CalendarTime calendar_time(Date date) {
  if (!in_calendar(date.days)) raise(error_number::overflow);
  const std::int64_t seconds = seconds_of(date);
  const std::int64_t number = divide_down(seconds, seconds_per_day);
  const std::int64_t time = seconds - number * seconds_per_day;
  const std::chrono::year_month_day day{support::calendar_day(number)};
  return {static_cast<int>(day.year()),
          static_cast<int>(static_cast<unsigned>(day.month())),
          static_cast<int>(static_cast<unsigned>(day.day())),
          static_cast<int>(time / 3600),
          static_cast<int>(time / 60 % 60),
          static_cast<int>(time % 60)};
}

std::string iso_text(Date date) {
  const CalendarTime time = calendar_time(date);
  return fmt::format(FMT_COMPILE("{:04}-{:02}-{:02} {:02}:{:02}:{:02}"), time.year, time.month, time.day, time.hour,
                     time.minute, time.second);
}

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

std::int64_t week_of_year(Date date, WeekRule rule) {
  const std::int64_t day = day_of(date);
  const std::int64_t year = calendar_time(date).year;
  const std::int64_t start = first_week_start(year, rule);
  if (day < start) return (day - first_week_start(year - 1, rule)) / 7 + 1;
  const bool may_be_next = rule.first_week == FirstWeek::FourDays || rule.first_week == FirstWeek::FullWeek;
  return may_be_next && day >= first_week_start(year + 1, rule) ? 1 : (day - start) / 7 + 1;
}

}  // namespace engine
