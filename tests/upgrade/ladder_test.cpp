// The ladder, apart from the golden comparison: which databases are upgraded, the question before pump data are
// converted, and exceptional cases.
#include "database/upgrade/ladder.h"

#include <fstream>
#include <map>

#include "database/upgrade/steps.h"
#include "support/error.h"
#include "tests/database/refusing_database.h"
#include "tests/upgrade/old_layout.h"

namespace database::testing {
namespace {

struct Question {
  std::string text, title;
  std::uint32_t style;
};

class NotedProgress : public Progress {
 public:
  void start(std::string_view caption, std::int32_t maximum) override {
    calls.push_back("start " + std::string(caption) + " " + std::to_string(maximum));
  }
  void set_caption(std::string_view) override {}
  void set_value(std::int32_t value) override { calls.push_back(std::to_string(value)); }
  void finish() override { calls.push_back("finish"); }
  void upgrade_step(std::int16_t version, std::string_view table) override {
    if (steps.empty() || steps.back().first != version) steps.emplace_back(version, table);
  }
  std::vector<std::string> calls;
  std::vector<std::pair<std::int16_t, std::string>> steps;
};

class Ladder : public OldLayout {
 protected:
  Ladder() {
    environment.progress = &progress;
    answer(1);
  }
  void answer(int button) {
    environment.message_box = [this, button](std::string_view text, std::uint32_t style, std::string_view title) {
      questions.push_back({std::string(text), std::string(title), style});
      return button;
    };
  }
  std::vector<std::string> all_rows(const std::string& file) const { return row_lines(*open(file).database); }
  bool has_table(const std::string& file, std::string_view name) const {
    try {
      open(file).database->table_defs().item(name);
      return true;
    } catch (const support::RuntimeError&) {
      return false;
    }
  }
  /// The version steps that an upgrade from there runs.
  std::vector<std::int16_t> steps_from(const std::string& file, std::int16_t version) {
    execute(file, {"UPDATE db_info SET MinVersion=" + std::to_string(version)});
    progress.steps.clear();
    EXPECT_EQ(upgrade(file), 1);
    std::vector<std::int16_t> steps;
    for (const auto& step : progress.steps) steps.push_back(step.first);
    return steps;
  }

