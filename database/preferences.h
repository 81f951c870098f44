// The preference tables of a database: laboratory definitions, preferred insulins and preferred medicines.
#pragma once

#include <string_view>

#include "database/environment.h"

namespace database {

/// Replaces `labdefs`, `preferredinsulin` and `preferredmedicals` of the database by those of the file `other_path`. A
/// table that the other file lacks is gone afterwards. Returns true when all three were copied. Runs as one transaction
/// of its own; if that cannot begin or be committed, everything stays as it was. A file of another engine is read
/// through environment.readable_copy.
bool db_MergePreferences(const Environment& environment, const Target& target, std::string_view other_path);

}  // namespace database
