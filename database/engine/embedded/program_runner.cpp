#include "database/engine/embedded/program_runner.h"

#include <memory>

#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/embedded/layout.h"
#include "database/engine/engine_error.h"
#include "support/file_system.h"

namespace engine::embedded {
namespace {

/// Opens the other file of SELECT … INTO … IN, first without a password, then with this database's. Raises 3045 where
/// it is this database's own file: the statement would wait for a lock that it holds itself.
std::shared_ptr<Session> open_other_file(const Session& session, std::string_view path) {
  const std::string host_path = support::host_file_system().host_path(path);
  if (session.is_file_at(host_path)) raise(error_number::file_in_use);
  const ConnectionOptions options{.read_only = true, .busy_time = session.options().busy_time};
  try {
    return Session::open(host_path, {}, options);
  } catch (const support::RuntimeError& error) {
    if (error.number() != error_number::wrong_password &&
        (error.number() != error_number::unknown_format || session.password().empty()))
      throw;
  }
  return Session::open(host_path, session.password(), options);
}

/// The names, types and sizes of a query's columns. The table takes nothing else from the fields behind them.
TableDefinition table_of_columns(const std::string& name, const std::vector<jet_sql::ResultColumn>& columns) {
  TableDefinition table;
  table.name = name;
  for (const jet_sql::ResultColumn& column : columns) {
    table.fields.push_back(new_field(column.name, column.type, column.size));
  }
  return table;
}

std::int32_t copy_rows(Connection& source, const jet_sql::Query& query, Session& target, const TablePointer& table) {
  const PooledStatement rows = source.statement(query.sqlite_sql);
  Connection& connection = target.connection();
  const PooledStatement insert = connection.statement(target.statements_of(table).insert);
  const int columns = static_cast<int>(query.columns.size());
  const bool with_identity = !table->definition.row_id_column().empty();
  std::int32_t count = 0;
  for (; rows->step(); ++count) {
    int parameter = 0;
    if (with_identity) insert->bind(++parameter, target.counters().next_row(connection, *table));
    for (int column = 0; column < columns; ++column) {
      insert->bind_column(++parameter, *rows, column);
      // A Yes/No without a value is No.
      const bool boolean = query.columns[static_cast<std::size_t>(column)].type == DataType::Boolean;
      if (boolean && rows->storage_class(column) == SQLITE_NULL) insert->bind(parameter, std::int64_t{0});
    }
    insert->run();
  }
  return count;
}

/// The tables, fields and indexes that a program names exist: it was compiled against the catalogue of this moment.
TablePointer named_table(Session& session, const std::string& name) { return session.catalogue().find(name); }

/// Runs each kind of program. The result is the number of rows changed.
struct Runner {
  Session& session;

  std::int32_t operator()(const jet_sql::Query&) const { raise(error_number::select_executed); }
  std::int32_t operator()(const jet_sql::CrossTable&) const { raise(error_number::select_executed); }

  std::int32_t operator()(const jet_sql::Change& change) const {
    Connection& connection = session.connection();
    const TablePointer table = named_table(session, change.table);
    if (change.adds_rows) session.counters().lend(connection, *table);
    connection.run(change.sqlite_sql);
    const std::int32_t count = connection.changes();
    if (change.adds_rows) session.counters().take_back(connection, *table);
    return count;
  }

  std::int32_t operator()(const jet_sql::SelectInto& into) const {
    if (session.catalogue().find(into.target)) raise(error_number::table_exists, into.target);
    const std::shared_ptr<Session> other =
        into.external_file.empty() ? nullptr : open_other_file(session, into.external_file);
    Session& source = other ? *other : session;
    const auto program = source.compile(into.select_text);
    const auto* query = std::get_if<jet_sql::Query>(program.get());
    if (!query) raise(error_number::invalid_operation);
    const std::int64_t id = layout::create_table(session, table_of_columns(into.target, query->columns));
    return copy_rows(source.connection(), *query, session, session.table(id));
  }

  std::int32_t operator()(const jet_sql::CreateTable& create) const {
    layout::create_table(session, create.table);
    return 0;
  }

  std::int32_t operator()(const jet_sql::AddField& add) const {
    layout::add_field(session, named_table(session, add.table)->id, add.field);
    return 0;
  }

  std::int32_t operator()(const jet_sql::AlterField& alter) const {
    const TablePointer table = named_table(session, alter.table);
    const FieldDefinition* current = table->definition.find_field(alter.field.name);
    FieldDefinition changed = alter.field;
    // Properties that the statement does not name stay.
    changed.ordinal_position = current->ordinal_position;
    changed.allow_zero_length = current->allow_zero_length;
    changed.required = changed.required || current->required;
    changed.validation_rule = current->validation_rule;
    changed.validation_text = current->validation_text;
    if (changed.default_value.empty()) changed.default_value = current->default_value;
    layout::convert_field(session, table->id, changed);
    return 0;
  }

  std::int32_t operator()(const jet_sql::DropField& drop) const {
    layout::drop_field(session, named_table(session, drop.table)->id, drop.field);
    return 0;
  }

  std::int32_t operator()(const jet_sql::DropTable& drop) const {
    layout::drop_table(session, named_table(session, drop.table)->id);
    return 0;
  }

  std::int32_t operator()(const jet_sql::CreateIndex& create) const {
    layout::create_index(session, named_table(session, create.table)->id, create.index);
    return 0;
  }

  std::int32_t operator()(const jet_sql::DropIndex& drop) const {
    layout::drop_index(session, named_table(session, drop.table)->id, drop.index);
    return 0;
  }
};

}  // namespace

std::int32_t run_program(Session& session, const jet_sql::Program& program) {
  return std::visit(Runner{session}, program);
}

}  // namespace engine::embedded
