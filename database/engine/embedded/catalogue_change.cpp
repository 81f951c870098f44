#include "database/engine/embedded/catalogue_change.h"

#include <fmt/core.h>
#include <sqlite3.h>

#include <limits>
#include <utility>

#include "database/engine/embedded/table_counters.h"
#include "database/engine/engine_error.h"

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
         ordinal_position, validation_rule, validation_text, id) VALUES(?,?,?,?,?,?,?,?,?,?,?,?))";
constexpr std::string_view update_field_sql =
    R"(UPDATE "jet.fields" SET table_id=?1, name=?2, type=?3, size=?4, attributes=?5, default_value=?6, required=?7,
         allow_zero_length=?8, ordinal_position=?9, validation_rule=?10, validation_text=?11
       WHERE table_id=?1 AND name=?12)";

PreparedStatement& bind_field(PreparedStatement& statement, std::int64_t id, const FieldDefinition& field) {
  return statement.with(id, field.name, static_cast<std::int32_t>(field.type), field.size, field.attributes,
                        field.default_value, field.required, field.allow_zero_length,
                        std::int32_t{field.ordinal_position}, field.validation_rule, field.validation_text);
}

/// An identity for a new row of a catalogue table. It is higher than all others, and unlike that of any row that is
/// gone by now or was rolled back: a random gap makes sure of that.
std::int64_t new_identity(Connection& connection, std::string_view table) {
  std::uint32_t gap = 0;
  sqlite3_randomness(sizeof gap, &gap);
  const std::int64_t last = connection.integer("SELECT max(id) FROM \"" + std::string(table) + "\"");
  if (last < 0 || last > std::numeric_limits<std::int64_t>::max() / 2) raise(error_number::unknown_format);
  return last + 1 + gap;
}

/// The fields of an index are stored in one text, joined by ".", which no name holds.
std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ".") + name;
  return text;
}

}  // namespace

void CatalogueChange::create_tables(Connection& connection) {
  for (const std::string_view table : catalogue_tables) connection.run(table);
  TableCounters::create_table(connection);
  connection.run(fmt::format("PRAGMA application_id={}", catalogue_application_id));
}

void CatalogueChange::draw_stamp() {
  std::int32_t stamp = 0;
  while (stamp <= 0 || stamp == catalogue_.stamp()) {
    sqlite3_randomness(sizeof stamp, &stamp);
    stamp &= std::numeric_limits<std::int32_t>::max();
  }
  connection_.run(fmt::format("PRAGMA user_version={}", stamp));
  catalogue_.set_stamp(stamp);
}

TableDefinition CatalogueChange::copy_of(std::int64_t id) const {
  const TablePointer table = catalogue_.find(id);
  if (!table) raise(error_number::object_invalid);
  return table->definition;
}

std::int64_t CatalogueChange::insert_table(const TableDefinition& definition) {
  StoredTable stored{new_identity(connection_, "jet.tables"), definition};
  connection_
      .statement(R"(INSERT INTO "jet.tables"(name, attributes, connect, source_table_name, validation_rule,
                      validation_text, id) VALUES(?,?,?,?,?,?,?))")
      ->with(definition.name, definition.attributes, definition.connect, definition.source_table_name,
             definition.validation_rule, definition.validation_text, stored.id)
      .run();
  for (FieldDefinition& field : stored.definition.fields) field.id = write_field(stored.id, field);
  for (const IndexDefinition& index : definition.indexes) write_index(stored.id, index);
  const std::int64_t id = stored.id;
  catalogue_.add(std::move(stored));
  return id;
}

void CatalogueChange::erase_table(std::int64_t id) {
  connection_.statement(R"(DELETE FROM "jet.indexes" WHERE table_id=?)")->with(id).run();
  connection_.statement(R"(DELETE FROM "jet.fields" WHERE table_id=?)")->with(id).run();
  connection_.statement(R"(DELETE FROM "jet.tables" WHERE id=?)")->with(id).run();
  catalogue_.erase(id);
}

