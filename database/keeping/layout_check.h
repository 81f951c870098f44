// A database's layout beside the one that its version should have.
#pragma once

#include "database/keeping/check.h"
#include "database/version_record.h"

namespace database::keeping {

/// Tells the tables, fields and indexes that are missing or of another type or size; what an upgrade is known to leave
/// otherwise is no finding. `record` is null for a file without one.
void check_layout(engine::Database& database, const VersionRecord* record, CheckReport& report);

}  // namespace database::keeping
