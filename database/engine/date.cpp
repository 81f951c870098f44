#include "database/engine/date.h"

#include <cmath>
#include <cstdio>

#include "database/engine/engine_error.h"

namespace engine {
namespace {

// Years are counted in eras of 400 that begin on 1 March, so that the leap day is the last one of its year.
constexpr std::int64_t days_of_era = 146097;
/// From 0000-03-01 to 1899-12-30.
constexpr std::int64_t days_before_day_zero = 693899;

}  // namespace

std::int64_t day_number(std::int64_t year, std::int64_t month, std::int64_t day) noexcept {
  const std::int64_t months = year * 12 + month - 3;
  const std::int64_t march_year = divide_down(months, 12);
  const std::int64_t month_from_march = months - march_year * 12;
  const std::int64_t era = divide_down(march_year, 400);
  const std::int64_t year_of_era = march_year - era * 400;
  const std::int64_t day_of_year = (153 * month_from_march + 2) / 5 + day - 1;
  return era * days_of_era + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year -
         days_before_day_zero;
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
  const std::int64_t day = number + days_before_day_zero;
  const std::int64_t era = divide_down(day, days_of_era);
  const std::int64_t day_of_era = day - era * days_of_era;
  const std::int64_t year_of_era = (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::int64_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t month_from_march = (5 * day_of_year + 2) / 153;
  const std::int64_t month = month_from_march < 10 ? month_from_march + 3 : month_from_march - 9;
  const std::int64_t year = year_of_era + era * 400 + (month <= 2 ? 1 : 0);
  return {static_cast<int>(year),
          static_cast<int>(month),
          static_cast<int>(day_of_year - (153 * month_from_march + 2) / 5 + 1),
          static_cast<int>(time / 3600),
          static_cast<int>(time / 60 % 60),
          static_cast<int>(time % 60)};
}

std::string iso_text(Date date) {
  const CalendarTime time = calendar_time(date);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.year, time.month, time.day, time.hour,
                time.minute, time.second);
  return text;
}

}  // namespace engine
