// Database files from a stranger: whatever their schema holds beyond tables and indexes is never run.
#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

std::string varint(std::uint64_t number) {
  std::string bytes(1, static_cast<char>(number & 0x7FU));
  while ((number >>= 7U) != 0) bytes.insert(bytes.begin(), static_cast<char>(0x80U | (number & 0x7FU)));
  return bytes;
}

std::string big_endian(std::size_t number, int bytes) {
  std::string text;
  for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8) text += static_cast<char>(number >> shift & 0xFFU);
  return text;
}

constexpr std::size_t page_size = 4096;

/// A page of a table with one column and one row. The row claims that its text has this length and goes on in page 2.
std::string page_that_claims(std::uint64_t text_size) {
  const std::string type = varint(2 * text_size + 13);
  const std::string header = varint(type.size() + 1) + type;
  const std::uint64_t payload = header.size() + text_size;
  const std::uint64_t least = (page_size - 12) * 32 / 255 - 23;
  const std::uint64_t surplus = least + (payload - least) % (page_size - 4);
  const std::uint64_t local = surplus <= page_size - 35 ? surplus : least;
  std::string cell = varint(payload) + varint(1) + header;
  cell += std::string(static_cast<std::size_t>(local - header.size()), 'x') + big_endian(2, 4);
  const std::size_t start = page_size - cell.size();
  std::string page = "\x0D" + big_endian(0, 2) + big_endian(1, 2) + big_endian(start, 2) + big_endian(0, 1);
  page += big_endian(start, 2);
  return page + std::string(start - page.size(), '\0') + cell;
}

class HostileFile : public EngineTest {
 protected:
  /// Makes a plain database with `things` and a row, then changes it behind the engine's back.
  void craft(const std::string& sql) {
    std::filesystem::remove(host_path());
    {
      const auto database = create();
      add_things(*database);
      database->execute("CREATE TABLE victim (n LONG)");
      database->execute("INSERT INTO things (name) VALUES ('one')");
    }
    sqlite(sql);
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
  craft(
      "CREATE VIEW seen AS SELECT name, sqlite_version() AS v FROM things; PRAGMA writable_schema=ON;"
      "INSERT INTO sqlite_master VALUES ('table', 'virtual', 'virtual', 0, 'CREATE VIRTUAL TABLE virtual USING "
      "csv(x)')");
  const auto database = open();
  EXPECT_EQ(error_number([&] { database->open_recordset("SELECT * FROM virtual"); }), 3078);
  EXPECT_EQ(error_number([&] { database->execute("INSERT INTO virtual (x) VALUES ('x')"); }), 3078);
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

TEST_F(HostileFile, ASchemaThatLiesGivesErrorsWithANumber) {
  const std::string lies[] = {
      "UPDATE sqlite_master SET sql = 'CREATE TABLE things (' WHERE name = 'things'",
      "UPDATE sqlite_master SET sql = 'DROP TABLE victim' WHERE name = 'things'",
      "UPDATE sqlite_master SET rootpage = 1 WHERE name = 'things'",
      "UPDATE sqlite_master SET rootpage = 2147483647 WHERE name = 'things'",
      "UPDATE sqlite_master SET sql = 'CREATE TABLE things (id, CHECK (load_extension(''x''))' WHERE name = 'things'",
      "UPDATE sqlite_master SET sql = replace(hex(zeroblob(500000)), '0', '(') WHERE name = 'things'",
  };
  for (const std::string& lie : lies) {
    craft("PRAGMA writable_schema=ON; " + lie);
    EXPECT_NE(error_number([&] {
                const auto database = open();
                column(*database, "things", "name");
                database->execute("INSERT INTO things (name) VALUES ('two')");
              }),
              0)
        << lie;
  }
}

TEST_F(HostileFile, ATextThatClaimsToBeHugeIsAnError) {
  const struct {
    std::uint64_t size;
    int number;
  } claims[] = {{60ULL << 20U, 3343}, {1ULL << 30U, 14}, {1ULL << 38U, 3343}};
  for (const auto& claim : claims) {
    std::filesystem::remove(host_path());
    create()->execute("CREATE TABLE texts (t MEMO)");
    open()->execute("INSERT INTO texts (t) VALUES ('here')");
    std::string bytes = content();
    // The table's only page is the last one.
    ASSERT_NE(bytes.find("here", bytes.size() - page_size), std::string::npos);
    write("test.das", bytes.substr(0, bytes.size() - page_size) + page_that_claims(claim.size));
    const auto database = open();
    EXPECT_EQ(error_number([&] { column(*database, "texts", "t"); }), claim.number) << claim.size;
    EXPECT_EQ(error_number([&] { column(*database, "SELECT Len(t) AS n FROM texts", "n"); }), claim.number)
        << claim.size;
  }
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
