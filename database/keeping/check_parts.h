// The parts of a check that look at layout and rows through the object model.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "database/keeping/check.h"
#include "database/version_record.h"

namespace database::keeping {

/// The tables, fields and indexes that a database of this version should have, and their types and sizes; what an
/// upgrade is known to leave otherwise is no finding. `record` is null for a file without one.
void check_layout(engine::Database& database, const VersionRecord* record, CheckReport& report);

/// Reads every table once: rows that cannot be read, Null in required fields, texts beyond their size, rows that point
/// to no row. And asks for duplicates in unique indexes.
void check_rows(const Environment& environment, engine::Database& database, CheckReport& report);

}  // namespace database::keeping
