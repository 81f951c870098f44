// The shared patient index of the professional edition, as the wizard needs it.
#pragma once

#include <string_view>

#include "database/environment.h"

namespace wizard {

/// Start-up: where the file is missing it is created and brought to the current layout; one that is there is left
/// alone. False where it is missing afterwards.
bool provide_index_database(const database::Environment& environment, std::string_view path);

/// A folder was chosen: its index is created where it is missing and in any case brought up to date, with the patient
/// databases that it lists where they are due. Captions go where progress is shown. False where it cannot be opened.
bool bring_index_up_to_date(const database::Environment& environment, std::string_view path);

}  // namespace wizard
