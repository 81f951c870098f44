// Dates, times and weekdays on the command line.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "apps/console/arguments.h"
#include "database/engine/value.h"

namespace patientdb {

inline constexpr console::Option from_option{"--from", "D", "First day, YYYY-MM-DD."};
inline constexpr console::Option until_option{"--until", "D", "Last day."};
inline constexpr console::Option time_from_option{"--time-from", "T", "Earliest time of day, HH:MM or HH:MM:SS."};
inline constexpr console::Option time_until_option{"--time-until", "T", "Latest time of day."};
inline constexpr console::Option weekdays_option{"--weekdays", "LIST",
                                                 "Weekday numbers 1 (Sunday) to 7 (Saturday), comma-separated."};

/// The option as a day, "YYYY-MM-DD"; nothing where it is not given. Raises UsageError for any other text, as all
/// below do.
std::optional<engine::Date> day_argument(const console::Arguments& arguments, std::string_view option);

/// The option as a time of day, "HH:MM" or "HH:MM:SS".
std::optional<engine::Date> time_argument(const console::Arguments& arguments, std::string_view option);

/// A pair of options that are given together or not at all. Days stand in order; times may cross midnight.
using Range = std::optional<std::pair<engine::Date, engine::Date>>;
Range day_range(const console::Arguments& arguments, std::string_view from, std::string_view until);
Range time_range(const console::Arguments& arguments, std::string_view from, std::string_view until);

/// Weekday numbers, comma-separated, 1 Sunday to 7 Saturday; empty where the option is not given.
std::string weekdays_argument(const console::Arguments& arguments, std::string_view option);

}  // namespace patientdb
