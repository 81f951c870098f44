// A moment as fields hold it, and the calendar behind it: the proleptic Gregorian one, years 100 to 9999.
#pragma once

#include <cstdint>
#include <string>

#include "support/calendar_day.h"

namespace engine {

/// Days since 1899-12-30; the fraction is the time of day. A moment before that day carries it away from zero: -1.25
/// is 1899-12-29, 06:00. Range -657434 … 2958465.
struct Date {
  double days = 0;
  friend bool operator==(const Date&, const Date&) = default;
};

using support::first_day, support::last_day;
inline constexpr std::int64_t seconds_per_day = 86400;

constexpr bool in_calendar(double days) noexcept {
  return days > static_cast<double>(first_day - 1) && days < static_cast<double>(last_day + 1);
}

/// Month 1 to 12, day 1 to 31, hour 0 to 23.
struct CalendarTime {
  int year, month, day, hour, minute, second;
};

/// Months, days and times beyond their ranges run on. Raises 6 outside the calendar.
Date date_from(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
/// To the nearest second. Raises 6 outside the calendar.
CalendarTime calendar_time(Date date);
/// "YYYY-MM-DD HH:MM:SS".
std::string iso_text(Date date);

/// Number of a calendar day: days since 1899-12-30. Months and days beyond their ranges run on.
std::int64_t day_number(std::int64_t year, std::int64_t month, std::int64_t day) noexcept;
/// Month 1 to 12.
int days_in_month(std::int64_t year, int month) noexcept;

/// Seconds since 1899-12-30, 00:00, to the nearest; and back. Precondition: in the calendar.
std::int64_t seconds_of(Date date) noexcept;
Date date_of_seconds(std::int64_t seconds) noexcept;

/// Division towards the smaller number: the day of a second, the year of a month. Precondition: the divisor is
/// positive.
constexpr std::int64_t divide_down(std::int64_t value, std::int64_t divisor) noexcept {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

}  // namespace engine
