// Any text as a statement: it becomes a program that SQLite prepares, or an error with a number. Running the program
// ends.
#include "database/engine/embedded/jet_sql/field_type.h"
#include "fuzz/target.h"
#include "support/error.h"
#include "tests/jet_sql/sql_database.h"

namespace {

using jet_sql_test::SqlDatabase;

constexpr std::string_view seed[] = {
    "CREATE TABLE patdat (id COUNTER CONSTRAINT k PRIMARY KEY, name TEXT(50), typ SHORT, birthday DATETIME, n MEMO)",
    "CREATE TABLE glucose (id COUNTER, datum DATETIME, wert SINGLE, hba DOUBLE, mark YESNO, kind BYTE, patient LONG)",
    "CREATE INDEX datum ON glucose (datum)",
    "INSERT INTO patdat (name, typ, birthday) VALUES ('Müller', 1, #2/29/1964#)",
    "INSERT INTO patdat (name, typ, n) VALUES ('O''Brien', 2, 'note')",
    "INSERT INTO glucose (datum, wert, hba, mark, kind, patient) VALUES (#3/7/2024 10:20:00#, 5.6, 7.1, True, 3, 1)",
    "INSERT INTO glucose (datum, wert, patient) VALUES (#3/8/2024#, 101, 2)",
};

/// A table with rules.
engine::embedded::TableDefinition ruled_table() {
  using engine::embedded::new_field;
  engine::embedded::TableDefinition table{.name = "ruled", .fields = {}};
  table.fields = {new_field("id", engine::DataType::Long), new_field("n", engine::DataType::Single),
                  new_field("t", engine::DataType::Text, 20)};
  table.fields[0].attributes |= engine::attribute_auto_increment;
  table.fields[1].validation_rule = "Between 1 And 9 Or Is Null";
  table.fields[2].validation_rule = "Like 'a*'";
  table.validation_rule = "Len([t]) > [n]";
  return table;
}

SqlDatabase& database() {
  static SqlDatabase* const filled = [] {
    auto* const made = new SqlDatabase();
    made->create(ruled_table());
    for (const std::string_view statement : seed) made->run(statement);
    return made;
  }();
  return *filled;
}

/// The SQLite statement of a program; empty for a change of layout.
std::string sqlite_text(std::string_view statement, const engine::embedded::jet_sql::Program& program) {
  using namespace engine::embedded::jet_sql;
  if (std::holds_alternative<CrossTable>(program)) {
    return compile_cross_table(statement, database().catalogue(), {"1", std::nullopt, "Müller"}).sqlite_sql;
  }
  if (const auto* const query = std::get_if<Query>(&program)) return query->sqlite_sql;
  if (const auto* const change = std::get_if<Change>(&program)) return change->sqlite_sql;
  return {};
}

/// Runs the text for a limited time, without lasting effect.
void run(const std::string& text) {
  sqlite3* const connection = database().connection();
  sqlite3_stmt* statement = nullptr;
  const char* rest = nullptr;
  const int result = sqlite3_prepare_v2(connection, text.c_str(), -1, &statement, &rest);
  if (result != SQLITE_OK) {
    std::fprintf(stderr, "%s\nin %s\n", sqlite3_errmsg(connection), text.c_str());
    fuzz::promise(false, "SQLite prepares what the compiler accepts");
  }
  fuzz::promise(rest != nullptr && *rest == '\0', "one statement becomes one statement");
  int calls = 0;
  sqlite3_progress_handler(
      connection, 1000, [](void* count) { return ++*static_cast<int*>(count) > 50 ? 1 : 0; }, &calls);
  sqlite3_exec(connection, "SAVEPOINT input", nullptr, nullptr, nullptr);
  int step = SQLITE_ROW;
  for (int rows = 0; rows < 100 && step == SQLITE_ROW; ++rows) step = sqlite3_step(statement);
  if (step != SQLITE_ROW && step != SQLITE_DONE) {
    fuzz::promise(engine::embedded::jet_sql::error_of(connection, step).number() != 0, "an error has a number");
  }
  sqlite3_finalize(statement);
  sqlite3_progress_handler(connection, 0, nullptr, nullptr);
  sqlite3_exec(connection, "ROLLBACK TO input; RELEASE input", nullptr, nullptr, nullptr);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view statement = fuzz::text_of(data, size);
  try {
    const auto program = engine::embedded::jet_sql::compile(statement, database().catalogue());
    if (const auto* const table = std::get_if<engine::embedded::jet_sql::CrossTable>(&program)) {
      run(table->headings.sqlite_sql);
    }
    const std::string text = sqlite_text(statement, program);
    if (!text.empty()) run(text);
  } catch (const support::RuntimeError& error) {
    fuzz::promise(error.number() != 0, "an error has a number");
  }
  return 0;
}
