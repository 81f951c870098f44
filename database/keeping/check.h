// What is wrong with a database file: its pages and structure, its catalogue, its layout, and its rows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/environment.h"

namespace database::keeping {

struct Finding {
  /// "file" it cannot be opened as a database; "page", "structure", "catalogue", "rule" as engine::FileFault has them;
  /// "layout" what a file of its version should have; "row" a row that cannot be read; "required", "unique", "size",
  /// "reference" rows beside what their fields ask for.
  std::string check;
  std::string table;      ///< empty where it is not known
  std::string field;      ///< or an index; empty where there is none
  std::string text;       ///< names of tables and fields, never values
  std::int64_t rows = 0;  ///< that it is about; 0 where it is not about rows
};

struct CheckReport {
  std::string layout;  ///< "4.60"; empty where there is no version record
  std::int64_t tables = 0, rows = 0;
  std::vector<Finding> findings;
  std::vector<std::string> notes;  ///< what could not be looked at, or is worth a word and no fault
  bool clean() const noexcept { return findings.empty(); }
};

/// Looks at everything in one state of the file, which is not changed and may be in use; who writes meanwhile waits.
/// Each table is read once, in the memory of a row. A damaged file gives findings; what is raised tells nothing of it:
/// 3024 and 3044 no such file, 3031 another password (or a first page that is damaged, which nobody can tell apart),
/// 3045 and 3051 in use or not to be opened, 3043 the disk, 3059 interrupted.
CheckReport check_database(const Environment& environment, std::string_view path, std::string_view password);

}  // namespace database::keeping
