#include "database/engine/embedded/recordset_source.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "database/engine/embedded/jet_sql/sql_text.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {
namespace {

std::string_view without_outer_blanks(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\n";
  const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
  return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

std::string_view without_brackets(std::string_view name) {
  if (name.size() > 2 && name.front() == '[' && name.back() == ']') return name.substr(1, name.size() - 2);
  return name;
}

RecordsetSource table_source(Session& session, const TablePointer& table) {
  if (table->definition.row_id_column().empty()) raise(error_number::not_supported, "rows without an identity");
  RecordsetSource source;
  source.table = table;
  source.sqlite_sql = "SELECT ";
  for (const FieldDefinition& field : table->definition.fields) {
    source.sqlite_sql += quoted_name(field.name) + ",";
    source.columns.push_back({field.name, field.type, field.size, field.name});
  }
  const std::string from = " FROM " + quoted_name(table->definition.name);
  const std::string row_id{table->definition.row_id_column()};
  source.sqlite_sql += row_id + from + " ORDER BY " + row_id;
  source.count = static_cast<std::int32_t>(session.connection().integer("SELECT count(*)" + from));
  return source;
}

RecordsetSource query_source(Session& session, const jet_sql::Query& query) {
  RecordsetSource source{query.sqlite_sql, query.columns, query.row_sql, nullptr, std::nullopt};
  if (!query.base_table.empty()) source.table = session.catalogue().find(query.base_table);
  return source;
}

/// Reads the headings of a crosstab from the rows that it shows.
RecordsetSource cross_table_source(Session& session, const jet_sql::CrossTable& table, std::string_view statement) {
  std::vector<std::optional<std::string>> headings;
  const PooledStatement rows = session.connection().statement(table.headings.sqlite_sql);
  while (rows->step()) {
    const bool null = rows->storage_class(0) == SQLITE_NULL;
    headings.push_back(null ? std::nullopt : std::optional(std::string(rows->text(0))));
    if (headings.size() > most_fields) raise(error_number::too_many_fields);
  }
  return query_source(session, jet_sql::compile_cross_table(statement, session.catalogue(), std::move(headings)));
}

bool is_one_word(std::string_view text) { return text.find_first_of(" \t\r\n") == std::string_view::npos; }

}  // namespace

RecordsetSource recordset_source(Session& session, std::string_view source) {
  const std::string_view name = without_brackets(without_outer_blanks(source));
  if (const TablePointer table = session.catalogue().find(name)) return table_source(session, table);
  if (is_one_word(name)) raise(error_number::unknown_table, name);
  const auto program = session.compile(source);
  if (const auto* cross_table = std::get_if<jet_sql::CrossTable>(program.get())) {
    return cross_table_source(session, *cross_table, source);
  }
  const auto* query = std::get_if<jet_sql::Query>(program.get());
  if (!query) raise(error_number::invalid_operation);
  return query_source(session, *query);
}

}  // namespace engine::embedded
