#include "database/engine/embedded/stored_catalogue.h"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/embedded/jet_sql/sql_text.h"
#include "database/engine/embedded/jet_sql/validation_rule.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {
namespace {

std::vector<std::string> split(std::string_view text) {
  std::vector<std::string> names;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('.'), text.size());
    names.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return names;
}

FieldDefinition read_field(const PreparedStatement& row) {
  FieldDefinition field;
  field.name = row.text(1);
  field.type = static_cast<DataType>(row.integer(2));
  field.size = static_cast<std::int32_t>(row.integer(3));
  field.attributes = static_cast<std::int32_t>(row.integer(4));
  field.default_value = row.text(5);
  field.required = row.integer(6) != 0;
  field.allow_zero_length = row.integer(7) != 0;
  field.ordinal_position = static_cast<std::int16_t>(row.integer(8));
  field.validation_rule = row.text(9);
  field.validation_text = row.text(10);
  field.id = row.integer(11);
  return field;
}

IndexDefinition read_index(const PreparedStatement& row) {
  IndexDefinition index;
  index.name = row.text(1);
  index.fields = split(row.text(2));
  index.primary = row.integer(3) != 0;
  index.unique = row.integer(4) != 0;
  index.required = row.integer(5) != 0;
  index.ignore_nulls = row.integer(6) != 0;
  index.clustered = row.integer(7) != 0;
  return index;
}

StoredTable read_table(const PreparedStatement& row) {
  StoredTable table;
  table.id = row.integer(0);
  table.definition.name = row.text(1);
  table.definition.attributes = static_cast<std::int32_t>(row.integer(2));
  table.definition.connect = row.text(3);
  table.definition.source_table_name = row.text(4);
  table.definition.validation_rule = row.text(5);
  table.definition.validation_text = row.text(6);
  return table;
}

}  // namespace

StoredCatalogue::StoredCatalogue(Connection& connection) {
  if (connection.integer("PRAGMA application_id") != catalogue_application_id) raise(error_number::unknown_format);
  stamp_ = connection.integer("PRAGMA user_version");
  read(connection);
}

void StoredCatalogue::read(Connection& connection) {
  std::vector<StoredTable> tables;
  std::unordered_map<std::int64_t, std::size_t> places;
  const PooledStatement table_rows = connection.statement(
      R"(SELECT id, name, attributes, connect, source_table_name, validation_rule, validation_text
           FROM "jet.tables" ORDER BY id)");
  while (table_rows->step()) {
    places.emplace(table_rows->integer(0), tables.size());
    tables.push_back(read_table(*table_rows));
  }
  const auto definition_of = [&](const PreparedStatement& row) -> TableDefinition* {
    const auto place = places.find(row.integer(0));
    return place == places.end() ? nullptr : &tables[place->second].definition;
  };
  const PooledStatement field_rows = connection.statement(
      R"(SELECT table_id, name, type, size, attributes, default_value, required, allow_zero_length, ordinal_position,
                validation_rule, validation_text, id
           FROM "jet.fields" ORDER BY id)");
  while (field_rows->step()) {
    if (TableDefinition* table = definition_of(*field_rows)) table->fields.push_back(read_field(*field_rows));
  }
  const PooledStatement index_rows = connection.statement(
      R"(SELECT table_id, name, fields, is_primary, is_unique, required, ignore_nulls, clustered
           FROM "jet.indexes" ORDER BY id)");
  while (index_rows->step()) {
    if (TableDefinition* table = definition_of(*index_rows)) table->indexes.push_back(read_index(*index_rows));
  }
  for (StoredTable& table : tables) add(std::move(table));
}

const TableDefinition* StoredCatalogue::find_table(std::string_view name) const {
  const TablePointer table = find(name);
  return table ? &table->definition : nullptr;
}

TablePointer StoredCatalogue::find(std::string_view name) const {
  const auto found = positions_.find(support::to_lower(name));
  return found == positions_.end() ? nullptr : tables_[found->second];
}

TablePointer StoredCatalogue::find(std::int64_t id) const {
  const auto found = std::ranges::find(tables_, id, &StoredTable::id);
  return found == tables_.end() ? nullptr : *found;
}

ProgramPointer StoredCatalogue::compile(std::string_view sql) const {
  if (const ProgramPointer* known = programs_.find(sql)) return *known;
  return programs_.put(sql, std::make_shared<const jet_sql::Program>(jet_sql::compile(sql, *this)));
}

void StoredCatalogue::add(StoredTable table) {
  positions_.emplace(support::to_lower(table.definition.name), tables_.size());
  tables_.push_back(std::make_shared<const StoredTable>(std::move(table)));
}

void StoredCatalogue::replace(std::int64_t id, TableDefinition definition) {
  const auto found = std::ranges::find(tables_, id, &StoredTable::id);
  positions_.erase(support::to_lower((*found)->definition.name));
  positions_.emplace(support::to_lower(definition.name), static_cast<std::size_t>(found - tables_.begin()));
  *found = std::make_shared<const StoredTable>(StoredTable{id, std::move(definition)});
}

void StoredCatalogue::erase(std::int64_t id) {
  std::erase_if(tables_, [id](const TablePointer& table) { return table->id == id; });
  positions_.clear();
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    positions_.emplace(support::to_lower(tables_[i]->definition.name), i);
  }
}

namespace known_catalogues {
namespace {

using CataloguePointer = std::shared_ptr<const StoredCatalogue>;

LruCache<CataloguePointer>& cache() {
  static LruCache<CataloguePointer> known{16};
  return known;
}

std::string key(std::string_view file, std::int64_t stamp) { return fmt::format("{}{}", stamp, file); }

}  // namespace

CataloguePointer find(std::string_view file, std::int64_t stamp) {
  const CataloguePointer* known = cache().find(key(file, stamp));
  return known ? *known : nullptr;
}

void keep(std::string_view file, const CataloguePointer& catalogue) {
  cache().put(key(file, catalogue->stamp()), catalogue);
}

}  // namespace known_catalogues

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
  // Where fields hide every name of the row's identity, SQLite chooses it.
  const std::string row_id{table->definition.row_id_column()};
  const std::string insert = "INSERT INTO " + quoted_name(table->definition.name) + "(" +
                             (row_id.empty() ? names + ") VALUES(" : row_id + "," + names + ") VALUES(?,") +
                             parameters + ")";
  return {table, defaults, insert, rules};
}

}  // namespace engine::embedded
