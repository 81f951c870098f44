// A moment as fields hold it, and the calendar behind it: the proleptic Gregorian calendar, years 100 to 9999. Also
// weeks: which day begins a week, and which week is the first of a year.
#pragma once

#include <cstdint>
#include <string>

#include "support/calendar_day.h"

namespace engine {

/// Days since 1899-12-30; the fraction is the time of day. Before that day the fraction counts away from zero: -1.25 is
/// 1899-12-29, 06:00. Range -657434 … 2958465.
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

/// Months, days and times beyond their ranges carry over. Raises 6 outside the calendar.
Date date_from(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
/// Rounds to the nearest second. Raises 6 outside the calendar.
CalendarTime calendar_time(Date date);
/// "YYYY-MM-DD HH:MM:SS".
std::string iso_text(Date date);

/// Number of a calendar day: days since 1899-12-30. Months and days beyond their ranges carry over.
std::int64_t day_number(std::int64_t year, std::int64_t month, std::int64_t day) noexcept;
/// Month 1 to 12.
int days_in_month(std::int64_t year, int month) noexcept;

/// Seconds since 1899-12-30, 00:00, rounded to the nearest, and back. Precondition: the date is in the calendar.
std::int64_t seconds_of(Date date) noexcept;
Date date_of_seconds(std::int64_t seconds) noexcept;

/// Division that rounds down: gives the day of a second, the year of a month. Precondition: the divisor is positive.
constexpr std::int64_t divide_down(std::int64_t value, std::int64_t divisor) noexcept {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

/// Which week is the first of a year: the one with 1 January, the first with four days in the year, or the first full
/// one. System counts as January1.
enum class FirstWeek { System, January1, FourDays, FullWeek };

struct WeekRule {
  int first_day = 1;  ///< 1 Sunday … 7 Saturday
  FirstWeek first_week = FirstWeek::January1;
};

/// Converts the numbers that functions take. 0, the system's setting, counts as the default. Raises 5 for others.
int first_weekday_of(int number);
FirstWeek first_week_of(int number);

/// The number of the date's day without its time of day, and the time of day in seconds.
std::int64_t day_of(Date date) noexcept;
std::int64_t time_of(Date date) noexcept;

/// 1 for the first day of the week … 7.
int weekday_from(std::int64_t day, int week_start) noexcept;
/// Weeks since a fixed week.
std::int64_t week_number(std::int64_t day, int week_start) noexcept;
/// 1 to 54. Raises 6 for a date outside the calendar.
std::int64_t week_of_year(Date date, WeekRule rule);

}  // namespace engine
