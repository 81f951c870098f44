// Copies a database that another engine wrote into a new one of ours, all or nothing: either to keep the copy, or for
// procedures that read another database beside their own.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/environment.h"
#include "database/jet_import/source.h"

namespace jet_import {

struct ImportedTable {
  std::string name;
  std::int64_t rows = 0;
};

struct Report {
  std::vector<ImportedTable> tables;
  /// Sentences about what the copy lacks.
  std::vector<std::string> notes;
};

struct Choices {
  /// Password of the new file; empty: none.
  std::string password;
  /// Leave out the fields that our databases cannot hold. Otherwise they are error 3259.
  bool leave_out_foreign_fields = false;
  /// Leave out the indexes that cannot be read. Otherwise they are error 3343.
  bool leave_out_unreadable_indexes = false;
};

/// Raises and leaves nothing behind, unless every table has as many rows as were read and as the source announced; only
/// then the new file gets its name. Raises 3204 where the target exists. Rows pass one by one, in one transaction. A
/// property that our engine refuses (a default that it cannot compute) is left out with a note.
Report import_database(const database::Environment& environment, Source& source, std::string_view target,
                       const Choices& choices);

/// Copies the file into the folder for temporary files, without a password. Fields that our databases cannot hold are
/// left out. The file is opened first without a password, then with the one of the environment's patients. Raises what
/// open_source and import_database raise.
std::unique_ptr<database::ReadableCopy> readable_copy(const database::Environment& environment, std::string_view path);

}  // namespace jet_import
