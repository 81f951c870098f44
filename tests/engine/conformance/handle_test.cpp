#include <array>

#include "tests/engine/conformance/conformance.h"

namespace engine::test {
namespace {

class Handles : public ConformanceTest {};

TEST_P(Handles, GiveTheirFileANewPassword) {
  {
    const auto database = create();
    add_things(*database);
    add_rows(*database, 2);
  }
  struct Case {
    std::string old_password;
    std::string new_password;
    int number;
    std::string then;
  };
  std::string current;
  for (const Case& row :
       {Case{"falsch", "eins", 3031, ""}, Case{"", "eins", 0, "eins"}, Case{"", "zwei", 3031, "eins"},
        Case{"Eins", "zwei", 3031, "eins"}, Case{"eins", "zwei;pwd=Ä", 0, "zwei;pwd=Ä"},
        Case{"zwei;pwd=Ä", std::string(21, 'x'), 3031, "zwei;pwd=Ä"}, Case{"zwei;pwd=Ä", "", 0, ""}}) {
    const auto database = open("test.das", current);
    EXPECT_EQ(error_number([&] { database->new_password(row.old_password, row.new_password); }), row.number)
        << row.old_password << " to " << row.new_password;
    EXPECT_THAT(column(*database, "things", "name"), ElementsAre("Findling", "Findling"));
    add_rows(*database, 1);
    database->execute("DELETE FROM things WHERE id > 2");
    current = row.then;
    EXPECT_THAT(column(*open("test.das", current), "things", "name"), ElementsAre("Findling", "Findling"));
  }
  const auto database = open();
  {
    const auto other = open();
    EXPECT_EQ(error_number([&] { database->new_password("", "eins"); }), 3045);
  }
  Transaction transaction{*database};
  EXPECT_EQ(error_number([&] { database->new_password("", "eins"); }), 3246);
}

TEST_P(Handles, OpenedReadOnlyRefuseEveryChange) {
  {
    const auto database = create();
    add_things(*database);
    add_rows(*database, 1);
  }
  {
    const auto database = open("test.das", "", true);
    const auto rows = database->open_recordset("things");
    const auto table = database->create_table_def("more");
    table->fields().append(table->create_field("a", DataType::Long));
    const std::array refused = {
        error_number([&] { rows->add_new(); }),
        error_number([&] { rows->edit(); }),
        error_number([&] { rows->delete_row(); }),
        error_number([&] { database->execute("DELETE FROM things"); }),
        error_number([&] { database->table_defs().append(table); }),
        error_number([&] { database->table_defs().remove("things"); }),
        error_number([&] { database->table_defs().item("things")->fields().item("name")->set_required(true); }),
        error_number([&] { database->new_password("", "geheim"); }),
    };
    EXPECT_THAT(refused, testing::Each(3027));
    Transaction transaction{*database};
    EXPECT_THAT(column(*database, "things", "name"), ElementsAre("Findling"));
  }
  EXPECT_THAT(column(*open(), "things", "name"), ElementsAre("Findling"));
}

TEST_P(Handles, OnceClosedAnswerNothingMore) {
  const auto database = create();
  add_things(*database);
  add_rows(*database, 300);  // more than are read at once
  const auto table = database->table_defs().item("things");
  const auto field = table->fields().item("name");
  const auto rows = database->open_recordset("things");
  TableDefs& tables = database->table_defs();
  database->close();
  database->close();
  const std::array refused = {
      error_number([&] { database->table_defs(); }),
      error_number([&] { database->open_recordset("things"); }),
      error_number([&] { database->execute("DELETE FROM things"); }),
      error_number([&] { database->create_table_def("more"); }),
      error_number([&] { database->begin_transaction(); }),
      error_number([&] { database->new_password("", "x"); }),
      error_number([&] { tables.count(); }),
      error_number([&] { table->name(); }),
      error_number([&] { table->fields().count(); }),
      error_number([&] { field->set_required(true); }),
      error_number([&] { rows->value("name"); }),
      error_number([&] { rows->move_first(); }),
      error_number([&] { rows->eof(); }),
  };
  EXPECT_THAT(refused, testing::Each(3420));
  EXPECT_EQ(error_number([&] { open()->new_password("", "x"); }), 0) << "the file is let go";
}

TEST_P(Handles, RollBackWhenTheyClose) {
  const auto database = create();
  add_things(*database);
  database->begin_transaction();
  add_rows(*database, 3);
  database->close();
  EXPECT_THAT(column(*open(), "things", "name"), ElementsAre());
}

TEST_P(Handles, AreRefusedWithoutAFile) {
  create("there.das")->execute("CREATE TABLE t (a LONG)");
  EXPECT_EQ(error_number([&] { open("missing.das"); }), 3024);
  EXPECT_EQ(error_number([&] { create("there.das"); }), 3204);
  EXPECT_EQ(error_number([&] { create("nowhere\\x.das"); }), 3044);
}

INSTANTIATE_TEST_SUITE_P(Engine, Handles, testing::ValuesIn(engines_under_test()), name_of_engine);

}  // namespace
}  // namespace engine::test
