#include "database/engine/embedded/table_statements.h"

#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/embedded/jet_sql/sqlite_text.h"
#include "database/engine/embedded/jet_sql/validation_rule.h"

namespace engine::embedded {

TableStatements write_statements(const TablePointer& table) {
  std::string defaults;
  std::string names;
  std::string parameters;
  std::vector<std::string> rules;
  const auto add_rule = [&](const std::optional<jet_sql::Rule>& rule) {
    rules.push_back(rule ? rule->raising() : std::string());
  };
  for (const FieldDefinition& field : table->definition.fields) {
    defaults += (defaults.empty() ? "SELECT " : ",") + jet_sql::compile_default(field);
    names += (names.empty() ? "" : ",") + quoted_name(field.name);
    parameters += parameters.empty() ? "?" : ",?";
    add_rule(jet_sql::compile_rule(field, table->definition));
  }
  add_rule(jet_sql::compile_rule(table->definition));
  // Where no name for it is left, SQLite chooses the row's identity.
  const std::string row_id{table->definition.row_id_column()};
  const std::string insert = "INSERT INTO " + quoted_name(table->definition.name) + "(" +
                             (row_id.empty() ? names + ") VALUES(" : row_id + "," + names + ") VALUES(?,") +
                             parameters + ")";
  return {table, defaults, insert, rules};
}

}  // namespace engine::embedded
