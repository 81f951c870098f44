#include <functional>

#include "tests/engine/conformance/conformance.h"

namespace engine::test {
namespace {

class Execute : public ConformanceTest {
 protected:
  Execute() : database_(create()) { add_things(*database_); }

  Database& database() { return *database_; }
  /// Runs the statements and returns how many rows the last one changed.
  std::int32_t run(const std::vector<std::string>& statements) {
    for (const std::string& statement : statements) database_->execute(statement);
    return database_->records_affected();
  }
  std::vector<std::string> values(std::string_view source, std::string_view field) {
    return column(database(), source, field);
  }

 private:
  std::unique_ptr<Database> database_;
};

TEST_P(Execute, TellsTheRowsChanged) {
  EXPECT_EQ(run({"INSERT INTO things (name) VALUES ('Anna')"}), 1);
  EXPECT_EQ(run({"INSERT INTO things (name, amount) VALUES ('Bert', 1)", "UPDATE things SET amount = amount + 1"}), 2);
  EXPECT_THAT(values("SELECT amount FROM things ORDER BY name", "amount"), ElementsAre("8", "2"));
  EXPECT_EQ(run({"DELETE * FROM things WHERE name = 'anna'"}), 1);
  EXPECT_EQ(run({"DELETE FROM things WHERE name = 'nobody'"}), 0);
  EXPECT_EQ(error_number([&] { database().execute("SELECT name FROM things"); }), 3065);
  EXPECT_EQ(database().records_affected(), 0);
}

TEST_P(Execute, NumbersNewRowsAndKeepsNumbersGiven) {
  run({"INSERT INTO things (name) VALUES ('a')", "INSERT INTO things (id, name) VALUES (10, 'b')",
       "INSERT INTO things (name) VALUES ('c')", "INSERT INTO things (name) SELECT name FROM things ORDER BY id"});
  EXPECT_EQ(database().records_affected(), 3);
  EXPECT_THAT(values("things", "id"), ElementsAre("1", "10", "11", "12", "13", "14"));
  EXPECT_THAT(values("things", "name"), ElementsAre("a", "b", "c", "a", "b", "c"));
  const auto rows = database().open_recordset("things");
  rows->add_new();
  EXPECT_EQ(rows->value("id"), Value{15});
  rows->update();
  run({"INSERT INTO things (name) VALUES ('d')"});
  EXPECT_THAT(values("SELECT id FROM things WHERE id > 14", "id"), ElementsAre("15", "16"));
  rows->add_new();
  EXPECT_EQ(rows->value("id"), Value{17}) << "whichever way the numbers were taken";
}

TEST_P(Execute, ChecksAsARecordsetDoes) {
  database().table_defs().item("things")->fields().item("name")->set_required(true);
  for (const auto& [statement, number] :
       std::vector<std::pair<std::string, int>>{{"INSERT INTO things (name) VALUES ('elf Zeichen')", 3163},
                                                {"INSERT INTO things (name) VALUES ('')", 3315},
                                                {"INSERT INTO things (amount) VALUES (1)", 3314},
                                                {"INSERT INTO things (name, amount) VALUES ('a', 40000)", 3421},
                                                {"INSERT INTO things (nothing) VALUES (1)", 3127},
                                                {"INSERT INTO nothing (name) VALUES (1)", 3078},
                                                {"UPDATE things SET name = 'a'; DELETE FROM things", 3142}}) {
    EXPECT_EQ(error_number([&] { database().execute(statement); }), number) << statement;
  }
  EXPECT_THAT(values("things", "id"), ElementsAre());
}

TEST_P(Execute, ChangesTheLayout) {
  run({"CREATE TABLE [neu] (id COUNTER, klein BYTE, zahl SHORT, wann DATETIME, ja YESNO, wort TEXT(20), lang MEMO)",
       "INSERT INTO neu (zahl, wort) VALUES (5, '12')", "INSERT INTO neu (zahl, wort) VALUES (6, '40000')",
       "CREATE UNIQUE INDEX u ON neu (zahl)", "ALTER TABLE neu ADD COLUMN mehr DOUBLE",
       "ALTER TABLE neu ALTER COLUMN zahl LONG", "ALTER TABLE neu DROP COLUMN lang"});
  const auto table = database().table_defs().item("neu");
  const auto field = [&](std::string_view name) { return table->fields().item(name); };
  EXPECT_EQ(table->fields().count(), 7);
  EXPECT_EQ(field("id")->attributes() & attribute_auto_increment, attribute_auto_increment);
  EXPECT_EQ(field("wort")->size(), 20);
  EXPECT_EQ(field("wort")->attributes(), attribute_variable);
  EXPECT_EQ(field("zahl")->type(), DataType::Long);
  EXPECT_THAT(values("neu", "zahl"), ElementsAre("5", "6"));
  EXPECT_THAT(values("neu", "id"), ElementsAre("1", "2"));
  EXPECT_EQ(error_number([&] { database().execute("ALTER TABLE neu ALTER COLUMN wort SHORT"); }), 3421);
  EXPECT_EQ(field("wort")->type(), DataType::Text) << "all or nothing";
  EXPECT_THAT(values("neu", "wort"), ElementsAre("12", "40000"));
  const auto rows = database().open_recordset("neu");
  rows->add_new();
  rows->set_value("zahl", 5);
  EXPECT_EQ(error_number([&] { rows->update(); }), 3022) << "the index outlived the conversion";
  run({"DROP INDEX u ON neu", "DROP TABLE neu"});
  for (const auto& [statement, number] :
       std::vector<std::pair<std::string, int>>{{"CREATE TABLE things (a LONG)", 3010},
                                                {"ALTER TABLE things ADD COLUMN name LONG", 3380},
                                                {"ALTER TABLE things DROP COLUMN nothing", 3381},
                                                {"ALTER TABLE things ALTER COLUMN nothing LONG", 3381},
                                                {"ALTER TABLE nothing DROP COLUMN name", 3376},
                                                {"DROP TABLE nothing", 3376},
                                                {"DROP INDEX nothing ON things", 3372},
                                                {"CREATE INDEX i ON things (nothing)", 3409}}) {
    EXPECT_EQ(error_number([&] { database().execute(statement); }), number) << statement;
  }
}

TEST_P(Execute, CopiesATableOfThisFile) {
  run({"INSERT INTO things (name, note) VALUES ('a', '')", "INSERT INTO things (name) VALUES ('b')",
       "SELECT name, amount * 1.5 AS half, note INTO copy FROM things WHERE name > 'a'"});
  EXPECT_EQ(database().records_affected(), 1);
  EXPECT_THAT(values("copy", "half"), ElementsAre("10,5"));
  const auto copy = database().table_defs().item("copy");
  EXPECT_EQ(copy->fields().item("name")->size(), 10);
  EXPECT_EQ(copy->fields().item("half")->type(), DataType::Double);
  EXPECT_FALSE(copy->fields().item("note")->allow_zero_length()) << "names, types and sizes only";
  EXPECT_EQ(error_number([&] { database().execute("SELECT * INTO copy FROM things"); }), 3010);
}

TEST_P(Execute, CopiesATableOfAnotherFile) {
  struct Case {
    std::string file;
    std::string password;
    int number;
  };
  const auto other_file = [&](const Case& row) {
    const auto other = create(row.file, row.password);
    add_things(*other);
    other->execute("INSERT INTO things (id, name) VALUES (5, 'Müller')");
  };
  database().new_password("", "geheim");
  int count = 0;
  for (const Case& row : {Case{"plain.mdb", "", 0}, Case{"same.mdb", "geheim", 0}, Case{"other.mdb", "anders", 3031}}) {
    other_file(row);
    const std::string target = "copy" + std::to_string(++count);
    const std::string statement = "SELECT * INTO " + target + " FROM things IN '" + path(row.file) + "'";
    const std::string before = content(row.file);
    EXPECT_EQ(error_number([&] { database().execute(statement); }), row.number) << row.file;
    EXPECT_EQ(content(row.file), before);
    if (row.number != 0) continue;
    EXPECT_THAT(values(target, "name"), ElementsAre("Müller"));
    EXPECT_THAT(values(target, "id"), ElementsAre("5"));
    EXPECT_EQ(database().table_defs().item(target)->fields().item("id")->attributes(), attribute_fixed);
  }
  EXPECT_EQ(error_number([&] { database().execute("SELECT * INTO c FROM things IN '" + path("no.mdb") + "'"); }), 3024);
  EXPECT_EQ(error_number([&] { database().execute("SELECT * INTO c FROM no IN '" + path("plain.mdb") + "'"); }), 3078);
  EXPECT_EQ(database().table_defs().count(), 3);
}

TEST_P(Execute, ShowsACrosstabByARecordset) {
  run({"INSERT INTO things (name, amount) VALUES ('a', 1)", "INSERT INTO things (name, amount) VALUES ('b', 2)",
       "INSERT INTO things (name, amount) VALUES ('a', 4)"});
  const std::string crosstab = "TRANSFORM Sum(amount) SELECT note FROM things GROUP BY note PIVOT name";
  EXPECT_EQ(error_number([&] { database().execute(crosstab); }), 3065);
  const auto rows = database().open_recordset(crosstab);
  ASSERT_EQ(rows->field_count(), 3);
  EXPECT_EQ(rows->field_name(1) + rows->field_name(2), "ab");
  EXPECT_EQ(to_text(rows->value("a")) + to_text(rows->value("b")), "52");
  EXPECT_FALSE(rows->updatable());
  run({"INSERT INTO things (name) VALUES ('c')"});
  EXPECT_EQ(database().open_recordset(crosstab)->field_count(), 4) << "the columns follow the rows";
}

TEST_P(Execute, RollsBackWithItsTransaction) {
  {
    Transaction transaction{database()};
    run({"INSERT INTO things (name) VALUES ('a')", "CREATE TABLE neu (a LONG)", "DROP TABLE neu"});
    EXPECT_EQ(error_number([&] { database().execute("INSERT INTO things (name) VALUES ('')"); }), 3315);
    EXPECT_THAT(values("things", "name"), ElementsAre("a")) << "a failed statement undoes itself alone";
  }
  EXPECT_THAT(values("things", "name"), ElementsAre());
  run({"INSERT INTO things (name) VALUES ('b')"});
  EXPECT_THAT(values("things", "id"), ElementsAre("2")) << "a number that was given is not given again";
}

TEST_P(Execute, TakesFieldsThatHideTheIdentityOfRows) {
  run({"CREATE TABLE odd (rowid LONG, oid COUNTER)", "INSERT INTO odd (rowid) VALUES (7)",
       "INSERT INTO odd (rowid) VALUES (7)"});
  const auto rows = database().open_recordset("odd");
  rows->edit();
  rows->set_value("rowid", 8);
  rows->update();
  EXPECT_THAT(values("odd", "rowid"), ElementsAre("8", "7"));
  EXPECT_THAT(values("odd", "oid"), ElementsAre("1", "2"));
}

INSTANTIATE_TEST_SUITE_P(Engine, Execute, testing::ValuesIn(engines_under_test()), name_of_engine);

}  // namespace
}  // namespace engine::test
