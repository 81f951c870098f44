#include "database/engine/date.h"

#include <fmt/core.h>

#include <chrono>
#include <cmath>

#include "database/engine/engine_error.h"

namespace engine {
namespace {

/// The calendar repeats itself after these years, which have that many days.
constexpr std::int64_t years_of_era = 400, days_of_era = 146097;

}  // namespace

std::int64_t day_number(std::int64_t year, std::int64_t month, std::int64_t day) noexcept {
  const std::int64_t months = year * 12 + month - 1;
  const std::int64_t whole_year = divide_down(months, 12);
  // The library's years end at 32767.
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
  return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}", time.year, time.month, time.day, time.hour, time.minute,
                     time.second);
}

}  // namespace engine
