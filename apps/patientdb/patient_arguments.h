// A patient on the command line.
#pragma once

#include "apps/console/arguments.h"
#include "database/patient.h"

namespace patientdb {

inline constexpr console::Option name_option{"--name", "N", "The patient's name."};
inline constexpr console::Option firstname_option{"--firstname", "F", "The patient's first name."};
inline constexpr console::Option diabetes_type_option{"--diabetes-type", "T",
                                                      "1 type 1, 2 type 2, 3 gestational, 4 other."};
inline constexpr console::Option therapy_option{
    "--therapy", "T", "1 conventional, 2 intensified, 3 pump, 4 insulin and tablets, 5 without insulin."};

/// What these options say of the patient; nothing else is set. Raises UsageError for a number out of its range.
database::PatientRecord patient_argument(const console::Arguments& arguments);

}  // namespace patientdb
