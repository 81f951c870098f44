#include "support/error_journal.h"

#include <gmock/gmock.h>

#include <regex>

#include "tests/support/temporary_folder.h"

namespace support {
namespace {

/// GoogleTest's own regular expressions know no sets of characters on Windows.
MATCHER_P(HoldsPattern, pattern, "") { return std::regex_search(arg, std::regex(pattern)); }

using ::testing::EndsWith;
using ::testing::StartsWith;

class ErrorJournalTest : public ::testing::Test {
 protected:
  /// Makes `count` steps fail while a journal is kept.
  void fail(int count, const std::string& text = "No current record.") const {
    const ErrorJournal journal(folder_.host("journal.log"),
                               {"vantrix", "1.0.0", "C:\\Users\\Jörg\\firststeps.exe", "C:\\Users\\Jörg\\setup.ini"},
                               [] { return std::time_t{1700000000}; });
    Procedure procedure("sql!db_ProcessIndex");
    for (int i = 0; i < count; ++i) procedure.step([&] { throw RuntimeError(3021, text); });
  }
  std::string content(std::string_view name = "journal.log") const { return folder_.read(name).value_or("(none)"); }

  testing::TemporaryFolder folder_;
};

TEST_F(ErrorJournalTest, BeginsWithItsHeadAndHoldsALineForEachStatement) {
  fail(0);
  EXPECT_EQ(content(), "(none)");
  fail(2);
  fail(1, "Syntax error\nin ORDER BY clause.");
  const std::string stamp = content().substr(17, 14);
  EXPECT_THAT(stamp, HoldsPattern("^1[45]112023[0-9]+$"));
  const std::string time = stamp.substr(8, 2) + ":" + stamp.substr(10, 2) + ":" + stamp.substr(12);
  const std::string rule(44, '-');
  EXPECT_EQ(content(), "APPLICATION LOG (" + stamp + ")\r\n" + rule + "\r\nSoftware: vantrix\r\nVersion: 1.0.0\r\n" +
                           "ExeName: firststeps.exe\r\nIniName: setup.ini\r\nLong Time " + time + "\r\n" + rule +
                           "\r\n" + stamp + " sql!db_ProcessIndex 3021 No current record.\r\n" + stamp +
                           " sql!db_ProcessIndex 3021 No current record.\r\n" + stamp +
                           " sql!db_ProcessIndex 3021 Syntax error in ORDER BY clause.\r\n");
}

TEST_F(ErrorJournalTest, LeavesOutWhateverATextQuotesAndEveryPath) {
  const struct {
    std::string_view description, text;
  } cases[] = {
      {"No current record.", "No current record."},
      {"the plan's items cannot be changed", "the plan's items cannot be changed"},
      {"Undefined function 'Brien' in expression.", "Undefined function '…' in expression."},
      {"'O'Brien' is not 'M' a valid name.", "'…' a valid name."},
      {"no \"Müller\" here", "no \"…\" here"},
      {"Cannot write /home/Jörg Müller/registry.reg: Permission denied", "Cannot write …"},
      {"C:\\Patienten\\Müller_Jörg.das: odd", "…"},
      {"filesystem error: cannot rename [/a b/Müller.das] [/c]", "filesystem error: cannot rename …"},
      {"", ""},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(journal_text(row.description), row.text);
  }
  EXPECT_LE(journal_text(std::string(100000, 'x')).size(), 300U);
  EXPECT_EQ(journal_text(std::string(299, 'x') + "ü"), std::string(299, 'x'));
}

TEST_F(ErrorJournalTest, BeginsAnewAtOneMebibyteAndKeepsTheOneBefore) {
  const std::string text(290, 'x');
  for (const char round : {'1', '2'}) {
    const std::string nearly_full = "APPLICATION LOG (" + std::string(most_journal_bytes - 1000, round);
    folder_.write("journal.log", nearly_full);
    fail(6, text);
    EXPECT_THAT(content("journal.log.1"), StartsWith(nearly_full));
    EXPECT_LE(content("journal.log.1").size(), most_journal_bytes);
    EXPECT_GT(content("journal.log.1").size(), most_journal_bytes - 400);
    EXPECT_THAT(content(), StartsWith("APPLICATION LOG ("));
    EXPECT_GT(content().size(), 4 * text.size());
    EXPECT_LT(content().size(), 5 * 400U);
  }
  EXPECT_EQ(folder_.file_count(), 2U);
}

TEST_F(ErrorJournalTest, TouchesNoFileThatIsNoJournal) {
  folder_.write("journal.log", "SQLite format 3");
  fail(1);
  EXPECT_EQ(content(), "SQLite format 3");

  folder_.write("journal.log", "APPLICATION LOG (" + std::string(most_journal_bytes, 'x'));
  folder_.write("journal.log.1", "someone's file");
  fail(1);
  EXPECT_EQ(content("journal.log.1"), "someone's file");
  EXPECT_THAT(content(), EndsWith("xxx"));
}

TEST_F(ErrorJournalTest, ChangesNothingWhereItCannotBeWrittenAndHandsOnWhatItHears) {
  int told = 0;
  auto before = set_skipped_step_listener([&](std::string_view, const RuntimeError&) { ++told; });
  {
    const ErrorJournal journal(folder_.host("missing/journal.log"), {});
    Procedure procedure("sql!test");
    EXPECT_FALSE(procedure.step([] { throw RuntimeError(13, "Type mismatch"); }));
    EXPECT_EQ(procedure.error().number(), 13);
  }
  Procedure("sql!test").step([] { throw RuntimeError(13, "Type mismatch"); });
  set_skipped_step_listener(std::move(before));
  EXPECT_EQ(told, 2);
  EXPECT_EQ(folder_.file_count(), 0U);
}

}  // namespace
}  // namespace support
