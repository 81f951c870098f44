// Rows, numbers and objects when two handles work on one file, or when a handle works on something that does not exist
// any more.
#include <functional>

#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

using testing::IsEmpty;

class OddRows : public EngineTest {
 protected:
  OddRows() : here_(create()) {
    add_things(*here_);
    there_ = open();
  }

  Database& here() { return *here_; }
  Database& there() { return *there_; }
  std::vector<std::string> ids() { return column(here(), "SELECT id FROM things ORDER BY id", "id"); }
  void run(std::initializer_list<const char*> statements) {
    for (const char* sql : statements) here().execute(sql);
  }

 private:
  std::unique_ptr<Database> here_;
  std::unique_ptr<Database> there_;
};

TEST_F(OddRows, AnAutoNumberIsNotGivenAgain) {
  const auto remove_last = [&] { here().execute("DELETE FROM things WHERE id=(SELECT max(id) FROM things)"); };
  add_rows(here(), 3);
  remove_last();
  add_rows(there(), 1);
  EXPECT_THAT(ids(), ElementsAre("1", "2", "4")) << "by another handle";
  remove_last();
  here().execute("INSERT INTO things (name) VALUES ('x')");
  EXPECT_THAT(ids(), ElementsAre("1", "2", "5")) << "by a statement";
  remove_last();
  here().close();
  there().close();
  const auto again = open();
  again->execute("INSERT INTO things (name) SELECT name FROM things ORDER BY id DESC");
  EXPECT_THAT(column(*again, "things", "id"), ElementsAre("1", "2", "6", "7")) << "after closing, in the rows' order";
  again->execute("INSERT INTO things (id, name) VALUES (100, 'given')");
  again->execute("DELETE FROM things");
  again->execute("INSERT INTO things (id, name) SELECT IIf(name='x', 5, Null), name FROM (SELECT 'y' AS name) AS q");
  EXPECT_THAT(column(*again, "things", "id"), ElementsAre("101")) << "beyond one that was given";
}

TEST_F(OddRows, TheNumberOfANewRowIsItsOwnBeforeItIsStored) {
  add_rows(here(), 1);
  const auto rows = here().open_recordset("things");
  rows->add_new();
  EXPECT_EQ(rows->value("id"), Value{2});
  here().execute("INSERT INTO things (name) SELECT name FROM things");
  there().execute("INSERT INTO things (name) VALUES ('x')");
  rows->update();
  EXPECT_THAT(ids(), ElementsAre("1", "2", "3", "4"));
  rows->add_new();
  rows->cancel_update();
  here().table_defs().item("things")->fields().remove("id");
  const auto field = here().create_table_def("t")->create_field("id", DataType::Long);
  field->set_attributes(attribute_auto_increment);
  here().table_defs().item("things")->fields().append(field);
  EXPECT_THAT(ids(), ElementsAre("6", "7", "8", "9")) << "5 was given to a row that was not stored";
}

TEST_F(OddRows, AFieldThatBecomesTheAutoNumberCountsOnFromItsValues) {
  run({"CREATE TABLE v (k LONG, x TEXT(5))", "INSERT INTO v VALUES (7, 'a')"});
  here().table_defs().item("v")->fields().item("k")->set_attributes(attribute_auto_increment | attribute_fixed);
  run({"INSERT INTO v (x) VALUES ('b')"});
  EXPECT_THAT(column(there(), "v", "k"), ElementsAre("7", "8"));
}

TEST_F(OddRows, AFileThatWasMadeBeforeCountsOnFromItsHighestRow) {
  add_rows(here(), 3);
  here().close();
  there().close();
  sqlite(R"(DROP TABLE "jet.counters")");
  const auto again = open();
  again->execute("INSERT INTO things (name) VALUES ('x')");
  again->execute("DELETE FROM things WHERE id=4");
  add_rows(*again, 1);
  EXPECT_THAT(column(*again, "things", "id"), ElementsAre("1", "2", "3", "5"));
}

