// The description of tables as three tables of texts. It lies beside the exported rows, so that they can be imported
// again.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/jet_import/source.h"

namespace transfer {

/// The name and the columns of one of the three tables.
struct LayoutTable {
  std::string_view name;
  std::vector<std::string> columns;
};
const LayoutTable& table_list();  ///< "_tables"
const LayoutTable& field_list();  ///< "_fields"
const LayoutTable& index_list();  ///< "_indexes"

/// A table, and the file that holds its rows.
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
/// Raises 3343 where a row does not have its columns, a word is unknown, a field or an index belongs to no table, or
/// the rows of an index contradict each other.
std::vector<StoredTable> stored_tables(const LayoutRows& rows);

}  // namespace transfer
