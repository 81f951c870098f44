// What a table is, beside its rows, as three tables of texts: they lie beside the rows that were exported, so that
// these can be taken back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/jet_import/source.h"

namespace transfer {

/// Names of the three tables, and of their columns.
struct LayoutTable {
  std::string_view name;
  std::vector<std::string> columns;
};
const LayoutTable& table_list();  ///< "_tables"
const LayoutTable& field_list();  ///< "_fields"
const LayoutTable& index_list();  ///< "_indexes"

/// A table and where its rows lie.
struct StoredTable {
  jet_import::SourceTable table;
  std::string file;
  std::string encoding;
  std::int64_t rows = 0;
};

using TextRow = std::vector<std::string>;
struct LayoutRows {
  std::vector<TextRow> tables, fields, indexes;
};

void add_layout(LayoutRows& rows, const StoredTable& stored);
/// Raises 3343 where a row has not its columns, a word is none, a field or an index is of no table, or the rows of an
/// index contradict each other.
std::vector<StoredTable> stored_tables(const LayoutRows& rows);

}  // namespace transfer
