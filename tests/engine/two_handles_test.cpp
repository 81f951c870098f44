#include <gmock/gmock.h>

#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

using testing::ElementsAre;

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
  // A change that is rolled back, then as many committed ones: the count alone would not tell.
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
