// The indexes of a table, read from its definition: libmdb pairs their names and their columns by a count that
// relations upset, and then loses some.
#pragma once

#include <glib.h>  // before mdbtools.h, which includes it as C
#include <mdbtools.h>

#include <string>
#include <vector>

#include "database/jet_import/jet_header.h"
#include "database/jet_import/source.h"

namespace jet_import {

struct FoundIndexes {
  /// Without those that only stand for a relation.
  std::vector<SourceIndex> indexes;
  /// By name: those whose columns cannot be told.
  std::vector<std::string> unreadable;
};

/// Of a table whose columns are read. Raises 3343 where the definition ends before its indexes do.
FoundIndexes find_indexes(const MdbTableDef& table, JetVersion version);

}  // namespace jet_import
