// Exported tables as a source that a database is made from.
#pragma once

#include <memory>
#include <string>

#include "database/jet_import/source.h"

namespace transfer {

/// The source behind a host path: a folder that was exported as csv, or as sqlite, or such an SQLite file. Null where
/// the path leads to neither. 3343 where what describes the tables is missing or not whole, 3024 where a table's file
/// is missing. The rows raise 3343 with file and row for what cannot be read, 3421 for a value that an SQLite file
/// holds and the field does not take as it is.
std::unique_ptr<jet_import::Source> open_exported(const std::string& host_path);

}  // namespace transfer
