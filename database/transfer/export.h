// Exports tables of a database into files that other programs read.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "database/environment.h"
#include "database/jet_import/source.h"
#include "database/transfer/delimited_text.h"

namespace transfer {

enum class Format { Csv, Json, Sqlite, Sql };

struct ExportChoices {
  Format format = Format::Csv;
  /// For csv and sql; the other formats are UTF-8.
  TextEncoding encoding = TextEncoding::Utf8;
  /// Empty: all tables.
  std::vector<std::string> tables = {};
  /// Leave out the fields of bytes or embedded objects. Otherwise they are error 3259.
  bool leave_out_foreign_fields = false;
};

struct ExportedTable {
  std::string name, file;
  std::int64_t rows = 0;
};

struct ExportReport {
  std::vector<ExportedTable> tables;
  /// Sentences about what was left out.
  std::vector<std::string> notes;
};

/// Fills a new folder, given by its host path, with the tables and a "README.txt" that describes them. The folder gets
/// its name when it is complete; otherwise this raises and leaves nothing behind. Raises 3204 where something exists at
/// the path, 3265 for a table that does not exist, 3343 where a table does not have as many rows as the source
/// announces, 3421 with table, field and row for a value that the format cannot hold, 3043 where the disk is full, 3059
/// where it was interrupted. A field "Password" is exported as Null. Memory does not grow with the rows.
ExportReport export_tables(jet_import::Source& source, const std::string& folder, const ExportChoices& choices,
                           database::Progress* progress);

/// The content of "README.txt".
std::string readme_text(const ExportChoices& choices, const std::vector<ExportedTable>& tables);

}  // namespace transfer
