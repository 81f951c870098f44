// Days as the diary counts them, and the calendar behind them: the proleptic Gregorian calendar from year 100 to 9999.
#pragma once

#include <chrono>
#include <cstdint>

namespace support {

/// Day 0.
inline constexpr std::chrono::sys_days day_zero = std::chrono::year{1899} / std::chrono::December / 30;
inline constexpr std::int64_t first_day = -657434;  ///< 0100-01-01
inline constexpr std::int64_t last_day = 2958465;   ///< 9999-12-31

/// Precondition: first_day to last_day.
constexpr std::chrono::sys_days calendar_day(std::int64_t day) noexcept { return day_zero + std::chrono::days{day}; }
constexpr std::int64_t day_number(std::chrono::sys_days day) noexcept { return (day - day_zero).count(); }

static_assert(calendar_day(first_day) == std::chrono::year{100} / std::chrono::January / 1);
static_assert(calendar_day(last_day) == std::chrono::year{9999} / std::chrono::December / 31);

}  // namespace support
