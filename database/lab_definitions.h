// The laboratory definitions that a new database begins with.
#pragma once

#include "database/environment.h"

namespace database {

/// Adds the 15 definitions of a new database to `labdefs`, which was appended just before; failing statements are
/// passed over. Descriptions come from the language texts.
void add_lab_definitions(const Environment& environment, engine::Database& database);

}  // namespace database
