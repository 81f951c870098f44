// Statements that every recordset of a table needs.
#pragma once

#include <string>
#include <vector>

#include "database/engine/embedded/stored_catalogue.h"

namespace engine::embedded {

struct TableStatements {
  TablePointer table;
  std::string defaults;  ///< SELECT: one row with the default of each field
  std::string insert;    ///< parameters: the row's identity, where it can be named, and the fields
  /// SQLite text that raises where a row, named jet_sql::rule_row, breaches a rule: of each field, last of the table;
  /// empty where there is none.
  std::vector<std::string> rules;
};

TableStatements write_statements(const TablePointer& table);

}  // namespace engine::embedded
