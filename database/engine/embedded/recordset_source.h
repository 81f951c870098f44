// What a recordset is opened on: a table or a query, and the SQLite statement that reads it.
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
  /// Gives the columns and, where `table` is set, the row's identity behind them.
  std::string sqlite_sql;
  std::vector<jet_sql::ResultColumn> columns;
  /// Gives the columns of one row, by its identity. Empty where the columns are unchanged fields of the table.
  std::string row_sql = {};
  TablePointer table;                 ///< null where the rows cannot be updated
  std::optional<std::int32_t> count;  ///< number of rows, for a whole table
};

/// `source` is a table's name or a SELECT statement. Raises 3078 where it is neither, 3219 for another statement, and
/// what jet_sql::compile() raises.
RecordsetSource recordset_source(Session& session, std::string_view source);

}  // namespace engine::embedded
