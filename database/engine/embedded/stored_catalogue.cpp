#include "database/engine/embedded/stored_catalogue.h"

#include <utility>

#include "database/engine/embedded/engine_error.h"

namespace engine::embedded {
namespace {

constexpr std::string_view catalogue_tables[] = {
    R"(CREATE TABLE "jet.tables"(
         id INTEGER PRIMARY KEY, name TEXT NOT NULL, attributes INTEGER NOT NULL, connect TEXT NOT NULL,
         source_table_name TEXT NOT NULL, validation_rule TEXT NOT NULL, validation_text TEXT NOT NULL))",
    R"(CREATE TABLE "jet.fields"(
         id INTEGER PRIMARY KEY, table_id INTEGER NOT NULL, name TEXT NOT NULL, type INTEGER NOT NULL,
         size INTEGER NOT NULL, attributes INTEGER NOT NULL, default_value TEXT NOT NULL, required INTEGER NOT NULL,
         allow_zero_length INTEGER NOT NULL, ordinal_position INTEGER NOT NULL, validation_rule TEXT NOT NULL,
         validation_text TEXT NOT NULL, UNIQUE(table_id, name)))",
    R"(CREATE TABLE "jet.indexes"(
         id INTEGER PRIMARY KEY, table_id INTEGER NOT NULL, name TEXT NOT NULL, fields TEXT NOT NULL,
         is_primary INTEGER NOT NULL, is_unique INTEGER NOT NULL, required INTEGER NOT NULL,
         ignore_nulls INTEGER NOT NULL, clustered INTEGER NOT NULL, UNIQUE(table_id, name)))",
};

constexpr std::string_view insert_field_sql =
    R"(INSERT INTO "jet.fields"(table_id, name, type, size, attributes, default_value, required, allow_zero_length,
         ordinal_position, validation_rule, validation_text) VALUES(?,?,?,?,?,?,?,?,?,?,?))";
constexpr std::string_view update_field_sql =
    R"(UPDATE "jet.fields" SET table_id=?1, name=?2, type=?3, size=?4, attributes=?5, default_value=?6, required=?7,
         allow_zero_length=?8, ordinal_position=?9, validation_rule=?10, validation_text=?11
       WHERE table_id=?1 AND name=?12)";

Statement& bind_field(Statement& statement, std::int64_t id, const FieldDefinition& field) {
  return statement.with(id, field.name, static_cast<std::int32_t>(field.type), field.size, field.attributes,
                        field.default_value, field.required, field.allow_zero_length,
                        std::int32_t{field.ordinal_position}, field.validation_rule, field.validation_text);
}

/// Index fields are kept joined by ".", which no name holds.
std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ".") + name;
  return text;
}

std::vector<std::string> split(std::string_view text) {
  std::vector<std::string> names;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('.'), text.size());
    names.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return names;
}

FieldDefinition read_field(const Statement& row) {
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
  return field;
}

