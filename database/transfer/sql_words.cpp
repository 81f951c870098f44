#include "database/transfer/sql_words.h"

#include <fmt/core.h>

#include "database/transfer/value_text.h"

namespace transfer {
namespace {

std::string declaration(const jet_import::SourceField& field) {
  switch (field.type) {
    case engine::DataType::Boolean:
    case engine::DataType::Byte:
    case engine::DataType::Integer:
      return "SMALLINT";
    case engine::DataType::Long:
      return "INTEGER";
    case engine::DataType::Single:
      return "REAL";
    case engine::DataType::Double:
      return "DOUBLE PRECISION";
    case engine::DataType::Text:
      return fmt::format("VARCHAR({})", field.size);
    default:
      // Dates are texts, too: other programs mean different things by a type with the name DATE.
      return "TEXT";
  }
}

}  // namespace

std::string sql_name(std::string_view name) {
  std::string quoted = "\"";
  for (const char character : name) quoted.append(character == '"' ? 2 : 1, character);
  return quoted + '"';
}

void append_sql_text(std::string& sql, std::string_view text) {
  if (text.find('\0') != std::string_view::npos) {
    throw support::RuntimeError(cannot_convert, "It holds a NUL, which no text of SQL can.");
  }
  sql += '\'';
  for (const char character : text) sql.append(character == '\'' ? 2 : 1, character);
  sql += '\'';
}

std::string create_table_statement(const jet_import::SourceTable& table) {
  std::string sql = "CREATE TABLE " + sql_name(table.name) + " (";
  for (const jet_import::SourceField& field : table.fields) {
    sql += &field == table.fields.data() ? "" : ", ";
    sql += sql_name(field.name) + " " + declaration(field);
  }
  return sql + ")";
}

std::string insert_beginning(std::string_view table) { return "INSERT INTO " + sql_name(table) + " VALUES "; }

std::vector<std::string> create_index_statements(const jet_import::SourceTable& table) {
  std::vector<std::string> statements;
  for (const jet_import::SourceIndex& index : table.indexes) {
    std::string sql = std::string("CREATE ") + (index.primary ? "UNIQUE " : "") + "INDEX " +
                      sql_name(table.name + "." + index.name) + " ON " + sql_name(table.name) + " (";
    for (const std::string& field : index.fields) sql += (&field == index.fields.data() ? "" : ", ") + sql_name(field);
    statements.push_back(sql + ")");
  }
  return statements;
}

}  // namespace transfer
