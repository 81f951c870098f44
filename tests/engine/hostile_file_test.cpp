// Database files from a stranger: what their schema holds beyond tables and indexes is never run.
#include <gmock/gmock.h>
#include <sqlite3.h>

#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

class HostileFile : public EngineTest {
 protected:
  /// A plain database with `things` and a row, then changed behind the engine's back.
  void craft(const std::string& sql) {
    std::filesystem::remove(host_path());
    {
      const auto database = create();
      add_things(*database);
      database->execute("CREATE TABLE victim (n LONG)");
      database->execute("INSERT INTO things (name) VALUES ('one')");
    }
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(host_path().string().c_str(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(connection);
    sqlite3_close(connection);
  }
};

TEST_F(HostileFile, TriggersDoNotFire) {
  craft(
      "CREATE TRIGGER a AFTER INSERT ON things BEGIN INSERT INTO victim VALUES (1); END;"
      "CREATE TRIGGER b AFTER UPDATE ON things BEGIN DELETE FROM victim; END;"
      "CREATE TRIGGER c BEFORE DELETE ON things BEGIN SELECT RAISE(FAIL, 'no'); END; INSERT INTO victim VALUES (7)");
  const auto database = open();
  database->execute("INSERT INTO things (name) VALUES ('two')");
  database->execute("UPDATE things SET name = 'three'");
  database->execute("DELETE FROM things");
  EXPECT_THAT(column(*database, "victim", "n"), testing::ElementsAre("7"));
}

TEST_F(HostileFile, ViewsAndVirtualTablesAreNoTables) {
  craft("CREATE VIEW seen AS SELECT name, sqlite_version() AS v FROM things");
  const auto database = open();
  EXPECT_EQ(error_number([&] { database->open_recordset("SELECT * FROM seen"); }), 3078);
  EXPECT_EQ(error_number([&] { database->execute("INSERT INTO seen (name) VALUES ('x')"); }), 3078);
  EXPECT_THAT(column(*database, "things", "name"), testing::ElementsAre("one"));
}

TEST_F(HostileFile, AViewInTheTablesPlaceIsRefused) {
  craft("ALTER TABLE things RENAME TO hidden; CREATE VIEW things AS SELECT * FROM hidden");
  EXPECT_NE(error_number([&] {
              const auto database = open();
              database->open_recordset("things")->value("name");
            }),
            0);
}

TEST_F(HostileFile, AHeaderThatClaimsMorePagesThanTheFileHasIsAnError) {
  craft("SELECT 1");
  std::string bytes = content();
  for (const std::size_t offset : {28U, 29U, 30U, 31U}) bytes[offset] = '\x7F';
  write("test.das", bytes);
  const int number = error_number([&] {
    const auto database = open();
    EXPECT_THAT(column(*database, "things", "name"), testing::ElementsAre("one"));
  });
  EXPECT_THAT(number, testing::AnyOf(0, 3343)) << "the rows as they are, or no database";
}

}  // namespace
}  // namespace engine::test