  NotedProgress progress;
  std::vector<Question> questions;
};

TEST_F(Ladder, AsksBeforeItConvertsTenDaysOfPumpDataOrMore) {
  const std::string file = old_database(57);
  ASSERT_EQ(upgrade(file), 1);
  ASSERT_EQ(questions.size(), 1U);
  EXPECT_EQ(
      questions[0].text,
      "Zur künftig schnelleren Berechnung der Pumpenstatistik müssen die gesamten Daten nun einmalig konvertiert "
      "werden\r\nDieser Vorgang kann sehr lange dauern und sollte nicht abgebrochen werden !\r\nBitte klicken Sie "
      "auf OK, wenn die Konvertierung jetzt erfolgen kann; ansonsten klicken Sie auf ABBRUCH");
  EXPECT_EQ(questions[0].title, "Achtung");
  EXPECT_EQ(questions[0].style, 17U);
  EXPECT_EQ(progress.calls, (std::vector<std::string>{"start Text 2011 12", "1", "2", "3", "4", "5", "6", "7", "8", "9",
                                                      "10", "11", "12", "finish"}));

  const std::string nine_days = old_database(57);
  execute(nine_days, {"DELETE * FROM insulinpump WHERE vDate>=#3/10/2009#"});
  ASSERT_EQ(upgrade(nine_days), 1);
  EXPECT_EQ(questions.size(), 1U);
  EXPECT_EQ(rows(nine_days, "SELECT count(*) FROM ip"), std::vector<std::string>{"9"});
  EXPECT_TRUE(has_table(nine_days, "PumpConfiguration"));
}

TEST_F(Ladder, LeavesPumpDataAloneForAnyAnswerButOk) {
  const std::vector<std::string> untouched{"18,4"};
  for (const int button : {2, 0, 6}) {
    const std::string file = old_database(58);
    execute(file, {"UPDATE db_info SET MinVersion=57"});
    answer(button);
    ASSERT_EQ(upgrade(file), 1);
    EXPECT_EQ(stored_version(file), current_minor_version) << button;
    EXPECT_EQ(rows(file, "SELECT TotalBasal FROM ip"), untouched) << button;
    EXPECT_EQ(rows(file, "SELECT [desc] FROM insulinpump WHERE ID=1"), std::vector<std::string>{" 57600"}) << button;
    EXPECT_FALSE(has_table(file, "PumpConfiguration")) << button;
  }
  EXPECT_TRUE(progress.calls.empty());
}

TEST_F(Ladder, ChangesNothingWhereNobodyCanBeAsked) {
  const std::string file = old_database(58);
  execute(file, {"UPDATE db_info SET MinVersion=57"});
  environment.message_box = {};
  const support::Outcome outcome = support::outcome_of([&] { EXPECT_EQ(upgrade(file), 0); });
  ASSERT_TRUE(outcome.last());
  EXPECT_EQ(outcome.last()->number(), 3059);
  EXPECT_EQ(stored_version(file), 57);
}

TEST_F(Ladder, BeginsAtTheStepThatTheVersionCallsFor) {
  struct Case {
    std::int16_t version;
    std::vector<std::int16_t> first_steps;
  };
  const Case cases[] = {{0, {3, 5, 6}}, {1, {5, 6}},        {2, {5, 6}},    {39, {41, 42}},
                        {40, {41, 42}}, {57, {58, 59, 60}}, {58, {59, 60}}, {59, {58, 59, 60}}};
  const std::string file = old_database(57);
  for (const Case& row : cases) {
    auto steps = steps_from(file, row.version);
    ASSERT_GE(steps.size(), row.first_steps.size());
    steps.resize(row.first_steps.size());
    EXPECT_EQ(steps, row.first_steps) << row.version;
  }
  EXPECT_TRUE(steps_from(file, current_minor_version).empty());
  EXPECT_TRUE(steps_from(file, current_minor_version + 1).empty());
}

TEST_F(Ladder, LeavesWhatItHasUpgradedAsItIs) {
  const std::string file = old_database(0);
  ASSERT_EQ(upgrade(file), 1);
  const auto once = all_rows(file);
  ASSERT_EQ(upgrade(file), 1);
  EXPECT_EQ(all_rows(file), once);
  EXPECT_EQ(questions.size(), 1U);
}

TEST_F(Ladder, LeavesOtherMajorVersionsAndNewerOnesAlone) {
  const std::string next = std::to_string(current_minor_version + 1);
  for (const auto& [major, minor] : std::map<std::string, std::string>{{"3", "12"}, {"5", "1"}, {"4", next}}) {
    const std::string file = old_database(27);
    execute(file, {"UPDATE db_info SET MajVersion=" + major + ", MinVersion=" + minor});
    ASSERT_EQ(upgrade(file), 1);
    EXPECT_TRUE(progress.steps.empty()) << major;
    EXPECT_TRUE(has_table(file, "imports")) << major;
    EXPECT_EQ(rows(file, "SELECT MajVersion, MinVersion FROM db_info"), std::vector<std::string>{major + "|" + minor});
  }
}

TEST_F(Ladder, GivesTheRowThatItWidensTheZonesOfTheSettingsFile) {
  zone_file.values = {{"FixTimeFrom1", "0515"}, {"TimeUntil4", "0430"}};
  const std::string file = old_database(24);
  ASSERT_EQ(upgrade(file), 1);
  EXPECT_EQ(rows(file, "SELECT BB_From, BB_Until, UTZ4_Until FROM patdat_setup"),
            std::vector<std::string>{"1899-12-30 05:15:00|1899-12-30 08:59:00|1899-12-30 04:30:00"});

  // A file whose upgrade another program interrupted: it has the columns already, and zones of the user's.
  const std::string widened = old_database(27);
  execute(widened, {"UPDATE db_info SET MinVersion=24"});
  ASSERT_EQ(upgrade(widened), 1);
  EXPECT_EQ(rows(widened, "SELECT BB_From, AB_From FROM patdat_setup"),
            std::vector<std::string>{"1899-12-30 05:00:00|Null"});
}

TEST_F(Ladder, BringsImportsOverWhateverTextIsEmpty) {
  for (const std::string_view column : {"MeterID", "ImportDesc"}) {
    const std::string file = old_database(33);
    {
      const Opened opened = open(file);
      opened.database->table_defs().item("imports")->fields().item(column)->set_allow_zero_length(true);
      opened.database->execute("INSERT INTO imports (ImportFrom, [" + std::string(column) + "]) VALUES (9, '')");
    }
    ASSERT_EQ(upgrade(file), 1);
    EXPECT_EQ(rows(file, "SELECT ImportFrom, [" + std::string(column) + "] FROM import WHERE ImportFrom=9"),
              std::vector<std::string>{"9|Null"});
    EXPECT_EQ(rows(file, "SELECT count(*) FROM import"), std::vector<std::string>{"3"});
    EXPECT_FALSE(has_table(file, "imports"));
  }
}

TEST_F(Ladder, KeepsOldImportsUntilAllOfThemHaveArrivedAndSaysWhyNot) {
  const std::string file = old_database(33);
  execute(file, {"CREATE TABLE import (id COUNTER, ImportFrom SHORT, MeterID TEXT(50))",
                 "CREATE UNIQUE INDEX once ON import (ImportFrom)",
                 "INSERT INTO imports (ImportFrom, MeterID) VALUES (7, 'twice')"});
  std::vector<std::string> told;
  environment.rows_left = [&](const RowsLeft& rows) { told.push_back(sentence(rows)); };
  ASSERT_EQ(upgrade(file), 1);
  EXPECT_EQ(rows(file, "SELECT ImportFrom FROM import ORDER BY ImportFrom"), (std::vector<std::string>{"7", "8"}));
  EXPECT_EQ(rows(file, "SELECT count(*) FROM imports"), std::vector<std::string>{"3"});
  ASSERT_EQ(told.size(), 1U);
  EXPECT_EQ(told[0].rfind("1 of 3 rows of imports could not be brought over and stay there: ", 0), 0U) << told[0];
  EXPECT_NE(told[0].find("duplicate"), std::string::npos) << told[0];
}

TEST_F(Ladder, CopiesLaboratoryValuesWhateverTheirComment) {
  const std::string file = old_database(44);
  {
    const Opened opened = open(file);
    opened.database->table_defs().item("patdat_labs")->fields().item("sComment")->set_allow_zero_length(true);
    opened.database->execute("INSERT INTO patdat_labs (vdate, dHbAc, sComment) VALUES (#1/2/2010#, 6.5, '')");
  }
  ASSERT_EQ(upgrade(file), 1);
  EXPECT_EQ(rows(file, "SELECT [value] FROM labvalues WHERE vdate=#1/2/2010#"), std::vector<std::string>{"6,5"});
}

TEST_F(Ladder, FindsInsulinUnderItsOldNames) {
  for (const std::string name : {"insuline", "insulina"}) {
    const std::string file = old_database(45);
    open(file).database->table_defs().item("insulin")->set_name(name);
    ASSERT_EQ(upgrade(file), 1);
    EXPECT_EQ(rows(file, "SELECT BolusIE FROM insulin"), std::vector<std::string>{"6,5"}) << name;
  }
}

TEST_F(Ladder, TellsOfStatementsThatItPassesOver) {
  std::map<int, int> passed_over;
  const auto before = support::set_skipped_step_listener(
      [&](std::string_view, const support::RuntimeError& error) { ++passed_over[error.number()]; });
  ASSERT_EQ(upgrade(old_database(18)), 1);
  support::set_skipped_step_listener(before);
  // The misspelled table of step 19, and the column that only the old import list has, are passed over.
  EXPECT_EQ(passed_over[3078], 1);
  EXPECT_EQ(passed_over[3127], 1);
}

TEST_F(Ladder, ChangesNothingWhereItCannotGoToItsEnd) {
  const std::string file = old_database(0);
  const std::string content = read_file(file);
  environment.message_box = [](std::string_view, std::uint32_t, std::string_view) -> int {
    throw support::RuntimeError(3059, "nobody can be asked");
  };
  EXPECT_EQ(upgrade(file), 0);
  EXPECT_EQ(read_file(file), content);

  // A page of the glucose values cannot be read.
  answer(1);
  std::string damaged = content;
  const std::size_t page = damaged.find("nüchtern") & ~std::size_t{4095};
  damaged.replace(page, 4096, std::string(4096, '\x5a'));
  write_file(file, damaged);
  EXPECT_EQ(upgrade(file), 0);
  EXPECT_TRUE(read_file(file) == damaged);
}

TEST_F(Ladder, EndsAtALockThatAnotherUserHolds) {
  answer(1);
  for (const int lock : {3008, 3052, 3189, 3218, 3262}) {
    const std::string file = old_database(40);
    VersionRecord record;
    ASSERT_TRUE(db_ReadDBInfo(environment, file, record));
    RefusingDatabase database(open(file).database, [&](std::string_view statement) {
      if (statement.starts_with("INSERT INTO import")) throw support::RuntimeError(lock, "locked");
    });
    EXPECT_EQ(db_WriteDBInfo(environment, database, record), 0) << lock;
    database.close();
    EXPECT_EQ(stored_version(file), 40) << lock;
  }
}

TEST(LayoutHistory, TellsEveryStepInItsOwnWords) {
  std::vector<std::string> told, issued;
  std::ifstream document(SOURCE_DIR "/docs/layout-history.md");
  for (std::string line; std::getline(document, line);) {
    if (line.starts_with("| 4.")) told.push_back(line.substr(2, line.find(" | ", line.find(" | ") + 1) - 2));
  }
  for (const upgrade::Step& step : upgrade::steps()) {
    issued.push_back("4." + std::to_string(step.version) + " | " + std::string(step.purpose));
  }
  EXPECT_EQ(told, issued);
}

}  // namespace
}  // namespace database::testing
