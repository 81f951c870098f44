// The shared patient index of the professional edition, as the wizard needs it.
#pragma once

#include <string_view>

#include "database/environment.h"

namespace wizard {

/// Creates the index database where the file is missing. False where it is missing afterwards. The place at which an
/// existing index is brought to the current layout, once there is an older layout to bring up.
bool provide_index_database(const database::Environment& environment, std::string_view path);

}  // namespace wizard
