// Arguments that several commands share: a patient, days, times and weekdays, a period of the pump's data.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "apps/console/arguments.h"
#include "apps/patientdb/command.h"
#include "database/engine/value.h"
#include "database/patient.h"
#include "database/pump_statistics.h"

namespace patientdb {

inline constexpr console::Option name_option{"--name", "N", "The patient's name."};
inline constexpr console::Option firstname_option{"--firstname", "F", "The patient's first name."};
inline constexpr console::Option diabetes_type_option{"--diabetes-type", "T",
                                                      "1 type 1, 2 type 2, 3 gestational, 4 other."};
inline constexpr console::Option therapy_option{
    "--therapy", "T", "1 conventional, 2 intensified, 3 pump, 4 insulin and tablets, 5 without insulin."};

/// The patient as these options describe them; nothing else is set. Raises UsageError for a number out of its range.
database::PatientRecord patient_argument(const console::Arguments& arguments);

inline constexpr console::Option from_option{"--from", "D", "First day, YYYY-MM-DD."};
inline constexpr console::Option until_option{"--until", "D", "Last day."};
inline constexpr console::Option time_from_option{"--time-from", "T", "Earliest time of day, HH:MM or HH:MM:SS."};
inline constexpr console::Option time_until_option{"--time-until", "T", "Latest time of day."};
inline constexpr console::Option weekdays_option{"--weekdays", "LIST",
                                                 "Weekday numbers 1 (Sunday) to 7 (Saturday), comma-separated."};

/// The option as a day, "YYYY-MM-DD"; nothing if it is not given. Like the functions below, it raises UsageError for
/// any other text.
std::optional<engine::Date> day_argument(const console::Arguments& arguments, std::string_view option);

/// The option as a time of day, "HH:MM" or "HH:MM:SS".
std::optional<engine::Date> time_argument(const console::Arguments& arguments, std::string_view option);

/// Two options that are given together or not at all. Days must be in order; times may cross midnight.
using Range = std::optional<std::pair<engine::Date, engine::Date>>;
Range day_range(const console::Arguments& arguments, std::string_view from, std::string_view until);
Range time_range(const console::Arguments& arguments, std::string_view from, std::string_view until);

/// Weekday numbers, separated by commas, 1 Sunday to 7 Saturday; empty if the option is not given.
std::string weekdays_argument(const console::Arguments& arguments, std::string_view option);

inline constexpr std::string_view pump_period_usage =
    "FILE --from D --until D [--time-from T] [--time-until T] [--weekdays LIST] [--json]";

inline constexpr console::Option pump_period_options[] = {from_option,          until_option,        time_from_option,
                                                          time_until_option,    weekdays_option,     json_option,
                                                          password_file_option, console::help_option};

inline constexpr std::string_view pump_period_details =
    "An until time before the from time crosses midnight: from 22:00 until 06:00 of one day ends on the next.";

/// The period that the arguments name. It has times only if one is given; the other one is then the day's first or last
/// second. Raises UsageError if the days are missing.
database::PumpPeriod pump_period(const console::Arguments& arguments);

}  // namespace patientdb
