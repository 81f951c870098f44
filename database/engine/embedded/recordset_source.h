// What a recordset is opened on: a table or a query, as the SQLite statement that reads it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/embedded/session.h"

namespace engine::embedded {

struct RecordsetSource {
  /// Gives the columns, and where `table` is set the row's identity behind them.
  std::string sqlite_sql;
  std::vector<jet_sql::ResultColumn> columns;
  /// The columns of one row, by its identity; empty where they are fields of the table as they stand.
  std::string row_sql = {};
  TablePointer table;                 ///< null: cannot be updated
  std::optional<std::int32_t> count;  ///< rows of a whole table
};

/// `source` is a table's name or a SELECT statement: 3078 where it is neither, 3219 for another statement. Raises as
/// jet_sql::compile() does.
RecordsetSource recordset_source(Session& session, std::string_view source);

}  // namespace engine::embedded
