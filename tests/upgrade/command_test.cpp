// The console tool's commands for old databases and pump data.
#include <gmock/gmock.h>

#include <filesystem>
#include <sstream>

#include "apps/patientdb/patientdb.h"
#include "database/upgrade/ladder.h"
#include "database/version_record.h"
#include "tests/apps/interrupting_output.h"
#include "tests/upgrade/old_layout.h"

namespace database::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

struct Said {
  int code = 0;
  std::string out, err;
};

class UpgradeCommand : public OldLayout {
 protected:
  static std::string host(const std::string& file) { return support::host_file_system().host_path(file); }

  Said run(std::vector<std::string> arguments, std::istream* answers = nullptr, bool terminal = false) const {
    std::ostringstream out, err;
    const auto no_password = [](std::string_view) { return std::optional<std::string>(""); };
    console::Console console{out, err, no_password, SOURCE_DIR, terminal, answers, {}};
    for (std::string& argument : arguments) {
      if (argument.ends_with(".das")) argument = host(argument);
    }
    const int code = patientdb::run(arguments, console);
    return {code, out.str(), err.str()};
  }
  /// The version of a copy beside the old layout.
  std::string rows_of(const std::string& name) const { return rows(path(name), "SELECT MinVersion FROM db_info")[0]; }
};

TEST_F(UpgradeCommand, UpgradesAfterACopyAndTellsSo) {
  const std::string file = old_database(40), current = version_text(current_minor_version);
  const Opened old = open(file);
  const auto before = row_lines(*old.database);
  old.database->close();
  const Said said = run({"upgrade", file, "--yes"});
  EXPECT_EQ(said.code, 0) << said.err;
  EXPECT_EQ(said.out, host(file) + ": upgraded from 4.40 to " + current + ", copy in 4.40.4.40.das\n");
  EXPECT_EQ(stored_version(file), current_minor_version);
  EXPECT_EQ(row_lines(*open(path("4.40.4.40.das")).database), before);
  EXPECT_THAT(run({"upgrade", file}).out, EndsWith(": has layout " + current + " already\n"));
  EXPECT_THAT(files(), ElementsAre("4.40.4.40.das", "4.40.das"));
}

TEST_F(UpgradeCommand, NeverOverwritesACopy) {
  write_file(path("4.57.4.57.das"), "something else");
  EXPECT_THAT(run({"upgrade", old_database(57), "--no"}).out, HasSubstr("copy in 4.57.4.57-2.das"));
  EXPECT_EQ(read_file(path("4.57.4.57.das")), "something else");
  EXPECT_EQ(run({"upgrade", old_database(57), "--no", "--no-backup"}).code, 0);
  EXPECT_EQ(files().size(), 3U);
}

TEST_F(UpgradeCommand, AsksOnTheTerminal) {
  struct Case {
    std::string answers;
    int code;
    std::string converted_days;
  };
  const Case cases[] = {{"o\n", 0, "12"},           {"OK\r\n", 0, "12"}, {"a\n", 0, "0"},
                        {"?\n\nAbbruch\n", 0, "0"}, {"", 1, ""},         {"vielleicht\n", 1, ""}};
  for (const Case& row : cases) {
    const std::string file = old_database(57);
    std::istringstream answers(row.answers);
    const Said said = run({"upgrade", file, "--no-backup"}, &answers, true);
    EXPECT_EQ(said.code, row.code) << row.answers;
    EXPECT_EQ(stored_version(file), row.code == 0 ? current_minor_version : 57) << row.answers;
    EXPECT_THAT(said.err, AllOf(HasSubstr("Achtung\nZur künftig"), HasSubstr("[O]K / [A]bbruch: "))) << row.answers;
    if (row.code == 0) {
      EXPECT_EQ(rows(file, "SELECT count(*) FROM ip"), std::vector<std::string>{row.converted_days}) << row.answers;
    } else {
      EXPECT_THAT(said.err, HasSubstr("error 3059: ")) << row.answers;
    }
  }
}