TEST_F(OddRows, ARowThatIsGoneIsNotTheOneInItsPlace) {
  struct Case {
    const char* name;
    std::function<void(Recordset&)> lose;  ///< makes the recordset lose its last row
  };
  const std::vector<Case> cases = {
      {"deleted by another handle", [&](Recordset&) { there().execute("DELETE FROM things WHERE id=2"); }},
      {"rolled back", [&](Recordset& rows) {
         here().begin_transaction();
         rows.add_new();
         rows.set_value("name", std::string("never"));
         rows.update();
         rows.move_last();
         here().rollback_transaction();
       }}};
  for (const Case& row : cases) {
    run({"DELETE FROM things", "INSERT INTO things (id, name) VALUES (1, 'a')",
         "INSERT INTO things (id, name) VALUES (2, 'b')"});
    const auto rows = here().open_recordset("things");
    rows->move_last();
    row.lose(*rows);
    there().execute("INSERT INTO things (name) VALUES ('other')");
    rows->edit();
    EXPECT_EQ(error_number([&] { rows->update(); }), 3167) << row.name << ", nothing new";
    rows->edit();
    rows->set_value("name", std::string("mine"));
    EXPECT_EQ(error_number([&] { rows->update(); }), 3167) << row.name;
    EXPECT_EQ(error_number([&] { rows->delete_row(); }), 3167) << row.name;
    EXPECT_EQ(column(there(), "SELECT name FROM things WHERE name='other'", "name").size(), 1U) << row.name;
  }
}

TEST_F(OddRows, ARowThatFailsFailsNothingElse) {
  run({"CREATE TABLE n (k LONG, d TEXT(5))", "INSERT INTO n VALUES (1, 'x')"});
  for (int doubled = 0; doubled < 9; ++doubled) run({"INSERT INTO n SELECT k, d FROM n"});
  const auto failing = "SELECT k, d, 1/(k-2) AS q FROM n";
  here().execute("INSERT INTO n VALUES (2, 'bad')");
  for (const bool forward : {false, true}) {
    here().begin_transaction();
    const auto rows = forward ? here().open_forward_only(failing) : here().open_recordset(failing);
    here().execute("UPDATE n SET d='y' WHERE k=1");
    here().rollback_transaction();
    add_rows(there(), 1);
    add_rows(here(), 1);
    int read = 0;
    EXPECT_EQ(error_number([&] {
                for (; !rows->eof(); rows->move_next()) ++read;
              }),
              11);
    EXPECT_EQ(read, 512) << forward;
  }
  EXPECT_EQ(column(here(), "SELECT k FROM n WHERE d='y'", "k").size(), 0U) << "rolled back";
  EXPECT_EQ(ids().size(), 4U) << "outside of the transaction";
  EXPECT_EQ(error_number([&] { here().rollback_transaction(); }), 3034);
}

TEST_F(OddRows, ClosingARecordsetEndsItsLock) {
  for (int doubled = 0; doubled < 10; ++doubled) {
    run({"INSERT INTO things (name) VALUES ('x')", "INSERT INTO things (name) SELECT name FROM things"});
  }
  // If they use different names of the file, the handles do not know each other.
  const auto other_name = open("./test.das");
  const auto rows = here().open_recordset("things");
  const auto forward = here().open_forward_only("things");
  rows->close();
  forward->close();
  EXPECT_EQ(error_number([&] { other_name->execute("DELETE FROM things"); }), 0);
}

TEST_F(OddRows, WhatIsGoneIsGone) {
  add_rows(here(), 1);
  const auto rows = there().open_recordset("things");
  const auto table = there().table_defs().item("things");
  const auto field = table->fields().item("name");
  run({"DROP TABLE things", "CREATE TABLE things (id LONG, name TEXT(10), amount LONG)",
       "INSERT INTO things VALUES (1, 'new', 1)"});
  EXPECT_EQ(there().table_defs().count(), 1) << "looks at the file";
  const std::vector<std::function<void()>> calls = {[&] { table->set_name("mine"); },
                                                    [&] { static_cast<void>(table->name()); },
                                                    [&] { table->fields().remove("id"); },
                                                    [&] { field->set_name("mine"); },
                                                    [&] { rows->edit(); },
                                                    [&] { rows->add_new(); },
                                                    [&] { rows->delete_row(); },
                                                    [&] { static_cast<void>(rows->value("name")); }};
  for (std::size_t i = 0; i < calls.size(); ++i) EXPECT_EQ(error_number(calls[i]), 3420) << i;
  EXPECT_THAT(column(here(), "things", "name"), ElementsAre("new"));
}

