// The shared patient index of the professional edition, as the wizard needs it.
#pragma once

#include <string>
#include <string_view>

#include "wizard/context.h"

namespace wizard {

/// Path of the index in a folder of patients.
std::string index_in(std::string_view folder);

/// Start-up: where the file is missing it is created and brought to the current layout; one that is there is left
/// alone.
void provide_index_database(Context& context);

/// A folder was chosen: its index is created where it is missing and in any case brought up to date, with the patient
/// databases that it lists where they are due. Progress is shown, and can be cancelled between two patients. What was
/// cancelled or failed is told in a message, and gone on with the next time. That a missing one was created, or why it
/// could not be, is kept for the report (`created_indexes`), and so is what keeps patient databases from being of the
/// current layout (`patients_failure`).
void bring_index_up_to_date(Context& context);

}  // namespace wizard
