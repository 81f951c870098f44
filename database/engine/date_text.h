// Dates as the user writes them, in the order and with the separators of the user's locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "database/engine/value.h"

namespace engine {

/// Reads "day", "time" or "day time": the day in the locale's order or year first, separated by ".", "/" or "-"; years
/// of two digits are 1930 to 2029; the time with or without seconds. Nothing where the text is not entirely a date.
std::optional<Date> parse_date(std::string_view text);

/// The locale's short date, the time where there is one, and the time alone on day 0.
std::string date_text(Date date);

}  // namespace engine
