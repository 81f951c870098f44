// What must not get out of the programs, and what must not get in.
#include "tests/apps/program_run.h"

namespace apps_test {
namespace {

const std::string secret = "Xylofon7Geheim";
const Environment with_secret{{"PATIENTDB_PASSWORD", secret}};

class Secrets : public testing::Test {
 protected:
  /// Runs a command and keeps its output. All runs share one journal.
  Outcome tool(std::vector<std::string> arguments, const Environment& environment = with_secret) {
    arguments.insert(arguments.end(), {"--journal", journal()});
    const Outcome outcome = run_patientdb(arguments, environment);
    said_ += outcome.out + outcome.err;
    return outcome;
  }
  std::string journal() const { return folder_.file("journal.log"); }

  TemporaryFolder folder_;
  std::string said_;
};

TEST_F(Secrets, APasswordIsInNoOutputJournalOrFile) {
  const std::string file = folder_.file("P.das"), index = folder_.file("index.mdb");
  ASSERT_EQ(tool({"create", file, "--name", "M", "--firstname", "J"}).code, 0);
  EXPECT_EQ(tool({"create", file}).code, 1);
  EXPECT_EQ(tool({"info", file}).code, 0);
  EXPECT_EQ(tool({"sql", file, "SELECT nothing FROM patdat"}).code, 1);
  EXPECT_EQ(tool({"sql", file, "SELECT '" + secret}).code, 1);
  EXPECT_EQ(tool({"info", file}, {{"PATIENTDB_PASSWORD", secret + "x"}}).code, 1);
  EXPECT_EQ(tool({"index", index, "create"}).code, 0);
  tool({"index", index, "refresh", "0", file}, {{"PATIENTDB_PASSWORD", secret + "x"}});
  EXPECT_THAT(content_of(journal()), HasSubstr("APPLICATION LOG ("));
  EXPECT_THAT(said_, Not(HasSubstr(secret)));
  for (const auto& [name, content] : folder_.snapshot()) EXPECT_THAT(content, Not(HasSubstr(secret))) << name;
}

TEST_F(Secrets, ANameIsNeverASecondStatement) {
  const std::string fresh = folder_.file("fresh.das");
  ASSERT_EQ(tool({"create", fresh}).code, 0);
  const std::string tables = tool({"schema", fresh}).out;
  const struct {
    std::string name, stored;
  } cases[] = {
      {"O'Brien", "O'Brien"},
      {"'); DROP TABLE patdat; --", "'); DROP TABLE patdat; --"},
      {"x'; DELETE FROM patdat; SELECT '", "x'; DELETE FROM patdat; SELECT '"},
      {"a;b\"c\"[d]`e`", "a;b\\\"c\\\"[d]`e`"},
      {"''''", "''''"},
  };
  for (const auto& row : cases) {
    const std::string file = folder_.file("P.das"), index = folder_.file("index.mdb");
    std::filesystem::remove(folder_.path() / "P.das");
    std::filesystem::remove(folder_.path() / "index.mdb");
    ASSERT_EQ(tool({"create", file, "--name", row.name, "--firstname", "J"}).code, 0) << row.name;
    EXPECT_EQ(tool({"schema", file}).out, tables) << row.name;
    EXPECT_THAT(tool({"sql", file, "SELECT name FROM patdat", "--json"}).out,
                HasSubstr("\"rows\":[[\"" + row.stored + "\"]]"));

    ASSERT_EQ(tool({"index", index, "create"}).code, 0);
    tool({"index", index, "write", "0", "--name", "Before", "--firstname", "J"});
    tool({"index", index, "write", "0", "--name", row.name, "--firstname", "J"});
    const Outcome rows = tool({"sql", index, "SELECT name FROM index", "--json"}, {{"PATIENTDB_PASSWORD", ""}});
    EXPECT_THAT(rows.out, HasSubstr("\"Before\"")) << row.name << rows.err;
  }
}

TEST_F(Secrets, ANameTooLongForItsFieldLeavesNoDatabase) {
  std::string umlauts;
  for (int i = 0; i < 255; ++i) umlauts += "ü";
  const auto before = folder_.snapshot();
  EXPECT_EQ(run_patientdb({"create", folder_.file("P.das"), "--name", umlauts, "--firstname", "J"}).code, 1);
  EXPECT_EQ(folder_.snapshot(), before);
}

TEST_F(Secrets, OneCallRunsOneStatement) {
  const std::string file = folder_.file("P.das");
  ASSERT_EQ(tool({"create", file}).code, 0);
  for (const std::string rest :
       {"; DROP TABLE patdat", "; DELETE FROM patdat", "; ATTACH 'x' AS y", "); DROP TABLE patdat; --"}) {
    EXPECT_EQ(tool({"sql", file, "SELECT id FROM patdat" + rest}).code, 1) << rest;
    EXPECT_EQ(tool({"sql", file, "UPDATE patdat SET typ = 1" + rest}).code, 1) << rest;
  }
  EXPECT_THAT(tool({"sql", file, "SELECT count(*) AS n, sum(typ) AS t FROM patdat", "--json"}).out,
              HasSubstr("\"rows\":[[1,0]]"));
}

TEST_F(Secrets, AnInstallationUnderUmlautsAndSignsWorks) {
  const std::string home = "Jörg Müller #1 & Söhne's (100%)";
  folder_.write(home + "/vantrix.ini", "[setup]\r\nRegPath=vantrix\r\n");
  folder_.write(home + "/setup.ini", "[setup]\r\njournal=logs.txt\r\n");
  const std::string answers = folder_.write("answers.ini", "[PatDat]\ntxtFirstName=Zoë\ntxtName=O'Brien\n");
  const Outcome outcome =
      run_batch({"--program-dir", folder_.file(home), "--registry", folder_.file("hive.reg"), "--answers", answers});
  EXPECT_EQ(outcome.code, 0) << outcome.err << outcome.out;
  EXPECT_THAT(run_patientdb({"sql", folder_.file(home + "/patients/O'Brien_Zoë.das"), "SELECT name FROM patdat"}).out,
              HasSubstr("O'Brien"));
  EXPECT_THAT(content_of(folder_.file(home + "/logs.txt")), Not(HasSubstr("Brien")));
}

TEST_F(Secrets, AThousandChartsAndAFullFolderAreAnswered) {
  std::string charts = "[CHARTS]\r\n";
  for (int i = 0; i < 1000; ++i) charts += "chart" + std::to_string(i) + "=5100^5101\r\n";
  folder_.write("home/vantrix.ini", "[setup]\r\nRegPath=vantrix\r\n");
  folder_.write("home/pelmar.ini", charts);
  folder_.write("home/home.ini", "[setup]\r\nhomepage=H\r\n[H]\r\nCHART1=\r\n");
  for (int i = 0; i < 500; ++i) folder_.write("home/patients/" + std::to_string(i) + ".das", "");
  const std::string answers =
      folder_.write("answers.ini", "[PatDat]\ntxtFirstName=J\ntxtName=M\n[Pics]\noptThumb=chart7\n");
  const Outcome outcome =
      run_batch({"--program-dir", folder_.file("home"), "--registry", folder_.file("hive.reg"), "--answers", answers});
  EXPECT_EQ(outcome.code, 0) << outcome.err << outcome.out;
  EXPECT_THAT(outcome.out, HasSubstr("M_J.das"));
}

}  // namespace
}  // namespace apps_test
