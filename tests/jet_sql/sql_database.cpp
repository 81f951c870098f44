#include "tests/jet_sql/sql_database.h"

#include <array>
#include <charconv>
#include <stdexcept>

#include "database/engine/embedded/jet_sql/sqlite_functions.h"
#include "database/engine/value.h"
#include "support/encoding.h"

namespace jet_sql_test {

namespace {

std::string_view type_word(engine::DataType type) {
  switch (type) {
    case engine::DataType::Boolean:
      return "Boolean";
    case engine::DataType::Byte:
      return "Byte";
    case engine::DataType::Integer:
      return "Integer";
    case engine::DataType::Long:
      return "Long";
    case engine::DataType::Single:
      return "Single";
    case engine::DataType::Double:
      return "Double";
    case engine::DataType::Date:
      return "Date";
    case engine::DataType::Text:
      return "Text";
    case engine::DataType::Memo:
      return "Memo";
  }
  return "?";
}

template <typename Number>
std::string shortest(Number number) {
  std::array<char, 40> buffer{};
  return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

std::string cell(sqlite3_stmt* statement, int column, engine::DataType type) {
  if (sqlite3_column_type(statement, column) == SQLITE_NULL) return "Null";
  switch (type) {
    case engine::DataType::Single:
      return shortest(static_cast<float>(sqlite3_column_double(statement, column)));
    case engine::DataType::Double:
      return shortest(sqlite3_column_double(statement, column));
    case engine::DataType::Date:
      return engine::iso_text({sqlite3_column_double(statement, column)});
    case engine::DataType::Text:
    case engine::DataType::Memo:
      if (sqlite3_column_type(statement, column) != SQLITE_TEXT) return "not a text";
      return "'" + std::string(reinterpret_cast<const char*>(sqlite3_column_text(statement, column))) + "'";
    default:
      if (sqlite3_column_type(statement, column) != SQLITE_INTEGER) return "not a whole number";
      return std::to_string(sqlite3_column_int64(statement, column));
  }
}

std::string quoted_name(std::string_view name) {
  std::string text = "\"";
  for (const char character : name) text.append(character == '"' ? 2 : 1, character);
  return text += '"';
}

std::string column_declaration(const FieldDefinition& field) {
  const bool text = field.type == engine::DataType::Text || field.type == engine::DataType::Memo;
  const bool whole = field.type <= engine::DataType::Long;
  return quoted_name(field.name) + " " + (text ? "TEXT COLLATE JET" : whole ? "INTEGER" : "REAL");
}

}  // namespace

const TableDefinition* Tables::find_table(std::string_view name) const {
  for (const auto& table : tables) {
    if (support::equal_ignoring_case(table->name, name)) return table.get();
  }
  return nullptr;
}

SqlDatabase::SqlDatabase() {
  sqlite3* connection = nullptr;
  const int result = sqlite3_open(":memory:", &connection);
  connection_.reset(connection);
  if (result != SQLITE_OK) throw std::runtime_error("no database in memory");
  numbering_ = &jet_sql::register_functions(connection);
}

SqlDatabase::PreparedStatement SqlDatabase::prepare(const std::string& text) {
  sqlite3_stmt* statement = nullptr;
  const int result = sqlite3_prepare_v2(connection(), text.c_str(), -1, &statement, nullptr);
  if (result != SQLITE_OK) throw std::logic_error(sqlite3_errmsg(connection()) + (" in " + text));
  return PreparedStatement(statement);
}

void SqlDatabase::sqlite(const std::string& text) {
  if (sqlite3_exec(connection(), text.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::logic_error(sqlite3_errmsg(connection()));
  }
}

void SqlDatabase::allow_empty_texts(std::string_view name) {
  for (const auto& table : tables_.tables) {
    if (!support::equal_ignoring_case(table->name, name)) continue;
    for (FieldDefinition& field : table->fields) field.allow_zero_length = true;
  }
}

void SqlDatabase::create(const TableDefinition& table) {
  std::string columns;
  for (const FieldDefinition& field : table.fields) {
    columns += (columns.empty() ? "" : ", ") + column_declaration(field);
  }
  sqlite("CREATE TABLE " + quoted_name(table.name) + "(" + columns + ")");
  tables_.tables.push_back(std::make_unique<TableDefinition>(table));
  tables_.tables.back()->indexes.clear();
  for (const IndexDefinition& index : table.indexes) create(table.name, index);
}

void SqlDatabase::create(const std::string& name, const IndexDefinition& index) {
  std::string fields;
  for (const std::string& field : index.fields) fields += (fields.empty() ? "" : ", ") + quoted_name(field);
  sqlite(std::string("CREATE ") + (index.unique ? "UNIQUE " : "") + "INDEX " + quoted_name(name + "." + index.name) +
         " ON " + quoted_name(name) + "(" + fields + ")");
  for (const auto& table : tables_.tables) {
    if (support::equal_ignoring_case(table->name, name)) table->indexes.push_back(index);
  }
}

jet_sql::Numbering SqlDatabase::last_given(const std::string& name) {
  const TableDefinition& table = *tables_.find_table(name);
  const std::string number = table.auto_number() ? quoted_name(table.auto_number()->name) : "0";
  const auto statement =
      prepare("SELECT max(" + number + "), max(" + std::string(table.row_id_column()) + ") FROM " + quoted_name(name));
  sqlite3_step(statement.get());
  return {sqlite3_column_int64(statement.get(), 0), sqlite3_column_int64(statement.get(), 1)};
}

/// Runs queries, changes and CREATE statements; other changes of the layout belong to the engine.
struct Runner {
  SqlDatabase& database;
  std::string_view source;

  Answer operator()(const jet_sql::Query& query) const {
    Answer answer;
    for (const jet_sql::ResultColumn& column : query.columns) {
      answer.columns += (answer.columns.empty() ? "" : ", ") + column.name + " " + std::string(type_word(column.type));
    }
    const auto statement = database.prepare(query.sqlite_sql);
    int result = SQLITE_ROW;
    while ((result = sqlite3_step(statement.get())) == SQLITE_ROW) {
      std::string row;
      for (std::size_t i = 0; i < query.columns.size(); ++i) {
        row += (i == 0 ? "" : " | ") + cell(statement.get(), static_cast<int>(i), query.columns[i].type);
      }
      answer.rows.push_back(std::move(row));
    }
    if (result != SQLITE_DONE) throw jet_sql::error_of(database.connection(), result);
    return answer;
  }

  Answer operator()(const jet_sql::CrossTable& table) const {
    std::vector<std::optional<std::string>> headings;
    const auto statement = database.prepare(table.headings.sqlite_sql);
    int result = SQLITE_ROW;
    while ((result = sqlite3_step(statement.get())) == SQLITE_ROW) {
      const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
      headings.push_back(text == nullptr ? std::nullopt : std::optional<std::string>(text));
    }
    if (result != SQLITE_DONE) throw jet_sql::error_of(database.connection(), result);
    return (*this)(jet_sql::compile_cross_table(source, database.catalogue(), headings));
  }

  Answer operator()(const jet_sql::Change& change) const {
    const auto statement = database.prepare(change.sqlite_sql);
    if (change.adds_rows) *database.numbering_ = database.last_given(change.table);
    const int result = sqlite3_step(statement.get());
    if (result != SQLITE_DONE) throw jet_sql::error_of(database.connection(), result);
    return {{}, {std::to_string(sqlite3_changes(database.connection()))}};
  }

  Answer operator()(const jet_sql::CreateTable& create) const {
    database.create(create.table);
    return {};
  }

  Answer operator()(const jet_sql::CreateIndex& create) const {
    database.create(create.table, create.index);
    return {};
  }

  template <typename Layout>
  Answer operator()(const Layout&) const {
    return {};
  }
};

Answer SqlDatabase::run(std::string_view statement) {
  return std::visit(Runner{*this, statement}, jet_sql::compile(statement, tables_));
}

std::string SqlDatabase::value(std::string_view statement) {
  const Answer answer = run(statement);
  return answer.rows.empty() ? "no row" : answer.rows.front();
}

int SqlDatabase::error(std::string_view statement) {
  try {
    run(statement);
    return 0;
  } catch (const support::RuntimeError& error) {
    return error.number();
  }
}

}  // namespace jet_sql_test
