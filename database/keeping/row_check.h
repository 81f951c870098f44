// A database's rows beside what their fields and indexes ask for.
#pragma once

#include "database/keeping/check.h"

namespace database::keeping {

/// Reads every table once: rows that cannot be read, Null in required fields, texts beyond their size, rows that point
/// to no row. And asks for duplicates in unique indexes.
void check_rows(const Environment& environment, engine::Database& database, CheckReport& report);

}  // namespace database::keeping
