// Dates, times and weekdays on the command line.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "apps/console/arguments.h"
#include "database/engine/value.h"

namespace patientdb {

/// The option as a day, "YYYY-MM-DD"; nothing where it is not given. Any other text is a UsageError, as in all below.
std::optional<engine::Date> day_argument(const console::Arguments& arguments, std::string_view option);

/// The option as a time of day, "HH:MM" or "HH:MM:SS".
std::optional<engine::Date> time_argument(const console::Arguments& arguments, std::string_view option);

/// A pair of options that are given together or not at all.
using Range = std::optional<std::pair<engine::Date, engine::Date>>;
Range day_range(const console::Arguments& arguments, std::string_view from, std::string_view until);
Range time_range(const console::Arguments& arguments, std::string_view from, std::string_view until);

/// Weekday numbers, comma-separated, 1 Sunday to 7 Saturday; empty where the option is not given.
std::string weekdays_argument(const console::Arguments& arguments, std::string_view option);

}  // namespace patientdb
