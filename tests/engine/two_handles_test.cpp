#include <sqlite3.h>

#include <chrono>

#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

class TwoHandles : public EngineTest {};

TEST_F(TwoHandles, SeeEachOthersChangesOfLayout) {
  const auto first = create();
  add_things(*first);
  const auto second = open();
  const auto things = second->table_defs().item("things");
  EXPECT_FALSE(things->fields().item("name")->required());
  first->table_defs().item("things")->fields().item("name")->set_required(true);
  EXPECT_EQ(second->table_defs().count(), 1) << "looks at the file";
  EXPECT_TRUE(things->fields().item("name")->required());
  first->table_defs().item("things")->set_name("others");
  EXPECT_EQ(second->table_defs().item(0)->name(), "others");
  EXPECT_EQ(things->name(), "others");
  EXPECT_EQ(error_number([&] { second->open_recordset("things"); }), 3078);
  // A change that is rolled back, then as many committed ones: the count of changes alone would not show the
  // difference.
  first->begin_transaction();
  first->table_defs().item("others")->set_name("never");
  first->rollback_transaction();
  second->table_defs().item("others")->set_name("now");
  EXPECT_EQ(first->table_defs().item(0)->name(), "now");
}

TEST_F(TwoHandles, DoNotStopEachOtherHalfRead) {
  const auto here = create();
  add_things(*here);
  here->execute("INSERT INTO things (name) VALUES ('x')");
  for (int doubled = 0; doubled < 9; ++doubled) here->execute("INSERT INTO things (name) SELECT name FROM things");
  const auto rows = here->open_recordset("things");
  open()->execute("DELETE FROM things");
  rows->move_last();
  EXPECT_EQ(rows->value("id"), Value{512});
  EXPECT_THAT(column(*here, "things", "id"), ElementsAre());
}

/// A reader of the file that does not finish, through a program that knows nothing about our handles.
class EndlessReader {
 public:
  explicit EndlessReader(const std::filesystem::path& file) {
    sqlite3* handle = nullptr;
    EXPECT_EQ(sqlite3_open(file.string().c_str(), &handle), SQLITE_OK);
    handle_.reset(handle);
    EXPECT_EQ(sqlite3_exec(handle, "BEGIN; SELECT count(*) FROM things", nullptr, nullptr, nullptr), SQLITE_OK);
  }

 private:
  struct Close {
    void operator()(sqlite3* handle) const noexcept { sqlite3_close(handle); }
  };
  std::unique_ptr<sqlite3, Close> handle_;
};

TEST_F(TwoHandles, WaitOnceAStatementForAReaderHoweverMuchItWrites) {
  using Clock = std::chrono::steady_clock;
  const auto here = create();
  add_things(*here);
  here->execute("INSERT INTO things (note) VALUES ('" + std::string(3000, 'x') + "')");
  const auto double_rows = [&] { here->execute("INSERT INTO things (note) SELECT note FROM things"); };
  for (int doubled = 0; doubled < 9; ++doubled) double_rows();
  const EndlessReader reader{host_path()};
  const auto begin = Clock::now();
  // The changes need hundreds of pages more than they have room for; each one is a reason to ask for the lock.
  EXPECT_EQ(error_number(double_rows), 3045);
  here->begin_transaction();
  const auto rows = here->open_recordset("things");
  for (int row = 0; row < 1000; ++row) {
    rows->add_new();
    rows->set_value("note", std::string(3000, 'y'));
    rows->update();
  }
  EXPECT_EQ(error_number([&] { here->commit_transaction(); }), 3045);
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(10)) << "three times the busy time, and the work";
  EXPECT_THAT(column(*here, "SELECT count(*) AS n FROM things", "n"), ElementsAre("512"));
}

TEST_F(TwoHandles, DoNotWaitForThemselves) {
  const auto here = create();
  add_things(*here);
  std::filesystem::create_hard_link(host_path(), host_path("other.das"));
  const auto begin = std::chrono::steady_clock::now();
  for (const std::string& file : {path(), path("other.das")}) {
    EXPECT_EQ(error_number([&] { here->execute("SELECT * INTO copies FROM things IN '" + file + "'"); }), 3045);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
  EXPECT_EQ(here->table_defs().count(), 1);
}

TEST_F(TwoHandles, NumberNewRowsDifferently) {
  const auto first = create();
  add_things(*first);
  const auto second = open();
  const auto here = first->open_recordset("things");
  const auto there = second->open_recordset("things");
  here->add_new();
  there->add_new();
  here->update();
  there->update();
  here->add_new();
  here->update();
  EXPECT_THAT(column(*first, "things", "id"), ElementsAre("1", "2", "3"));
}

TEST_F(TwoHandles, CompileStatementsAnewAfterChangesOfLayout) {
  const auto first = create();
  add_things(*first);
  const std::string insert = "INSERT INTO things (name) VALUES ('abcdefghijk')";
  EXPECT_EQ(error_number([&] { first->execute(insert); }), 3163);
  const auto second = open();
  second->execute("ALTER TABLE things ALTER COLUMN name TEXT(11)");
  EXPECT_EQ(error_number([&] { first->execute(insert); }), 0);
  EXPECT_THAT(column(*second, "things", "name"), ElementsAre("abcdefghijk"));
}

}  // namespace
}  // namespace engine::test
