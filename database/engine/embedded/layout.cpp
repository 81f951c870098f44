#include "database/engine/embedded/layout.h"

#include <fmt/core.h>

#include <algorithm>
#include <string>

#include "database/engine/embedded/field_value.h"
#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/embedded/jet_sql/sql_text.h"
#include "database/engine/embedded/session_scope.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::layout {
namespace {

constexpr std::size_t maximum_name_characters = 64;

void check_name(std::string_view name) {
  const bool allowed =
      !name.empty() && name.front() != ' ' && support::is_utf8(name) &&
      support::character_count(name) <= maximum_name_characters && std::ranges::none_of(name, [](char c) {
        return static_cast<unsigned char>(c) < ' ' || c == '.' || c == '!' || c == '[' || c == ']' || c == '`';
      });
  // SQLite reserves names with this beginning.
  const bool reserved = support::equal_ignoring_case(name.substr(0, 7), "sqlite_");
  if (!allowed || reserved) raise(error_number::invalid_name, name);
}

/// A table has one AutoNumber at most.
void check_auto_number(const FieldDefinition& field, const TableDefinition& table) {
  if (field.auto_increment() && table.auto_number()) raise(error_number::invalid_operation);
}

/// Precondition: the field was checked.
std::string column(const FieldDefinition& field) {
  return quoted_name(field.name) + " " + std::string(find_field_type(field.type)->declaration);
}

/// All indexes of a SQLite file share one name space. The table's identity keeps their names apart, and stays the same
/// when the table is renamed.
std::string index_name(std::int64_t table, std::string_view index) {
  return quoted_name(fmt::format("{}.{}", table, index));
}

void create_sqlite_index(Connection& connection, std::int64_t id, std::string_view table,
                         const IndexDefinition& index) {
  std::string sql = index.forbids_duplicates() ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
  sql += index_name(id, index.name) + " ON " + quoted_name(table) + "(";
  for (const std::string& field : index.fields) sql += (&field == index.fields.data() ? "" : ",") + quoted_name(field);
  connection.run(sql + ")");
}

/// Fills an AutoNumber field that was added to a table with rows. If the table had an AutoNumber before, numbering goes
/// on from its last number.
void number_rows(Session& session, const StoredTable& table, const FieldDefinition& field) {
  Connection& connection = session.connection();
  const std::string row_id{table.definition.row_id_column()};
  const std::string name = quoted_name(table.definition.name);
  const PooledStatement rows = connection.statement("SELECT " + row_id + " FROM " + name + " ORDER BY " + row_id);
  const PooledStatement update =
      connection.statement("UPDATE " + name + " SET " + quoted_name(field.name) + "=? WHERE " + row_id + "=?");
  while (rows->step()) {
    update->with(std::int64_t{session.counters().next_number(connection, table)}, rows->integer(0)).run();
  }
}

/// Fills a column with the values of another column, converted to the field's type.
void convert_values(Connection& connection, const TableDefinition& table, const std::string& old_column,
                    DataType old_type, const FieldDefinition& field) {
  const std::string row_id{table.row_id_column()};
  const std::string name = quoted_name(table.name);
  const PooledStatement rows =
      connection.statement("SELECT " + row_id + ", " + old_column + " FROM " + name + " ORDER BY " + row_id);
  const PooledStatement update =
      connection.statement("UPDATE " + name + " SET " + quoted_name(field.name) + "=?1 WHERE " + row_id + "=?2");
  while (rows->step()) {
    update->bind(1, value_for_field(field, column_value(*rows, 1, old_type)));
    update->bind(2, rows->integer(0));
    update->run();
  }
}

void check_no_null(Connection& connection, const TableDefinition& table, const IndexDefinition& index) {
  if (!index.forbids_null()) return;
  std::string condition;
  for (const std::string& field : index.fields) {
    condition += (condition.empty() ? "" : " OR ") + quoted_name(field) + " IS NULL";
  }
  if (connection.integer("SELECT 1 FROM " + quoted_name(table.name) + " WHERE " + condition + " LIMIT 1") == 1)
    raise(error_number::null_in_key);
}

/// The index, with the names of its fields spelled as in the table.
IndexDefinition bound(IndexDefinition index, const TableDefinition& table) {
  for (std::string& field : index.fields) field = table.find_field(field)->name;
  return index;
}

bool is_indexed(const TableDefinition& table, std::string_view field) {
  return std::ranges::any_of(table.indexes, [&](const IndexDefinition& index) {
    return std::ranges::any_of(index.fields,
                               [&](const std::string& used) { return support::equal_ignoring_case(used, field); });
  });
}

TablePointer table_for_new_field(Session& session, std::int64_t table, const FieldDefinition& field) {
  TablePointer stored = session.table(table);
  if (stored->definition.find_field(field.name)) raise(error_number::field_defined_twice, field.name);
  if (stored->definition.fields.size() >= most_fields) raise(error_number::too_many_fields);
  check_auto_number(field, stored->definition);
  return stored;
}

/// Returns the table and the field, after checking that the field can be dropped.
std::pair<TablePointer, const FieldDefinition*> field_to_drop(Session& session, std::int64_t table,
                                                              std::string_view field) {
  TablePointer stored = session.table(table);
  const FieldDefinition* current = stored->definition.find_field(field);
  if (!current) raise(error_number::item_not_found, field);
  if (is_indexed(stored->definition, field)) raise(error_number::field_is_indexed, field);
  if (stored->definition.fields.size() == 1) raise(error_number::no_field_defined);
  return {std::move(stored), current};
}

std::string name_of_index(Session& session, std::int64_t table, std::string_view index) {
  const TablePointer stored = session.table(table);
  const IndexDefinition* current = find_named(stored->definition.indexes, index);
  if (!current) raise(error_number::item_not_found, index);
  return current->name;
}

}  // namespace

