// Compares a database's layout with the one that its version should have.
#pragma once

#include "database/keeping/check.h"
#include "database/version_record.h"

namespace database::keeping {

/// Reports the tables, fields and indexes that are missing or have another type or size. Differences that an upgrade is
/// known to leave are no findings. `record` is null for a file without one.
void check_layout(engine::Database& database, const VersionRecord* record, CheckReport& report);

}  // namespace database::keeping
