// Laboratory definitions and the preference tables that come from the lookup database.
#pragma once

#include <string_view>

#include "database/environment.h"

namespace database {

/// Replaces `labdefs`, `preferredinsulin` and `preferredmedicals` of the database by those of the file `other_path`.
/// A table that the other file lacks is gone afterwards. True when all three were copied.
bool db_MergePreferences(const Environment& environment, const Target& target, std::string_view other_path);

}  // namespace database