TEST_F(UpgradeCommand, ShowsItsProgressOnATerminalOnly) {
  const Said seen = run({"upgrade", old_database(0), "--yes", "--no-backup"}, nullptr, true);
  EXPECT_THAT(seen.err, AllOf(HasSubstr("\r[############..................] 4.25 patdat_Setup"),
                              HasSubstr("\r[############################..] 4.57 steps"), HasSubstr(" 12/12")));
  EXPECT_THAT(seen.err, EndsWith("\r"));
  EXPECT_EQ(run({"upgrade", old_database(0), "--yes", "--no-backup"}).err, "");
}

TEST_F(UpgradeCommand, ControlCLeavesTheFileAsItWasAndBeginsNoOther) {
  const std::string first = old_database(0), second = old_database(40);
  for (const std::string moment : {"] 4.25 patdat_Setup", " 5/12"}) {
    apps_test::InterruptingOutput terminal(moment);
    std::ostringstream out;
    std::ostream err(&terminal);
    const auto no_password = [](std::string_view) { return std::optional<std::string>(""); };
    console::Console console{out, err, no_password, SOURCE_DIR, true, nullptr, {}};
    EXPECT_EQ(patientdb::run({"upgrade", host(first), host(second), "--yes"}, console), 1);
    EXPECT_TRUE(terminal.pressed()) << moment;
    EXPECT_THAT(terminal.str(), EndsWith(host(first) +
                                         ": error 3059: Interrupted; nothing of it was kept.\n"
                                         "Interrupted before " +
                                         host(second) + '\n'));
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(stored_version(first), 0);
    EXPECT_EQ(stored_version(second), 40);
    EXPECT_THAT(files(), ElementsAre("4.0.das", "4.40.das"));
  }
}

TEST_F(UpgradeCommand, WritesWhatItPassesOverIntoTheJournal) {
  const std::string journal = host(path("journal.txt"));
  EXPECT_EQ(run({"upgrade", old_database(0), "--yes", "--no-backup", "--journal", journal}).code, 0);
  EXPECT_THAT(read_file(path("journal.txt")), HasSubstr(" sql!db_WriteDBInfo 3"));
}

TEST_F(UpgradeCommand, TellsOfEveryFileThatItCannotUpgrade) {
  const std::string newer = old_database(58), foreign = old_database(57), text = path("text.das");
  const std::string next = std::to_string(current_minor_version + 1);
  execute(newer, {"UPDATE db_info SET MinVersion=" + next});
  execute(foreign, {"UPDATE db_info SET [Desc]='other'"});
  write_file(text, std::string(5000, 'x'));
  const std::string old = old_database(45);
  const Said said = run({"upgrade", newer, foreign, text, path("missing.das"), old, "--yes", "--json"});
  EXPECT_EQ(said.code, 1);
  std::istringstream lines(said.out);
  std::vector<std::string> states;
  for (std::string line; std::getline(lines, line);) states.push_back(line.substr(line.find("\"state\"")));
  EXPECT_THAT(states,
              ElementsAre(StartsWith(R"("state":"newer","layout":"4.)" + next + R"(","copy":"")"),
                          StartsWith(R"("state":"foreign","layout":"4.57","copy":"")"),
                          StartsWith(R"("state":"failed","layout":"","copy":"","error":3343)"),
                          StartsWith(R"("state":"failed","layout":"","copy":"","error":3024)"),
                          StartsWith(R"("state":"upgraded","layout":"4.45","copy":"4.45.4.45.das","error":0)")));
  EXPECT_EQ(run({"upgrade", old, "--yes", "--no"}).code, 2);
  EXPECT_EQ(run({"upgrade"}).code, 2);
}

TEST_F(UpgradeCommand, TakesNoVersionThatItCannotReadForTheCurrentOne) {
  const std::string file = old_database(40);
  execute(file, {"UPDATE db_info SET MinVersion = Null"});
  const std::string content = read_file(file);
  const Said said = run({"upgrade", file, "--yes"});
  EXPECT_EQ(said.code, 1);
  EXPECT_EQ(said.err, host(file) + ": error 94: MinVersion of the version record is Null.\n");
  EXPECT_TRUE(read_file(file) == content);
  EXPECT_THAT(files(), ElementsAre("4.40.das"));
  const Said info = run({"info", file, "--json"});
  EXPECT_EQ(info.code, 1);
  EXPECT_THAT(info.out, HasSubstr("\"MinVersion\":null,"));
}

