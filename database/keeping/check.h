// Finds out what is wrong with a database file: its pages and structure, its catalogue, its layout, and its rows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/environment.h"

namespace database::keeping {

struct Finding {
  /// "file": it cannot be opened as a database. "page", "structure", "catalogue", "rule": as in engine::FileFault.
  /// "layout": it differs from what a file of its version should have. "row": a row cannot be read. "required",
  /// "unique", "size", "reference": rows breach what their fields demand.
  std::string check;
  std::string table;      ///< empty where it is not known
  std::string field;      ///< or the name of an index; empty where there is none
  std::string text;       ///< names of tables and fields, never values
  std::int64_t rows = 0;  ///< number of affected rows; 0 where it is not about rows
};

struct CheckReport {
  std::string layout;  ///< "4.60"; empty where there is no version record
  std::int64_t tables = 0, rows = 0;
  std::vector<Finding> findings;
  std::vector<std::string> notes;  ///< what could not be checked, or is worth mentioning but no fault
  bool clean() const noexcept { return findings.empty(); }
};

/// Checks everything in one state of the file. The file is not changed and may be in use; writers wait meanwhile. Each
/// table is read once, with the memory of one row. A damaged file gives findings. An error that is raised says nothing
/// about damage: 3024 and 3044 no such file, 3031 another password (or a damaged first page; nobody can tell these
/// apart), 3045 and 3051 in use or not to be opened, 3043 the disk, 3059 interrupted.
CheckReport check_database(const Environment& environment, std::string_view path, std::string_view password);

}  // namespace database::keeping
