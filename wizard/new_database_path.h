// Where the database of a patient is created who has none yet.
#pragma once

#include <string>

#include "database/patient.h"
#include "wizard/context.h"

namespace wizard {

/// "NAME_FIRSTNAME.das" as it can be written. Letters that code page 1252 lacks become the nearest ones that it has,
/// characters that no file name may hold "_".
std::string database_file_name(const database::PatientRecord& patient);

/// That name in the patients' folder, whether or not it is free.
std::string wanted_database_path(const Context& context, const database::PatientRecord& patient);

/// The same or, where that file exists, the first of the numbered names that no file has; empty where all of them are
/// taken.
std::string new_database_path(const Context& context, const database::PatientRecord& patient);

}  // namespace wizard