TEST_F(UpgradeCommand, SaysWhichRowsItLeavesBehind) {
  const std::string file = old_database(33);
  execute(file, {"CREATE TABLE import (id COUNTER, ImportFrom SHORT)",
                 "CREATE UNIQUE INDEX once ON import (ImportFrom)", "INSERT INTO imports (ImportFrom) VALUES (7)"});
  const Said said = run({"upgrade", file, "--yes", "--no-backup", "--json"});
  EXPECT_EQ(said.code, 0);
  EXPECT_THAT(said.out, HasSubstr("\"notes\":[\"1 of 3 rows of imports could not be brought over"));
}

TEST_F(UpgradeCommand, MakesNoCopyOfADamagedDatabaseAndLeavesItAsItIs) {
  const std::string file = old_database(0);
  std::string damaged = read_file(file);
  damaged.replace(damaged.find("nüchtern") & ~std::size_t{4095}, 4096, std::string(4096, '\x5a'));
  write_file(file, damaged);
  const Said said = run({"upgrade", file, "--yes"});
  EXPECT_EQ(said.code, 1);
  EXPECT_THAT(said.err, HasSubstr("error 3343: "));
  EXPECT_THAT(files(), ElementsAre("4.0.das"));
  EXPECT_TRUE(read_file(file) == damaged);
}

TEST_F(UpgradeCommand, CopiesAnEncryptedDatabaseUnderItsPassword) {
  const std::string file = patient_database(), copy = path("copy.das");
  open(file).database->save_copy(copy);
  EXPECT_EQ(rows(copy, "SELECT name FROM patdat"), rows(file, "SELECT name FROM patdat"));
  EXPECT_THAT(read_file(copy), Not(StartsWith("SQLite format 3")));
  const Opened opened = open(file);
  EXPECT_THROW(opened.database->save_copy(copy), support::RuntimeError);
  EXPECT_THROW(opened.database->save_copy(path("nowhere\\copy.das")), support::RuntimeError);
  const engine::Transaction transaction{*opened.database};
  EXPECT_THROW(opened.database->save_copy(path("other.das")), support::RuntimeError);
  EXPECT_THAT(files(), ElementsAre("copy.das", "patient.das"));
}

TEST_F(UpgradeCommand, TellsPumpData) {
  const std::string file = old_database(58);
  const std::vector<std::string> days{"--from", "2009-03-01", "--until", "2009-03-02"};
  const auto with = [&](std::vector<std::string> command, std::vector<std::string> more = {}) {
    command.insert(command.end(), days.begin(), days.end());
    command.insert(command.end(), more.begin(), more.end());
    return run(command);
  };
  EXPECT_EQ(with({"basal", file}).out, "34.4\n");
  EXPECT_EQ(with({"basal", file}, {"--time-from", "06:00", "--time-until", "07:00", "--json"}).out, "{\"basal\":20}\n");
  EXPECT_THAT(with({"pump-stats", file}, {"--json"}).out,
              AllOf(HasSubstr(R"("basal_days":2,"basal_entries":4,"basal_total":34.4,"bolus_days":2,"boluses":2)"),
                    HasSubstr(R"({"hour":12,"type":2,"entries":2,"total":11,"average":5.5})")));
  EXPECT_THAT(with({"pump-stats", file}).out, HasSubstr("Bolus units a day"));
  EXPECT_EQ(run({"basal", file, "--from", "2009-03-01"}).code, 2);
}

/// `index` with patients of old layouts; options that exclude a question say so.
class IndexCommand : public UpgradeCommand {
 protected:
  IndexCommand() { EXPECT_EQ(run({"index", index, "create"}).out, index + " created\n"); }
  std::string index = host(path("index.mdb"));
  std::vector<std::string> row(const std::string& fields) const {
    return rows(path("index.mdb"), "SELECT " + fields + " FROM index ORDER BY id");
  }
};

