// Weeks: which day is the first of one, and which week is the first of a year.
#pragma once

#include <cstdint>

#include "database/engine/date.h"

namespace engine {

/// The first week of a year holds 1 January, has four days of the year, or is a full one. System counts as January1.
enum class FirstWeek { System, January1, FourDays, FullWeek };

struct WeekRule {
  int first_day = 1;  ///< 1 Sunday … 7 Saturday
  FirstWeek first_week = FirstWeek::January1;
};

/// The numbers as functions take them; 0, the system's setting, counts as the default. Raises 5 for others.
int first_weekday_of(int number);
FirstWeek first_week_of(int number);

/// The number of the date's day, its time of day left out; its time in seconds.
std::int64_t day_of(Date date) noexcept;
std::int64_t time_of(Date date) noexcept;

/// 1 for the week's first day … 7.
int weekday_from(std::int64_t day, int week_start) noexcept;
/// Weeks since a fixed one.
std::int64_t week_number(std::int64_t day, int week_start) noexcept;
/// 1 to 54. Precondition: the date is in the calendar.
std::int64_t week_of_year(Date date, WeekRule rule) noexcept;

}  // namespace engine
