// The period of pump data that a command works on.
#pragma once

#include "apps/console/arguments.h"
#include "database/pump_statistics.h"

namespace patientdb {

inline constexpr console::Option from_option{"--from", "D", "First day, YYYY-MM-DD."};
inline constexpr console::Option until_option{"--until", "D", "Last day."};
inline constexpr console::Option time_from_option{"--time-from", "T", "Earliest time of day, HH:MM or HH:MM:SS."};
inline constexpr console::Option time_until_option{"--time-until", "T", "Latest time of day."};
inline constexpr console::Option weekdays_option{"--weekdays", "LIST",
                                                 "Weekday numbers 1 (Sunday) to 7 (Saturday), comma-separated."};

/// The period of the arguments, its days whole unless times are given. UsageError where the days are missing.
database::PumpPeriod pump_period(const console::Arguments& arguments);

}  // namespace patientdb
