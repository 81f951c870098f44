// Where the database of a patient is created who has none yet.
#pragma once

#include <string>

#include "database/patient.h"
#include "wizard/context.h"

namespace wizard {

/// "NAME_FIRSTNAME.das" in the patients' folder or, where that file exists, the first of the numbered names that no
/// file has; empty where all of them are taken. Letters that code page 1252 lacks become the nearest ones that it has,
/// characters that no file name may hold "_".
std::string new_database_path(const Context& context, const database::PatientRecord& patient);

}  // namespace wizard
