// The path of the new database for a patient who has none yet.
#pragma once

#include <string>

#include "database/patient.h"
#include "wizard/context.h"

namespace wizard {

/// "NAME_FIRSTNAME.das" as a valid file name. Letters that code page 1252 lacks become the nearest ones that it has;
/// characters that no file name may hold become "_".
std::string database_file_name(const database::PatientRecord& patient);

/// The path with this name in the patients' folder, whether or not a file has it.
std::string wanted_database_path(const Context& context, const database::PatientRecord& patient);

/// The same or, if that file exists, the first free one of the numbered names; empty if all of them are taken.
std::string new_database_path(const Context& context, const database::PatientRecord& patient);

}  // namespace wizard