TEST_F(IndexCommand, CreatesAnIndexOfTheCurrentLayout) {
  EXPECT_EQ(run({"index", index, "upgrade"}).out, "");
  EXPECT_EQ(run({"sql", index, "SELECT flag, status, last_open, date_range, hba1c FROM index", "--json"}).code, 0);
}

TEST_F(IndexCommand, RefreshesFromAnOldLayoutOnlyWithAnAnswer) {
  const std::string file = old_database(0);
  const Said unanswered = run({"index", index, "refresh", "0", file});
  EXPECT_EQ(unanswered.code, 1);
  EXPECT_THAT(unanswered.err, HasSubstr("error 3059: The question about the pump data needs an answer"));
  EXPECT_EQ(unanswered.out, "");
  EXPECT_EQ(stored_version(file), 0);
  EXPECT_THAT(files(), ElementsAre("4.0.das", "index.mdb"));
  EXPECT_TRUE(row("id").empty());
  const Said answered = run({"index", index, "refresh", "0", file, "--yes"});
  EXPECT_EQ(answered.code, 0) << answered.err;
  EXPECT_EQ(answered.out, host(file) + ": upgraded from 4.0, copy in 4.0.4.0.das\npatient 1\n");
  EXPECT_EQ(stored_version(file), current_minor_version);
  EXPECT_EQ(rows(file, "SELECT count(*) FROM ip"), std::vector<std::string>{"12"});
  EXPECT_EQ(rows_of("4.0.4.0.das"), "0");
}

TEST_F(IndexCommand, TellsEachPatientThatCannotBeUpgradedAndGoesOn) {
  for (const auto& [number, version] : std::vector<std::pair<int, std::int16_t>>{{1, 57}, {2, 58}}) {
    std::filesystem::rename(host(old_database(version)), host(path("db4_00000" + std::to_string(number) + ".das")));
    execute(path("index.mdb"), {"INSERT INTO index (id) VALUES (" + std::to_string(number) + ")"});
  }
  execute(path("index.mdb"), {"ALTER TABLE index DROP COLUMN status"});
  const Said said = run({"index", index, "upgrade"});
  EXPECT_EQ(said.code, 1);
  EXPECT_THAT(said.err, HasSubstr("patient 1: error 3059: The question about the pump data needs an answer"));
  EXPECT_EQ(said.out, host(path("db4_000002.das")) +
                          ": upgraded from 4.58, copy in db4_000002.4.58.das\n"
                          "1 of 2 patient databases brought up to date, 1 could not be\n");
  const Said rest = run({"index", index, "upgrade", "--no"});
  EXPECT_EQ(rest.code, 0) << rest.err;
  EXPECT_THAT(rest.out, EndsWith("1 of 1 patient databases brought up to date\n"));
  EXPECT_EQ(row("id, status"), (std::vector<std::string>{"1|0", "2|0"}));
}

TEST_F(IndexCommand, RefusesRowsThatAreNotThereAndTextsThatAreTooLong) {
  struct Case {
    std::vector<std::string> arguments;
    std::string_view error;
  };
  const std::string long_name(101, 'x');
  for (const Case& row : {Case{{"delete", "7"}, "error 3021: The index has no patient 7."},
                          {{"delete", "0"}, "error 3021: The index has no patient 0."},
                          {{"write", "7", "--name", "N", "--firstname", "F"}, "error 3021: The index has no patient 7"},
                          {{"write", "0", "--name", long_name}, "error 3163: Name takes at most 100 characters."},
                          {{"write", "0", "--name", "N", "--external-id", long_name}, "error 3163: ExternalID takes"},
                          {{"refresh", "0", index}, "error 3021: The database holds no patient."}}) {
    std::vector<std::string> arguments{"index", index};
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    const Said said = run(arguments);
    EXPECT_EQ(said.code, 1) << row.error;
    EXPECT_THAT(said.err, HasSubstr(std::string(row.error)));
    EXPECT_EQ(said.out, "") << row.error;
  }
  EXPECT_TRUE(row("id").empty());
}

}  // namespace
}  // namespace database::testing
