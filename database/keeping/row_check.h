// Checks the rows of a database against what their fields and indexes demand.
#pragma once

#include "database/keeping/check.h"

namespace database::keeping {

/// Reads every table once. Reports rows that cannot be read, Null in required fields and AutoNumbers, texts beyond
/// their size, and rows that point to no row. Also looks for duplicates in unique indexes.
void check_rows(const Environment& environment, engine::Database& database, CheckReport& report);

}  // namespace database::keeping
