#include <gmock/gmock.h>

#include <array>

#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class Files : public EngineTest {};

/// Number of rows of `things`, each with a name that can be searched for in the file.
void add_rows(Database& database, int count) {
  const auto rows = database.open_recordset("things");
  for (int i = 0; i < count; ++i) {
    rows->add_new();
    rows->set_value("name", std::string("Findling"));
    rows->update();
  }
}

/// A sound SQLite file of one page without tables, as another program makes it.
std::string foreign_file() {
  std::string page(512, '\0');
  const auto put = [&](std::size_t place, std::string_view bytes) { page.replace(place, bytes.size(), bytes); };
  put(0, std::string_view("SQLite format 3\0\2\0\1\1\0\x40\x20\x20\0\0\0\1\0\0\0\1", 32));
  put(47, "\4");    // schema format
  put(59, "\1");    // UTF-8
  put(95, "\1");    // valid for change 1
  put(100, "\xd");  // an empty leaf
  put(105, "\2");   // whose cells begin at 512
  return page;
}

TEST_F(Files, AreNotThereBeforeTheFirstCommit) {
  create();
  EXPECT_FALSE(exists()) << "closed without a change";
  {
    const auto database = create();
    EXPECT_EQ(database->table_defs().count(), 0);
    EXPECT_EQ(error_number([&] { database->open_recordset("things"); }), 3078);
    EXPECT_FALSE(exists());
    Transaction transaction{*database};
    add_things(*database);
  }
  EXPECT_FALSE(exists()) << "rolled back";
  {
    const auto database = create();
    Transaction transaction{*database};
    transaction.commit();
  }
  EXPECT_TRUE(exists()) << "an empty transaction makes an empty database";
  EXPECT_EQ(open()->table_defs().count(), 0);
}

TEST_F(Files, StartAnewAfterARollback) {
  const auto database = create("test.das", "geheim");
  database->begin_transaction();
  add_things(*database);
  database->rollback_transaction();
  EXPECT_FALSE(exists());
  EXPECT_EQ(database->table_defs().count(), 0);
  add_things(*database);
  EXPECT_EQ(open("test.das", "geheim")->table_defs().count(), 1);
}

TEST_F(Files, AreRefusedWhereTheyCannotBeCreatedOrOpened) {
  add_things(*create());
  add_things(*create("secret.das", "geheim"));
  write("empty.das", "");
  write("text.das", std::string(8192, 'x'));
  write("short.das", "SQLite format 3");
  write("zeros.das", std::string(8192, '\0'));
  write("broken.das", std::string("SQLite format 3\0", 16) + std::string(8176, '\x5a'));
  write("foreign.das", foreign_file());
  write("cut.das", content("secret.das").substr(0, 5000));
  write("jet.mdb", std::string("\0\1\0\0Standard Jet DB\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 34) + std::string(4096, '\0'));
  struct Case {
    std::string name;
    std::string password;
    int number;
  };
  for (const Case& row :
       {Case{"missing.das", "", 3024}, Case{"nowhere\\test.das", "", 3044}, Case{"empty.das", "", 3343},
        Case{"text.das", "geheim", 3343}, Case{"short.das", "", 3343}, Case{"zeros.das", "x", 3343},
        Case{"broken.das", "", 3343}, Case{"foreign.das", "", 3343}, Case{"cut.das", "geheim", 3343},
        Case{"jet.mdb", "", 3343}, Case{"secret.das", "", 3031}, Case{"secret.das", "Geheim", 3031},
        Case{"secret.das", std::string(21, 'x'), 3031}, Case{"test.das", "unasked", 0}}) {
    const std::string before = content(row.name);
    EXPECT_EQ(error_number([&] {
                engine().open_database(path("") + row.name, false, false,
                                       row.password.empty() ? "" : "MS Access;pwd=" + row.password);
              }),
              row.number)
        << row.name << " with password \"" << row.password << '"';
    EXPECT_EQ(content(row.name), before) << row.name << " is left as it was";
  }
  EXPECT_EQ(error_number([&] { create("test.das"); }), 3204);
  EXPECT_EQ(error_number([&] { engine().create_database(path("nowhere") + "\\a.das", locale_general, version_30); }),
            3044);
  try {
    open("jet.mdb");
  } catch (const support::RuntimeError& error) {
    EXPECT_THAT(error.what(), HasSubstr("DAO.DBEngine.36"));
  }
}

TEST_F(Files, WithAPasswordShowNothingOfTheirContent) {
  {
    const auto database = create("test.das", "geheim");
    add_things(*database);
    add_rows(*database, 3);
  }
  for (const std::string_view word : {"Findling", "things", "SQLite"}) EXPECT_THAT(content(), Not(HasSubstr(word)));
  EXPECT_THAT(column(*open("test.das", "geheim"), "things", "name"), ElementsAre("Findling", "Findling", "Findling"));
}

TEST_F(Files, TakeANewPassword) {
  {
    const auto database = create();
    add_things(*database);
    add_rows(*database, 2);
  }
  EXPECT_THAT(content(), HasSubstr("Findling"));
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
    EXPECT_EQ(content().find("Findling") == std::string::npos, !current.empty());
  }
  const auto database = open();
  {
    const auto other = open();
    EXPECT_EQ(error_number([&] { database->new_password("", "eins"); }), 3045);
  }
  Transaction transaction{*database};
  EXPECT_EQ(error_number([&] { database->new_password("", "eins"); }), 3246);
}

TEST_F(Files, OpenedReadOnlyRefuseEveryChange) {
  {
    const auto database = create();
    add_things(*database);
    add_rows(*database, 1);
  }
  const std::string before = content();
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
  EXPECT_EQ(content(), before);
}

TEST_F(Files, InUseByAnotherHandleAreWaitedForAndThenRefused) {
  const auto first = create("test.das", "geheim");
  add_things(*first);
  {
    const auto second = open("test.das", "geheim");
    Transaction transaction{*first};
    add_rows(*first, 1);
    EXPECT_EQ(error_number([&] { second->begin_transaction(); }), 3045);
    EXPECT_EQ(error_number([&] { add_rows(*second, 1); }), 3045);
    EXPECT_THAT(column(*second, "things", "name"), ElementsAre()) << "reads what is committed";
    transaction.commit();
    EXPECT_THAT(column(*second, "things", "name"), ElementsAre("Findling"));
  }
  first->close();
  const auto exclusive = open("test.das", "geheim", false, true);
  EXPECT_EQ(error_number([&] { open("test.das", "geheim"); }), 3045);
  exclusive->close();
  EXPECT_EQ(error_number([&] { open("test.das", "geheim"); }), 0);
}

TEST_F(Files, OnceClosedAnswerNothingMore) {
  const auto database = create();
  add_things(*database);
  add_rows(*database, 1);
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
}

TEST_F(Files, CloseRollsBack) {
  const auto database = create();
  add_things(*database);
  database->begin_transaction();
  add_rows(*database, 3);
  database->close();
  EXPECT_THAT(column(*open(), "things", "name"), ElementsAre());
}

TEST(OpenEngine, AnswersToTheAutomationIdentifiers) {
  EXPECT_NE(open_engine("DAO.DBEngine.36"), nullptr);
  EXPECT_NE(open_engine("dao.dbengine.35"), nullptr);
  EXPECT_EQ(error_number([] { open_engine("DAO.DBEngine.99"); }), 429);
}

}  // namespace
}  // namespace engine::test
