// Days since 1899-12-30 and the calendar, as the dialect's functions and literals need them. A day before that one
// carries its time of day as a fraction away from zero, as the engine stores it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace engine::embedded::jet_sql {

inline constexpr double first_day = -657434;    ///< 0100-01-01
inline constexpr double end_of_days = 2958466;  ///< the day after 9999-12-31
inline constexpr std::int64_t seconds_per_day = 86400;

struct Moment {
  std::int64_t year = 1899;
  int month = 12;  ///< 1 to 12
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

constexpr bool is_date(double days) noexcept { return days >= first_day && days < end_of_days; }

/// Days of a calendar day. Month and day may lie outside their ranges and carry over.
std::int64_t days_from_civil(std::int64_t year, std::int64_t month, std::int64_t day) noexcept;
int days_in_month(std::int64_t year, int month) noexcept;

/// Seconds since 1899-12-30 00:00, to the nearest second; the inverse. Precondition: is_date.
std::int64_t to_seconds(double days) noexcept;
double from_seconds(std::int64_t seconds) noexcept;

/// Precondition: is_date.
Moment to_moment(double days) noexcept;
/// 1 Sunday … 7 Saturday.
int weekday_of(std::int64_t day) noexcept;

/// Text in the order of the picture ("mdy", "dmy", "ymd"); separators "/", "-", "."; a four-digit first number is a
/// year in any order; a time h:n[:s] [AM|PM] may follow or stand alone. Years 0-29 lie in this century, 30-99 in the
/// last. Nothing where the text is no date.
std::optional<double> parse_date(std::string_view text, std::string_view order);
/// The order of the user's short date.
std::string user_date_order();

}  // namespace engine::embedded::jet_sql
