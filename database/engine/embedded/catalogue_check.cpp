#include <fmt/core.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "database/engine/embedded/file_check.h"
#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/embedded/jet_sql/sqlite_text.h"
#include "database/engine/embedded/jet_sql/validation_rule.h"
#include "support/encoding.h"

namespace engine::embedded {
namespace {

/// What the file itself says that it holds, by name.
struct StoredObject {
  std::string type;   ///< "table", "index" …
  std::string table;  ///< of an index
  std::string sql;
};
using StoredObjects = std::map<std::string, StoredObject, std::less<>>;

StoredObjects stored_objects(Connection& file) {
  StoredObjects objects;
  const PooledStatement rows = file.statement("SELECT name, type, tbl_name, sql FROM sqlite_schema");
  while (rows->step()) {
    objects[std::string(rows->text(0))] = {std::string(rows->text(1)), std::string(rows->text(2)),
                                           std::string(rows->text(3))};
  }
  return objects;
}

/// SQLite's own and the catalogue's.
bool is_internal(std::string_view name) { return name.starts_with("sqlite_") || name.starts_with("jet."); }

void check_fields(Connection& file, const TableDefinition& table, const FaultsTold& tell) {
  std::map<std::string, std::string> columns;
  const PooledStatement rows = file.statement("PRAGMA table_xinfo(" + quoted_name(table.name) + ")");
  while (rows->step()) columns.emplace(support::to_lower(rows->text(1)), rows->text(2));
  for (const FieldDefinition& field : table.fields) {
    const auto column = columns.find(support::to_lower(field.name));
    const FieldType* const type = find_field_type(field.type);
    if (column == columns.end()) {
      tell({"catalogue", table.name, "the field " + field.name + " has no column in the file"});
    } else if (!type || column->second != type->declaration.substr(0, type->declaration.find(' '))) {
      tell({"catalogue", table.name, "the field " + field.name + " has a column of another type"});
    }
    if (column != columns.end()) columns.erase(column);
  }
  for (const auto& [name, type] : columns) {
    tell({"catalogue", table.name, "the column " + name + " is no field"});
  }
}

void check_indexes(const StoredTable& table, const StoredObjects& objects, const FaultsTold& tell) {
  for (const IndexDefinition& index : table.definition.indexes) {
    const auto stored = objects.find(fmt::format("{}.{}", table.id, index.name));
    if (stored == objects.end() || stored->second.type != "index") {
      tell({"catalogue", table.definition.name, "the index " + index.name + " is not in the file"});
    } else if (stored->second.sql.starts_with("CREATE UNIQUE") != index.forbids_duplicates()) {
      tell({"catalogue", table.definition.name, "the index " + index.name + " has not the uniqueness that it should"});
    }
  }
}

std::set<std::string, std::less<>> names_of_indexes(const StoredCatalogue& catalogue) {
  std::set<std::string, std::less<>> names;
  for (const TablePointer& table : catalogue.tables()) {
    for (const IndexDefinition& index : table->definition.indexes) {
      names.insert(fmt::format("{}.{}", table->id, index.name));
    }
  }
  return names;
}

void check_what_is_not_ours(const StoredCatalogue& catalogue, const StoredObjects& objects, const FaultsTold& tell) {
  const auto indexes = names_of_indexes(catalogue);
  for (const auto& [name, object] : objects) {
    const bool known = object.type == "table" ? catalogue.find(name) != nullptr : indexes.contains(name);
    if (known || is_internal(name)) continue;
    tell({"catalogue", object.table, "the " + object.type + " " + name + " of the file is in no catalogue"});
  }
}

void count_breaches(Connection& file, const TableDefinition& table, const std::optional<jet_sql::Rule>& rule,
                    const std::string& place, const FaultsTold& tell) {
  if (!rule) return;
  const std::int64_t rows = file.integer("SELECT count(*) FROM " + quoted_name(table.name) + " AS " +
                                         quoted_name(jet_sql::rule_row) + " WHERE NOT (" + rule->condition + ")");
  if (rows > 0) tell({"rule", table.name, "the rule of " + place + " does not hold", rows});
}

}  // namespace

void check_catalogue(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell) {
  const StoredObjects objects = stored_objects(file);
  for (const TablePointer& table : catalogue.tables()) {
    const auto stored = objects.find(table->definition.name);
    if (stored == objects.end() || stored->second.type != "table") {
      tell({"catalogue", table->definition.name, "the table is not in the file"});
      continue;
    }
    check_fields(file, table->definition, tell);
    check_indexes(*table, objects, tell);
  }
  check_what_is_not_ours(catalogue, objects, tell);
}

void check_rules(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell) {
  for (const TablePointer& table : catalogue.tables()) {
    const TableDefinition& definition = table->definition;
    for (const FieldDefinition& field : definition.fields) {
      count_breaches(file, definition, jet_sql::compile_rule(field, definition), "the field " + field.name, tell);
    }
    count_breaches(file, definition, jet_sql::compile_rule(definition), "the table", tell);
  }
}

}  // namespace engine::embedded
