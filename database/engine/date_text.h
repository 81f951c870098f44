// Dates as texts: in the order and with the separators of the user's locale, or in the order that is asked for.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "database/engine/date.h"

namespace engine {

/// Reads "day", "time" or "day time". The day is three numbers, separated by ".", "/" or "-", in this order of "d", "m"
/// and "y"; a year of more than two digits may stand first. The month may be an English word ("March 7, 2024",
/// "7-Mar-24"). Years of two digits are 1930 to 2029. The time may have seconds, and may have AM or PM ("6 PM" has no
/// minutes). Nothing where the text as a whole is no date.
std::optional<Date> parse_date(std::string_view text, std::string_view order);

/// Does the same in the order of the user's short date and with the words of the user's language. A day of the week may
/// stand before the day ("Donnerstag, 7. März 2024"); it must be the right one. If the text is no day in this order,
/// but is one with day and month exchanged, it is taken as that day.
std::optional<Date> parse_user_date(std::string_view text);

/// The locale's short date and, where there is one, the time. On day 0 the time alone.
std::string date_text(Date date);

/// The locale's short date, long date and long time, whatever the rest of the moment is.
std::string short_day_text(Date date);
std::string long_day_text(Date date);
std::string long_time_text(Date date);

}  // namespace engine
