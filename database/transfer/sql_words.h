// Standard SQL for other programs: names, types, and the statements that make a table and its indexes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/jet_import/source.h"

namespace transfer {

/// The name in quotes.
std::string sql_name(std::string_view name);
/// Appends a text literal. Raises 3421 for a text with a NUL.
void append_sql_text(std::string& sql, std::string_view text);

/// "CREATE TABLE …" without a semicolon.
std::string create_table_statement(const jet_import::SourceTable& table);
/// "INSERT INTO … VALUES ", without the values.
std::string insert_beginning(std::string_view table);
/// A "CREATE INDEX …" for each index, without semicolons. Only primary indexes are unique there, because programs
/// differ in what is equal and what Null means.
std::vector<std::string> create_index_statements(const jet_import::SourceTable& table);

}  // namespace transfer
