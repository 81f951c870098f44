// The shared patient index of the professional edition, as the wizard needs it.
#pragma once

#include <string>
#include <string_view>

#include "wizard/context.h"

namespace wizard {

/// Path of the index in a folder of patients.
std::string index_in(std::string_view folder);

/// For the start-up: if the file is missing, it is created and brought to the current layout. An existing file is left
/// alone.
void provide_index_database(Context& context);

/// For a chosen folder: creates the index if it is missing and brings it up to date, together with the patient
/// databases that it lists, if they need it. The progress is shown, and the user can cancel between two patients. A
/// message tells what was cancelled or failed; the next time goes on from there. `created_indexes` keeps for the report
/// that a missing index was created, or why not; `patients_failure` keeps why patient databases do not have the current
/// layout.
void bring_index_up_to_date(Context& context);

}  // namespace wizard