TEST_F(OddRows, ARecordsetMeetsTheRulesThatTheTableHasNow) {
  add_rows(here(), 1);
  const auto rows = there().open_recordset("things");
  rows->edit();
  rows->set_value("name", Null{});
  here().table_defs().item("things")->fields().item("name")->set_required(true);
  EXPECT_EQ(error_number([&] { rows->update(); }), 3314);
  rows->set_value("name", std::string("zehn Zeich"));
  run({"ALTER TABLE things ALTER COLUMN name TEXT(9)"});
  EXPECT_EQ(error_number([&] { rows->update(); }), 3163);
  rows->set_value("name", std::string("kurz"));
  here().table_defs().item("things")->fields().item("name")->set_name("label");
  EXPECT_EQ(error_number([&] { rows->update(); }), 3265);
  EXPECT_EQ(error_number([&] { rows->set_value("name", std::string("x")); }), 3265);
  rows->edit();
  rows->set_value("amount", 9);
  rows->update();
  EXPECT_THAT(column(here(), "things", "amount"), ElementsAre("9"));
  rows->add_new();
  EXPECT_EQ(error_number([&] { rows->update(); }), 3314) << "the field that was renamed is required still";
}

TEST_F(OddRows, AHandlesPropertyOutlivesAnothersChange) {
  const auto mine = here().table_defs().item("things");
  const auto other = there().table_defs().item("things");
  const auto my_field = mine->fields().item("name");
  const auto other_field = other->fields().item("name");
  mine->set_connect("c");
  other->set_source_table_name("s");
  my_field->set_required(true);
  other_field->set_default_value("'d'");
  EXPECT_EQ(here().table_defs().count(), 1) << "looks at the file";
  EXPECT_EQ(mine->connect() + mine->source_table_name(), "cs");
  EXPECT_TRUE(my_field->required());
  EXPECT_EQ(my_field->default_value(), "'d'");
}

TEST_F(OddRows, ARequiredFieldTakesNoNullWhereverItComesFrom) {
  run({"CREATE TABLE a (k LONG, e TEXT(5))", "CREATE TABLE c (k LONG NOT NULL, r LONG NOT NULL, n TEXT(5) NOT NULL)",
       "CREATE TABLE pk (r LONG PRIMARY KEY, z LONG)", "CREATE TABLE auto (id COUNTER, z LONG)",
       "INSERT INTO a VALUES (1, 'x')", "INSERT INTO a VALUES (2, Null)", "INSERT INTO c VALUES (1, 10, 'n')"});
  const auto old = here().create_table_def("t")->create_field("late", DataType::Long);
  old->set_required(true);
  here().table_defs().item("a")->fields().append(old);
  run({"INSERT INTO pk (r,z) SELECT c.r,a.k FROM a LEFT JOIN c ON a.k=c.k", "INSERT INTO pk (r,z) SELECT late,k FROM a",
       "INSERT INTO auto (id,z) SELECT c.r,a.k FROM a LEFT JOIN c ON a.k=c.k ORDER BY a.k"});
  EXPECT_THAT(column(here(), "pk", "r"), ElementsAre("10"));
  EXPECT_THAT(column(here(), "auto", "id"), ElementsAre("10", "11"));
  const std::pair<const char*, int> refused[] = {{"UPDATE c SET r=(SELECT late FROM a WHERE k=1)", 3314},
                                                 {"UPDATE a INNER JOIN c ON a.k=c.k SET c.r=a.late", 3314},
                                                 {"INSERT INTO c VALUES ((SELECT max(late) FROM a), 1, 'n')", 3314},
                                                 {"UPDATE c SET n=IIf(k=1,Null,'x')", 3314},
                                                 {"UPDATE c SET n=Nz((SELECT e FROM a WHERE k=2))", 3315},
                                                 {"INSERT INTO a (e) VALUES ('' & (SELECT e FROM a WHERE k=2))", 3315}};
  for (const auto& [sql, number] : refused) EXPECT_EQ(error_number([&] { here().execute(sql); }), number) << sql;
}

