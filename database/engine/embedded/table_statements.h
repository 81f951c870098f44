// Statements that every recordset of a table needs.
#pragma once

#include <string>

#include "database/engine/embedded/stored_catalogue.h"

namespace engine::embedded {

struct TableStatements {
  TablePointer table;
  std::string defaults;  ///< SELECT: one row with the default of each field
  std::string insert;    ///< a parameter for each field
};

TableStatements write_statements(const TablePointer& table);

}  // namespace engine::embedded