void check_field(const FieldDefinition& field) {
  check_name(field.name);
  if (!find_field_type(field.type)) raise(error_number::invalid_data_type);
  if (field.auto_increment() && field.type != DataType::Long) raise(error_number::invalid_data_type);
  if (field.type == DataType::Text && (field.size < 1 || field.size > longest_text))
    raise(error_number::invalid_argument);
  jet_sql::compile_default(field);
}

void check_index(const IndexDefinition& index, const TableDefinition& table) {
  check_name(index.name);
  if (index.fields.empty()) raise(error_number::no_field_defined);
  for (const std::string& field : index.fields) {
    if (!table.find_field(field)) raise(error_number::index_field, field);
  }
  if (find_named(table.indexes, index.name)) raise(error_number::index_already_exists, index.name);
  if (index.primary && std::ranges::any_of(table.indexes, &IndexDefinition::primary))
    raise(error_number::primary_key_exists);
}

std::int64_t create_table(Session& session, const TableDefinition& table) {
  check_name(table.name);
  if (session.catalogue().find(table.name)) raise(error_number::table_exists, table.name);
  if (table.fields.empty()) raise(error_number::no_field_defined);
  if (table.fields.size() > most_fields) raise(error_number::too_many_fields);
  TableDefinition checked = table;
  checked.fields.clear();
  checked.indexes.clear();
  std::string columns;
  for (const FieldDefinition& field : table.fields) {
    check_field(field);
    if (checked.find_field(field.name)) raise(error_number::field_defined_twice, field.name);
    check_auto_number(field, checked);
    columns += (columns.empty() ? "" : ", ") + column(field);
    checked.fields.push_back(field);
  }
  for (const IndexDefinition& index : table.indexes) {
    check_index(index, checked);
    checked.indexes.push_back(bound(index, checked));
  }
  AtomicChange change{session};
  const std::int64_t id = session.change_catalogue().insert_table(checked);
  Connection& connection = session.connection();
  connection.run("CREATE TABLE " + quoted_name(table.name) + "(" + columns + ")");
  for (const IndexDefinition& index : checked.indexes) create_sqlite_index(connection, id, table.name, index);
  change.done();
  return id;
}

void drop_table(Session& session, std::int64_t table) {
  session.table(table);
  AtomicChange change{session};
  const TablePointer stored = session.table(table);
  session.change_catalogue().erase_table(table);
  session.counters().erase(session.connection(), table);
  session.connection().run("DROP TABLE " + quoted_name(stored->definition.name));
  change.done();
}

void change_table(Session& session, std::int64_t table, const std::function<void(TableDefinition&)>& change) {
  session.table(table);
  AtomicChange whole{session};
  // What another handle has changed in the meantime stays.
  const TablePointer stored = session.table(table);
  TableDefinition properties = stored->definition;
  change(properties);
  const bool renamed = stored->definition.name != properties.name;
  if (renamed) {
    check_name(properties.name);
    const TablePointer taken = session.catalogue().find(properties.name);
    if (taken && taken->id != table) raise(error_number::table_exists, properties.name);
  }
  session.change_catalogue().update_table(table, properties);
  if (renamed) {
    session.connection().run("ALTER TABLE " + quoted_name(stored->definition.name) + " RENAME TO " +
                             quoted_name(properties.name));
  }
  whole.done();
}

