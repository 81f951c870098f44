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

/// The period of the arguments, its days whole unless times are given. Raises UsageError where the days are missing.
database::PumpPeriod pump_period(const console::Arguments& arguments);

}  // namespace patientdb
