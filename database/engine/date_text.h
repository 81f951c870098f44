// Dates as texts: in the order and with the separators of the user's locale, or in the order that is asked for.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "database/engine/date.h"

namespace engine {

/// Reads "day", "time" or "day time". The day is three numbers in this order of "d", "m" and "y", or with a year of
/// more than two digits first, separated by ".", "/" or "-", or has its month as an English word ("March 7, 2024",
/// "7-Mar-24"); years of two digits are 1930 to 2029. The time has seconds or not, AM and PM or neither ("6 PM" has no
/// minutes). Nothing where the text is not entirely a date.
std::optional<Date> parse_date(std::string_view text, std::string_view order);

/// The same in the order of the user's short date and with the words of the user's language, a day of the week before
/// it included ("Donnerstag, 7. März 2024"), which must be the right one. A day that can only be meant with day and
/// month changed over is taken that way.
std::optional<Date> parse_user_date(std::string_view text);

/// The locale's short date, the time where there is one, and the time alone on day 0.
std::string date_text(Date date);

/// The locale's short date, long date and long time, whatever the rest of the moment is.
std::string short_day_text(Date date);
std::string long_day_text(Date date);
std::string long_time_text(Date date);

}  // namespace engine