void add_field(Session& session, std::int64_t table, const FieldDefinition& field) {
  check_field(field);
  table_for_new_field(session, table, field);
  AtomicChange change{session};
  const TablePointer stored = table_for_new_field(session, table, field);
  session.change_catalogue().insert_field(table, field);
  // A Yes/No is never Null.
  const std::string_view value = field.type == DataType::Boolean ? " DEFAULT 0" : "";
  session.connection().run("ALTER TABLE " + quoted_name(stored->definition.name) + " ADD COLUMN " + column(field) +
                           std::string(value));
  if (field.auto_increment()) number_rows(session, *session.table(table), field);
  change.done();
}

void change_field(Session& session, std::int64_t table, std::int64_t field,
                  const std::function<void(FieldDefinition&)>& change) {
  session.table(table);
  AtomicChange whole{session};
  const TablePointer stored = session.table(table);
  const auto& fields = stored->definition.fields;
  const auto current = std::ranges::find(fields, field, &FieldDefinition::id);
  if (current == fields.end()) raise(error_number::object_invalid);
  FieldDefinition changed = *current;
  change(changed);
  check_field(changed);
  const FieldDefinition* taken = stored->definition.find_field(changed.name);
  if (taken && taken != &*current) raise(error_number::field_defined_twice, changed.name);
  if (!current->auto_increment()) check_auto_number(changed, stored->definition);
  session.change_catalogue().update_field(table, current->name, changed);
  if (current->name != changed.name) {
    session.connection().run("ALTER TABLE " + quoted_name(stored->definition.name) + " RENAME COLUMN " +
                             quoted_name(current->name) + " TO " + quoted_name(changed.name));
  }
  const bool numbered = changed.auto_increment() && !current->auto_increment();
  if (numbered) session.counters().include_values(session.connection(), *session.table(table));
  whole.done();
}

void convert_field(Session& session, std::int64_t table, const FieldDefinition& changed) {
  AtomicChange change{session};
  const TablePointer stored = session.table(table);
  const FieldDefinition* current = stored->definition.find_field(changed.name);
  if (!current) raise(error_number::item_not_found, changed.name);
  if (stored->definition.row_id_column().empty()) raise(error_number::not_supported, "rows without an identity");
  FieldDefinition complete = changed;
  complete.name = current->name;
  check_field(complete);
  if (!current->auto_increment()) check_auto_number(complete, stored->definition);
  session.counters().keep(session.connection(), *stored);
  Connection& connection = session.connection();
  const std::string name = quoted_name(stored->definition.name);
  // No field has a name with ".".
  const std::string old_column = quoted_name("old." + current->name);
  session.change_catalogue().update_field(table, current->name, complete);
  for (const IndexDefinition& index : stored->definition.indexes) {
    connection.run("DROP INDEX " + index_name(table, index.name));
  }
  connection.run("ALTER TABLE " + name + " RENAME COLUMN " + quoted_name(current->name) + " TO " + old_column);
  connection.run("ALTER TABLE " + name + " ADD COLUMN " + column(complete));
  convert_values(connection, stored->definition, old_column, current->type, complete);
  connection.run("ALTER TABLE " + name + " DROP COLUMN " + old_column);
  for (const IndexDefinition& index : stored->definition.indexes) {
    create_sqlite_index(connection, table, stored->definition.name, index);
  }
  if (complete.auto_increment()) session.counters().include_values(connection, *session.table(table));
  change.done();
}

void drop_field(Session& session, std::int64_t table, std::string_view field) {
  field_to_drop(session, table, field);
  AtomicChange change{session};
  const auto [stored, current] = field_to_drop(session, table, field);
  session.counters().keep(session.connection(), *stored);
  session.change_catalogue().erase_field(table, field);
  session.connection().run("ALTER TABLE " + quoted_name(stored->definition.name) + " DROP COLUMN " +
                           quoted_name(current->name));
  change.done();
}

void create_index(Session& session, std::int64_t table, const IndexDefinition& index) {
  check_index(index, session.table(table)->definition);
  AtomicChange change{session};
  const TablePointer stored = session.table(table);
  check_index(index, stored->definition);
  const IndexDefinition complete = bound(index, stored->definition);
  check_no_null(session.connection(), stored->definition, complete);
  session.change_catalogue().insert_index(table, complete);
  create_sqlite_index(session.connection(), table, stored->definition.name, complete);
  change.done();
}

void drop_index(Session& session, std::int64_t table, std::string_view index) {
  name_of_index(session, table, index);
  AtomicChange change{session};
  const std::string name = name_of_index(session, table, index);
  session.change_catalogue().erase_index(table, index);
  session.connection().run("DROP INDEX " + index_name(table, name));
  change.done();
}

}  // namespace engine::embedded::layout
