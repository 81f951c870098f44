#include <functional>

#include "tests/engine/conformance/conformance.h"

namespace engine::test {
namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::EndsWith;
using testing::StartsWith;

std::string error_text(const std::function<void()>& call) {
  try {
    call();
    return "no error";
  } catch (const support::RuntimeError& error) {
    return std::to_string(error.number()) + " " + error.what();
  }
}

/// Matches an error by its number, and by its text unless the engine may lose it: an object that returns its error as
/// the result of a call has no text.
auto tells(int number, const std::string& text) {
  return AllOf(StartsWith(std::to_string(number) + " "), AnyOf(HasSubstr(text), EndsWith(" Automation error")));
}

class Rules : public ConformanceTest {
 protected:
  Rules() : database_(create()) { add_things(*database_); }

  Database& database() { return *database_; }
  void set_rule(std::string_view field, std::string_view rule, std::string_view text = {}) {
    const auto changed = database().table_defs().item("things")->fields().item(field);
    changed->set_validation_rule(rule);
    changed->set_validation_text(text);
  }
  std::function<void()> running(const std::string& sql) {
    return [this, sql] { database().execute(sql); };
  }
  std::vector<std::string> amounts() { return column(database(), "SELECT amount FROM things ORDER BY id", "amount"); }

 private:
  std::unique_ptr<Database> database_;
};

TEST_P(Rules, OfAFieldHoldForStatements) {
  set_rule("amount", "Between 1 And 100", "Die Menge muss zwischen 1 und 100 liegen.");
  set_rule("name", "Like 'A*'");
  const auto breached = tells(3316, "Die Menge muss zwischen 1 und 100 liegen.");
  EXPECT_THAT(error_text(running("INSERT INTO things (amount) VALUES (101)")), breached);
  EXPECT_EQ(error_text(running("INSERT INTO things (name, amount) VALUES ('Anna', 100.4)")), "no error")
      << "the value is checked as it is stored";
  EXPECT_EQ(error_text(running("INSERT INTO things (name, amount) VALUES (Null, Null)")), "no error");
  EXPECT_THAT(error_text(running("UPDATE things SET amount = amount + 1 WHERE name = 'Anna'")), breached);
  EXPECT_EQ(error_text(running("UPDATE things SET name = 'Xaver', amount = 5")).substr(0, 5), "3317 ");
  EXPECT_THAT(error_text(running("UPDATE things SET name = 'Xaver'")),
              tells(3317, "'Like 'A*'' set for 'things.name'"));
  EXPECT_EQ(error_text(running("UPDATE things SET note = 'x', amount = amount - 1")), "no error");
  EXPECT_THAT(amounts(), ElementsAre("99", "NULL"));
}

TEST_P(Rules, OfAFieldHoldForRecordsets) {
  database().execute("INSERT INTO things (name, amount) VALUES ('before', -5)");
  set_rule("amount", ">0", "zu klein");
  const auto rows = database().open_recordset("things");
  rows->edit();
  rows->set_value("name", std::string("edited"));
  rows->update();
  EXPECT_EQ(to_text(rows->value("name")), "edited") << "a field that does not change is not checked";
  rows->edit();
  rows->set_value("amount", Value{std::int16_t{0}});
  EXPECT_THAT(error_text([&] { rows->update(); }), tells(3316, "zu klein"));
  rows->set_value("amount", Value{std::int16_t{1}});
  rows->update();
  rows->add_new();
  rows->set_value("amount", Value{std::int16_t{-1}});
  EXPECT_THAT(error_text([&] { rows->update(); }), tells(3316, "zu klein"));
  rows->set_value("amount", Null{});
  rows->update();
  EXPECT_THAT(amounts(), ElementsAre("1", "NULL"));
}

TEST_P(Rules, OfATableSpeakOfTheWholeRow) {
  const auto table = database().table_defs().item("things");
  table->set_validation_rule("Len([name]) < [amount] Or [note] Is Not Null");
  table->set_validation_text("Name zu lang");
  EXPECT_THAT(error_text(running("INSERT INTO things (name, amount) VALUES ('Bert', 4)")), tells(3316, "Name zu lang"));
  EXPECT_EQ(error_text(running("INSERT INTO things (name) VALUES ('Bert')")), "no error") << "the default is 7";
  EXPECT_THAT(error_text(running("UPDATE things SET amount = 4")), tells(3316, "Name zu lang"));
  EXPECT_EQ(error_text(running("UPDATE things SET amount = 4, note = 'x'")), "no error");
  const auto rows = database().open_recordset("SELECT note FROM things");
  rows->edit();
  rows->set_value("note", Null{});
  EXPECT_THAT(error_text([&] { rows->update(); }), tells(3316, "Name zu lang"));
  EXPECT_THAT(column(database(), "things", "note"), ElementsAre("x"));
}

TEST_P(Rules, StayWhenTheirFieldChangesItsType) {
  set_rule("amount", ">0");
  database().execute("ALTER TABLE things ALTER COLUMN amount LONG");
  EXPECT_EQ(error_number(running("INSERT INTO things (amount) VALUES (0)")), 3317);
}

INSTANTIATE_TEST_SUITE_P(Engine, Rules, testing::ValuesIn(engines_under_test()), name_of_engine);

}  // namespace
}  // namespace engine::test
