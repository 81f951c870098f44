// Exported tables as a source from which a database is made.
#pragma once

#include <memory>
#include <string>

#include "database/jet_import/source.h"

namespace transfer {

/// The source behind a host path: a folder that was exported as csv or as sqlite, or such an SQLite file. Null where
/// the path leads to neither. Raises 3343 where the description of the tables is missing or incomplete, 3024 where a
/// table's file is missing. Its rows raise 3343 with file and row for what cannot be read, and 3421 for a value in an
/// SQLite file that the field does not take as it is.
std::unique_ptr<jet_import::Source> open_exported(const std::string& host_path);

}  // namespace transfer