IndexDefinition read_index(const Statement& row) {
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

StoredTable read_table(const Statement& row) {
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

void StoredCatalogue::create(Connection& connection) {
  for (const std::string_view table : catalogue_tables) connection.run(table);
  connection.run("PRAGMA application_id=" + std::to_string(catalogue_application_id));
}

StoredCatalogue::StoredCatalogue(Connection& connection) : connection_(&connection) {
  if (connection.integer("PRAGMA application_id") != catalogue_application_id) raise(3343);
  version_ = connection.integer("PRAGMA user_version");
  const PooledStatement tables = connection.statement(R"(SELECT id, name FROM "jet.tables" ORDER BY id)");
  while (tables->step()) add(tables->integer(0), std::string(tables->text(1)));
}

void StoredCatalogue::add(std::int64_t id, const std::string& name) {
  ids_.emplace(support::to_lower(name), id);
  tables_.push_back({id, name});
}

TablePointer StoredCatalogue::load(std::int64_t id) const {
  const PooledStatement tables = connection_->statement(
      R"(SELECT id, name, attributes, connect, source_table_name, validation_rule, validation_text
           FROM "jet.tables" WHERE id=?)");
  if (!tables->with(id).step()) return nullptr;
  StoredTable table = read_table(*tables);
  const PooledStatement fields = connection_->statement(
      R"(SELECT table_id, name, type, size, attributes, default_value, required, allow_zero_length, ordinal_position,
                validation_rule, validation_text
           FROM "jet.fields" WHERE table_id=? ORDER BY id)");
  fields->with(id);
  while (fields->step()) table.definition.fields.push_back(read_field(*fields));
  const PooledStatement indexes = connection_->statement(
      R"(SELECT table_id, name, fields, is_primary, is_unique, required, ignore_nulls, clustered
           FROM "jet.indexes" WHERE table_id=? ORDER BY id)");
  indexes->with(id);
  while (indexes->step()) table.definition.indexes.push_back(read_index(*indexes));
  return std::make_shared<const StoredTable>(std::move(table));
}

const TableDefinition* StoredCatalogue::find_table(std::string_view name) const {
  const TablePointer table = find(name);
  return table ? &table->definition : nullptr;
}

TablePointer StoredCatalogue::find(std::string_view name) const {
  const auto found = ids_.find(support::to_lower(name));
  return found == ids_.end() ? nullptr : find(found->second);
}

TablePointer StoredCatalogue::find(std::int64_t id) const {
  if (!connection_) return nullptr;
  TablePointer& table = loaded_[id];
  if (!table) table = load(id);
  return table;
}

std::size_t StoredCatalogue::position(std::int64_t id) const {
  const auto found = std::ranges::find(tables_, id, &TableName::id);
  if (found == tables_.end()) raise(3420);
  return static_cast<std::size_t>(found - tables_.begin());
}

TableDefinition StoredCatalogue::copy_of(std::int64_t id) const {
  const TablePointer table = find(id);
  if (!table) raise(3420);
  return table->definition;
}

void StoredCatalogue::replace(std::int64_t id, TableDefinition definition) {
  TableName& table = tables_[position(id)];
  ids_.erase(support::to_lower(table.name));
  ids_.emplace(support::to_lower(definition.name), id);
  table.name = definition.name;
  loaded_[id] = std::make_shared<const StoredTable>(StoredTable{id, std::move(definition)});
}

std::int64_t StoredCatalogue::insert_table(const TableDefinition& definition) {
  connection_
      ->statement(R"(INSERT INTO "jet.tables"(name, attributes, connect, source_table_name, validation_rule,
                      validation_text) VALUES(?,?,?,?,?,?))")
      ->with(definition.name, definition.attributes, definition.connect, definition.source_table_name,
             definition.validation_rule, definition.validation_text)
      .run();
  const std::int64_t id = connection_->last_row_id();
  for (const FieldDefinition& field : definition.fields) write_field(id, field);
  for (const IndexDefinition& index : definition.indexes) write_index(id, index);
  add(id, definition.name);
  replace(id, definition);
  return id;
}

void StoredCatalogue::erase_table(std::int64_t id) {
  connection_->statement(R"(DELETE FROM "jet.indexes" WHERE table_id=?)")->with(id).run();
  connection_->statement(R"(DELETE FROM "jet.fields" WHERE table_id=?)")->with(id).run();
  connection_->statement(R"(DELETE FROM "jet.tables" WHERE id=?)")->with(id).run();
  const std::size_t place = position(id);
  ids_.erase(support::to_lower(tables_[place].name));
  tables_.erase(tables_.begin() + static_cast<std::ptrdiff_t>(place));
  loaded_.erase(id);
}

void StoredCatalogue::update_table(std::int64_t id, const TableDefinition& definition) {
  connection_
      ->statement(R"(UPDATE "jet.tables" SET name=?, attributes=?, connect=?, source_table_name=?, validation_rule=?,
                      validation_text=? WHERE id=?)")
      ->with(definition.name, definition.attributes, definition.connect, definition.source_table_name,
             definition.validation_rule, definition.validation_text, id)
      .run();
  replace(id, definition);
}

void StoredCatalogue::write_field(std::int64_t id, const FieldDefinition& field) {
  bind_field(*connection_->statement(insert_field_sql), id, field).run();
}

void StoredCatalogue::insert_field(std::int64_t id, const FieldDefinition& field) {
  TableDefinition definition = copy_of(id);
  write_field(id, field);
  definition.fields.push_back(field);
  replace(id, std::move(definition));
}

void StoredCatalogue::update_field(std::int64_t id, std::string_view name, const FieldDefinition& field) {
  TableDefinition definition = copy_of(id);
  FieldDefinition* stored = find_named(definition.fields, name);
  if (!stored) raise(3265, name);
  const std::string old_name = stored->name;
  const PooledStatement update = connection_->statement(update_field_sql);
  bind_field(*update, id, field).bind(12, std::string_view(old_name));
  update->run();
  *stored = field;
  for (IndexDefinition& index : definition.indexes) {
    const auto used = std::ranges::find(index.fields, old_name);
    if (old_name == field.name || used == index.fields.end()) continue;
    *used = field.name;
    connection_->statement(R"(UPDATE "jet.indexes" SET fields=? WHERE table_id=? AND name=?)")
        ->with(joined(index.fields), id, index.name)
        .run();
  }
  replace(id, std::move(definition));
}

void StoredCatalogue::erase_field(std::int64_t id, std::string_view name) {
  TableDefinition definition = copy_of(id);
  const FieldDefinition* stored = definition.find_field(name);
  if (!stored) raise(3265, name);
  connection_->statement(R"(DELETE FROM "jet.fields" WHERE table_id=? AND name=?)")->with(id, stored->name).run();
  definition.fields.erase(definition.fields.begin() + (stored - definition.fields.data()));
  replace(id, std::move(definition));
}

void StoredCatalogue::write_index(std::int64_t id, const IndexDefinition& index) {
  connection_
      ->statement(R"(INSERT INTO "jet.indexes"(table_id, name, fields, is_primary, is_unique, required, ignore_nulls,
                      clustered) VALUES(?,?,?,?,?,?,?,?))")
      ->with(id, index.name, joined(index.fields), index.primary, index.unique, index.required, index.ignore_nulls,
             index.clustered)
      .run();
}

void StoredCatalogue::insert_index(std::int64_t id, const IndexDefinition& index) {
  TableDefinition definition = copy_of(id);
  write_index(id, index);
  definition.indexes.push_back(index);
  replace(id, std::move(definition));
}

void StoredCatalogue::erase_index(std::int64_t id, std::string_view name) {
  TableDefinition definition = copy_of(id);
  const IndexDefinition* stored = find_named(std::as_const(definition.indexes), name);
  if (!stored) raise(3265, name);
  connection_->statement(R"(DELETE FROM "jet.indexes" WHERE table_id=? AND name=?)")->with(id, stored->name).run();
  definition.indexes.erase(definition.indexes.begin() + (stored - definition.indexes.data()));
  replace(id, std::move(definition));
}

void StoredCatalogue::count_change() {
  version_ = connection_->integer("PRAGMA user_version") + 1;
  connection_->run("PRAGMA user_version=" + std::to_string(version_));
}

}  // namespace engine::embedded
