// The error journal, in the programs that can keep one.
#include <regex>

#include "tests/apps/program_run.h"

namespace apps_test {
namespace {

/// GoogleTest's own regular expressions know no sets of characters on Windows.
MATCHER_P(HoldsPattern, pattern, "") { return std::regex_search(arg, std::regex(pattern)); }

class Journal : public testing::Test {
 protected:
  Journal() { folder_.write("vantrix.ini", "[setup]\r\nRegPath=vantrix\r\n"); }

  /// Runs a finish whose patient database cannot be created, because a file lies where its folder should be.
  int fail_to_finish(std::vector<std::string> arguments) const {
    folder_.write("patients", "in the way");
    const std::string answers = outside_.write("answers.ini", "[PatDat]\ntxtFirstName=Zoë\ntxtName=Quastenflosser\n");
    arguments.insert(arguments.end(), {"--program-dir", folder_.file("."), "--registry", folder_.file("registry.reg"),
                                       "--answers", answers});
    return run_batch(arguments).code;
  }

  TemporaryFolder folder_, outside_;
};

TEST_F(Journal, IsKeptByTheBatchProgramOnlyWhereItIsAskedFor) {
  EXPECT_EQ(fail_to_finish({}), 1);
  const auto without = folder_.snapshot();

  const std::string by_option = outside_.file("option.log");
  EXPECT_EQ(fail_to_finish({"--dry-run", "--journal", by_option}), 0);
  EXPECT_EQ(content_of(by_option), "");
  EXPECT_EQ(fail_to_finish({"--journal", by_option}), 1);
  EXPECT_EQ(folder_.snapshot(), without);
  EXPECT_THAT(content_of(by_option),
              AllOf(HasSubstr("ExeName: firststeps_batch\r\n"), HasSubstr("IniName: setup.ini\r\n"),
                    HoldsPattern("\r\n[0-9]+ sql![A-Za-z_]+ 30[0-9]+ [A-Z]")));

  folder_.write("setup.ini", "[setup]\r\njournal=logs.txt\r\n");
  EXPECT_EQ(fail_to_finish({}), 1);
  const std::string by_setting = content_of(folder_.file("logs.txt"));
  EXPECT_THAT(by_setting, HoldsPattern("\r\n[0-9]+ sql![A-Za-z_]+ 30[0-9]+ [A-Z]"));
  EXPECT_THAT(by_setting, AllOf(Not(HasSubstr("Quastenflosser")), Not(HasSubstr("Zo")), Not(HasSubstr("brimol"))));
}

TEST_F(Journal, ChangesNothingWhereItCannotBeWritten) {
  EXPECT_EQ(fail_to_finish({}), 1);
  const auto without = folder_.snapshot();
  for (const std::string& file : {folder_.file("nowhere/x.log"), folder_.file("vantrix.ini"), folder_.file(".")}) {
    EXPECT_EQ(fail_to_finish({"--journal", file}), 1);
    EXPECT_EQ(folder_.snapshot(), without) << file;
  }
}

TEST_F(Journal, IsKeptByTheConsoleToolBesideItsOwnLines) {
  const std::string index = folder_.file("index.mdb"), journal = folder_.file("tool.log");
  ASSERT_EQ(run_patientdb({"index", index, "create"}).code, 0);
  const std::string damaged = folder_.write("Quastenflosser_Zoë.das", "no database");
  const auto outcome = run_patientdb({"index", index, "refresh", "0", damaged, "--journal", journal});
  EXPECT_NE(outcome.err, "");
  EXPECT_THAT(content_of(journal), AllOf(HasSubstr("ExeName: patientdb\r\n"), HoldsPattern("\r\n[0-9]+ sql!"),
                                         Not(HasSubstr("Quastenflosser")), Not(HasSubstr("brimol"))));
}

}  // namespace
}  // namespace apps_test
