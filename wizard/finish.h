// The finish: everything that the pages hold is written, in a fixed order, each statement whether or not the ones
// before it succeeded.
#pragma once

#include "wizard/context.h"
#include "wizard/finish_writer.h"
#include "wizard/pages.h"

namespace wizard {

/// Writes (or, previewing, only records) the configuration and the patient's database. Writing also sets `CurrentDB`.
FinishReport apply_configuration(Context& context, const Pages& pages, FinishWriter::Mode mode);

/// Path of the database for a patient without one: the patient's name in the patients' folder or, where that file
/// exists, the first free numbered name; empty where no name is free. Characters that no file name may hold become "_".
std::string new_database_path(const Context& context, const database::PatientRecord& patient);

}  // namespace wizard
