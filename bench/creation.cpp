// Creates a complete patient database: through CreatePatientDatabase, and by hand with the same schema and rows in one
// transaction.
#include "bench/jobs.h"
#include "bench/patient_file.h"
#include "bench/straight.h"

namespace bench {
namespace {

struct Table {
  std::string insert;  ///< INSERT with a parameter a column
  std::vector<std::vector<std::unique_ptr<sqlite3_value, void (*)(sqlite3_value*)>>> rows;
};

/// All objects except SQLite's own tables and the engine's catalogue, whose names hold a ".": by hand, nobody would
/// write those.
const std::string user_objects = "name NOT LIKE 'sqlite%' AND tbl_name NOT LIKE '%.%' ORDER BY rowid";

/// The content of a created file, ready to be written again.
struct Content {
  std::vector<std::string> schema;
  std::vector<Table> tables;
};

std::vector<std::string> texts(sqlite3* database, std::string_view sql) {
  std::vector<std::string> result;
  const StraightStatement statement = prepare(database, sql);
  while (sqlite3_step(statement.get()) == SQLITE_ROW) {
    result.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)));
  }
  return result;
}

Table read_table(sqlite3* database, const std::string& name) {
  const StraightStatement statement = prepare(database, "SELECT * FROM \"" + name + "\"");
  const int columns = sqlite3_column_count(statement.get());
  Table table;
  table.insert = "INSERT INTO \"" + name + "\" VALUES (?";
  for (int i = 1; i < columns; ++i) table.insert += ",?";
  table.insert += ")";
  while (sqlite3_step(statement.get()) == SQLITE_ROW) {
    auto& row = table.rows.emplace_back();
    for (int i = 0; i < columns; ++i) {
      row.emplace_back(sqlite3_value_dup(sqlite3_column_value(statement.get(), i)), sqlite3_value_free);
    }
  }
  return table;
}

Content read_content(const std::string& path) {
  const StraightDatabase database = open_straight(path, database::default_password);
  Content content;
  content.schema = texts(database.get(), "SELECT sql FROM sqlite_master WHERE sql IS NOT NULL AND " + user_objects);
  const std::string names = "SELECT name FROM sqlite_master WHERE type = 'table' AND " + user_objects;
  for (const std::string& name : texts(database.get(), names)) {
    Table table = read_table(database.get(), name);
    if (!table.rows.empty()) content.tables.push_back(std::move(table));
  }
  return content;
}

void write_straight(const std::string& path, const Content& content) {
  const StraightDatabase database = open_straight(path, database::default_password);
  execute(database.get(), "BEGIN IMMEDIATE");
  for (const std::string& sql : content.schema) execute(database.get(), sql);
  for (const Table& table : content.tables) {
    const StraightStatement insert = prepare(database.get(), table.insert);
    for (const auto& row : table.rows) {
      for (std::size_t i = 0; i < row.size(); ++i) {
        check(database.get(), sqlite3_bind_value(insert.get(), static_cast<int>(i) + 1, row[i].get()));
      }
      check(database.get(), sqlite3_step(insert.get()));
      check(database.get(), sqlite3_reset(insert.get()));
    }
  }
  execute(database.get(), "COMMIT");
}

}  // namespace

Job creation_job(const std::filesystem::path& folder) {
  const std::filesystem::path model = folder / "model.das", ours = folder / "ours.das",
                              straight = folder / "straight.das";
  create_patient_file(model);
  const auto content = std::make_shared<Content>(read_content(model.string()));
  return {.name = "create a patient database",
          .limit = 1.5,
          .ours =
              [ours] {
                std::filesystem::remove(ours);
                create_patient_file(ours);
              },
          .straight =
              [straight, content] {
                std::filesystem::remove(straight);
                write_straight(straight.string(), *content);
              },
          .rounds = 15};
}

}  // namespace bench
