// Tables taken out of a database, into files that other programs read.
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
  /// Of csv and sql; the others are UTF-8.
  TextEncoding encoding = TextEncoding::Utf8;
  /// Empty: all.
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
  /// Sentences on what was left out.
  std::vector<std::string> notes;
};

/// Fills a new folder, given by its host path, with the tables and a "README.txt" on what is in it. It has its name
/// when it is complete; otherwise this raises and leaves nothing behind: 3204 where something lies there, 3265 for a
/// table that is not there, 3343 where a table has not as many rows as the source announces, 3421 with table, field and
/// row for a value that the form cannot hold, 3043 where the disk is full, 3059 where it was interrupted. A field
/// "Password" is exported as Null. Memory does not grow with the rows.
ExportReport export_tables(jet_import::Source& source, const std::string& folder, const ExportChoices& choices,
                           database::Progress* progress);

/// What is written into "README.txt".
std::string readme_text(const ExportChoices& choices, const std::vector<ExportedTable>& tables);

}  // namespace transfer
