// The indexes of a table, read from its definition. libmdb itself matches their names and columns by a count that is
// wrong where there are relations, and then loses some indexes.
#pragma once

#include <glib.h>  // before mdbtools.h, which includes it as C
#include <mdbtools.h>

#include <string>
#include <vector>

#include "database/jet_import/jet_header.h"
#include "database/jet_import/source.h"

namespace jet_import {

struct FoundIndexes {
  /// Without the indexes that only stand for a relation.
  std::vector<SourceIndex> indexes;
  /// Names of the indexes whose columns cannot be determined.
  std::vector<std::string> unreadable;
};

/// For a table whose columns are read. Raises 3343 where the definition ends before its indexes do.
FoundIndexes find_indexes(const MdbTableDef& table, JetVersion version);

}  // namespace jet_import