TEST_F(OddRows, AnUpdateSeesTheRowsAsTheyWere) {
  run({"CREATE TABLE v (k LONG PRIMARY KEY, b LONG)", "INSERT INTO v VALUES (1, 10)", "INSERT INTO v VALUES (2, 20)",
       "INSERT INTO v VALUES (3, 30)", "UPDATE v SET b=Nz((SELECT w.b FROM v AS w WHERE w.k=v.k-1))"});
  EXPECT_THAT(column(here(), "v", "b"), ElementsAre("0", "10", "20"));
  run({"UPDATE v SET b=(SELECT sum(w.b) FROM v AS w), k=k WHERE b<(SELECT max(w.b) FROM v AS w)"});
  EXPECT_THAT(column(here(), "v", "b"), ElementsAre("30", "30", "20"));
}

TEST_F(OddRows, BothEndsAreThereWhereAllRowsAreDeleted) {
  add_rows(here(), 2);
  const auto rows = here().open_recordset("things");
  rows->delete_row();
  rows->move_next();
  rows->delete_row();
  EXPECT_FALSE(rows->bof() || rows->eof()) << "until the next move";
  rows->move_next();
  EXPECT_TRUE(rows->bof() && rows->eof());
  EXPECT_EQ(error_number([&] { rows->move_previous(); }), 3021);
  add_rows(here(), 1);
  const auto last = here().open_recordset("things");
  last->delete_row();
  EXPECT_EQ(error_number([&] { last->move_first(); }), 3021);
  EXPECT_TRUE(last->bof() && last->eof());
}

TEST_F(OddRows, AColumnThatIsWorkedOutFollowsItsRow) {
  const auto rows = here().open_recordset("SELECT id, amount*2 AS twice, amount FROM things WHERE amount<8");
  rows->add_new();
  rows->update();
  rows->move_first();
  EXPECT_EQ(rows->value("twice"), Value{14});
  rows->edit();
  rows->set_value("amount", 50);
  rows->update();
  EXPECT_EQ(rows->value("twice"), Value{100}) << "also where the query would not find it any more";
  rows->edit();
  rows->set_value("amount", 1);
  here().table_defs().item("things")->fields().item("amount")->set_name("count");
  EXPECT_EQ(error_number([&] { rows->update(); }), 3265);
}

TEST_F(OddRows, AListOfManyItemsIsAnsweredOrTooComplex) {
  add_rows(here(), 1);
  const auto error = [&](int items) {
    std::string list = "id*2+1";
    for (int i = 1; i < items; ++i) list += ",id*2+1";
    return error_number([&] { here().open_recordset("SELECT id FROM things WHERE id IN (" + list + ")"); });
  };
  EXPECT_EQ(error(60'000), 0);
  EXPECT_EQ(error(149'000), 3360);
}

TEST_F(OddRows, AYesNoIsNeverNull) {
  add_rows(here(), 1);
  run({"ALTER TABLE things ADD COLUMN b YESNO", "INSERT INTO things (name, b) VALUES ('x', Null)",
       "INSERT INTO things (name) VALUES ('x')", "INSERT INTO things (name, b) SELECT 'x', Null FROM things WHERE id=1",
       "INSERT INTO things (name, b) VALUES ('x', True)", "UPDATE things SET b=Null WHERE b",
       "SELECT name, b=Null AS unknown INTO copy FROM things WHERE id=1"});
  add_rows(here(), 1);
  EXPECT_THAT(column(here(), "SELECT DISTINCT b FROM things", "b"), ElementsAre("False"));
  EXPECT_THAT(column(here(), "copy", "unknown"), ElementsAre("False"));
}

TEST_F(OddRows, NoNumberAndNoTextIsRefusedAtTheRecordset) {
  run({"CREATE TABLE v (s SINGLE, d DOUBLE, t DATETIME, x TEXT(5), m MEMO)"});
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  const auto rows = here().open_recordset("v");
  rows->add_new();
  for (const char* const field : {"s", "d", "t"}) {
    for (const double number : {nan, infinity, -infinity}) {
      EXPECT_EQ(error_number([&] { rows->set_value(field, number); }), 3421) << field << number;
    }
    EXPECT_EQ(error_number([&] { rows->set_value(field, static_cast<float>(infinity)); }), 3421) << field;
    EXPECT_EQ(error_number([&] { rows->set_value(field, Date{nan}); }), 3421) << field;
  }
  for (const char* const field : {"x", "m"}) {
    EXPECT_EQ(error_number([&] { rows->set_value(field, std::string("a\xff")); }), 3421) << field;
  }
}

}  // namespace
}  // namespace engine::test