void CatalogueChange::update_table(std::int64_t id, const TableDefinition& definition) {
  connection_
      .statement(R"(UPDATE "jet.tables" SET name=?, attributes=?, connect=?, source_table_name=?, validation_rule=?,
                      validation_text=? WHERE id=?)")
      ->with(definition.name, definition.attributes, definition.connect, definition.source_table_name,
             definition.validation_rule, definition.validation_text, id)
      .run();
  catalogue_.replace(id, definition);
}

std::int64_t CatalogueChange::write_field(std::int64_t id, const FieldDefinition& field) {
  const std::int64_t field_id = new_identity(connection_, "jet.fields");
  const PooledStatement insert = connection_.statement(insert_field_sql);
  bind_field(*insert, id, field).bind(12, field_id);
  insert->run();
  return field_id;
}

void CatalogueChange::insert_field(std::int64_t id, const FieldDefinition& field) {
  TableDefinition definition = copy_of(id);
  definition.fields.push_back(field);
  definition.fields.back().id = write_field(id, field);
  catalogue_.replace(id, std::move(definition));
}

void CatalogueChange::update_field(std::int64_t id, std::string_view name, const FieldDefinition& field) {
  TableDefinition definition = copy_of(id);
  FieldDefinition* stored = find_named(definition.fields, name);
  if (!stored) raise(error_number::item_not_found, name);
  const std::string old_name = stored->name;
  const PooledStatement update = connection_.statement(update_field_sql);
  bind_field(*update, id, field).bind(12, std::string_view(old_name));
  update->run();
  const std::int64_t field_id = stored->id;
  *stored = field;
  stored->id = field_id;
  for (IndexDefinition& index : definition.indexes) {
    const auto used = std::ranges::find(index.fields, old_name);
    if (old_name == field.name || used == index.fields.end()) continue;
    *used = field.name;
    connection_.statement(R"(UPDATE "jet.indexes" SET fields=? WHERE table_id=? AND name=?)")
        ->with(joined(index.fields), id, index.name)
        .run();
  }
  catalogue_.replace(id, std::move(definition));
}

void CatalogueChange::erase_field(std::int64_t id, std::string_view name) {
  TableDefinition definition = copy_of(id);
  const FieldDefinition* stored = definition.find_field(name);
  if (!stored) raise(error_number::item_not_found, name);
  connection_.statement(R"(DELETE FROM "jet.fields" WHERE table_id=? AND name=?)")->with(id, stored->name).run();
  definition.fields.erase(definition.fields.begin() + (stored - definition.fields.data()));
  catalogue_.replace(id, std::move(definition));
}

void CatalogueChange::write_index(std::int64_t id, const IndexDefinition& index) {
  connection_
      .statement(R"(INSERT INTO "jet.indexes"(table_id, name, fields, is_primary, is_unique, required, ignore_nulls,
                      clustered) VALUES(?,?,?,?,?,?,?,?))")
      ->with(id, index.name, joined(index.fields), index.primary, index.unique, index.required, index.ignore_nulls,
             index.clustered)
      .run();
}

void CatalogueChange::insert_index(std::int64_t id, const IndexDefinition& index) {
  TableDefinition definition = copy_of(id);
  write_index(id, index);
  definition.indexes.push_back(index);
  catalogue_.replace(id, std::move(definition));
}

void CatalogueChange::erase_index(std::int64_t id, std::string_view name) {
  TableDefinition definition = copy_of(id);
  const IndexDefinition* stored = find_named(std::as_const(definition.indexes), name);
  if (!stored) raise(error_number::item_not_found, name);
  connection_.statement(R"(DELETE FROM "jet.indexes" WHERE table_id=? AND name=?)")->with(id, stored->name).run();
  definition.indexes.erase(definition.indexes.begin() + (stored - definition.indexes.data()));
  catalogue_.replace(id, std::move(definition));
}

}  // namespace engine::embedded
