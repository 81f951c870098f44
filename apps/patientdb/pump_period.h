// The period of pump data that a command works on, and the command line that tells it.
#pragma once

#include "apps/patientdb/command.h"
#include "apps/patientdb/date_arguments.h"
#include "database/pump_statistics.h"

namespace patientdb {

inline constexpr std::string_view pump_period_usage =
    "FILE --from D --until D [--time-from T] [--time-until T] [--weekdays LIST] [--json]";

inline constexpr console::Option pump_period_options[] = {from_option,          until_option,        time_from_option,
                                                          time_until_option,    weekdays_option,     json_option,
                                                          password_file_option, console::help_option};

inline constexpr std::string_view pump_period_details =
    "An until time before the from time crosses midnight: from 22:00 until 06:00 of one day ends on the next.";

/// The period of the arguments, with times only where one is given: the other one is then the day's first or last
/// second. Raises UsageError where the days are missing.
database::PumpPeriod pump_period(const console::Arguments& arguments);

}  // namespace patientdb
