// Two databases that are to hold the same.
#pragma once

#include <cstdint>
#include <vector>

#include "database/keeping/table_fingerprint.h"

namespace database::keeping {

/// Raises 3343, with the names of the tables that differ.
void require_same_content(const std::vector<TableFingerprint>& source, const std::vector<TableFingerprint>& copy);

/// Rows of all tables.
std::int64_t row_count(const std::vector<TableFingerprint>& tables);

}  // namespace database::keeping
