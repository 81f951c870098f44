#include "tests/engine/test_database.h"

#include <sqlite3.h>

#include <fstream>
#include <random>

#include "database/engine/embedded/embedded_engine.h"
#include "support/file_system.h"
#include "tests/support/file_content.h"

namespace engine::test {

std::unique_ptr<Engine> impatient_engine() { return embedded::create_embedded_engine(std::chrono::milliseconds{50}); }

EngineTest::EngineTest(std::unique_ptr<Engine> engine) : engine_(std::move(engine)) {
  folder_ = std::filesystem::temp_directory_path() / ("firststeps_engine_" + std::to_string(std::random_device{}()));
  std::filesystem::create_directories(folder_);
}

EngineTest::~EngineTest() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

std::string EngineTest::path(std::string_view name) const {
  return support::host_file_system().windows_path(host_path(name).string());
}

std::string EngineTest::content(std::string_view name) const {
  return support::testing::content_of(host_path(name)).value_or("");
}

void EngineTest::write(std::string_view name, std::string_view bytes) const {
  std::ofstream(host_path(name), std::ios::binary) << bytes;
}

std::unique_ptr<Database> EngineTest::create(std::string_view name, std::string_view password) {
  auto database = engine_->create_database(path(name), locale_general, version_30);
  if (!password.empty()) database->new_password("", password);
  return database;
}

std::unique_ptr<Database> EngineTest::open(std::string_view name, std::string_view password, bool read_only,
                                           bool exclusive) {
  const std::string connect = password.empty() ? "" : "MS Access;pwd=" + std::string(password);
  return engine_->open_database(path(name), exclusive, read_only, connect);
}

void EngineTest::sqlite(const std::string& sql, std::string_view name) const {
  sqlite3* connection = nullptr;
  ASSERT_EQ(sqlite3_open(host_path(name).string().c_str(), &connection), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(connection);
  sqlite3_close(connection);
}

void EngineTest::add_things(Database& database) {
  const auto table = database.create_table_def("things");
  const auto append = [&](std::string_view name, DataType type, std::int32_t size) {
    const auto field = table->create_field(name, type, size);
    if (name == "id") field->set_attributes(attribute_auto_increment);
    if (name == "amount") field->set_default_value("7");
    if (name == "note") field->set_allow_zero_length(true);
    table->fields().append(field);
  };
  append("id", DataType::Long, 0);
  append("name", DataType::Text, 10);
  append("amount", DataType::Integer, 0);
  append("note", DataType::Memo, 0);
  database.table_defs().append(table);
}

void add_rows(Database& database, int count) {
  const auto rows = database.open_recordset("things");
  for (int i = 0; i < count; ++i) {
    rows->add_new();
    rows->set_value("name", std::string("Findling"));
    rows->update();
  }
}

std::vector<std::string> column(Database& database, std::string_view source, std::string_view field) {
  std::vector<std::string> values;
  const auto rows = database.open_recordset(source);
  for (; !rows->eof(); rows->move_next()) {
    const Value value = rows->value(field);
    values.push_back(is_null(value) ? "NULL" : to_text(value));
  }
  return values;
}

}  // namespace engine::test
