#include <filesystem>

#include "database/version_record.h"
#include "tests/apps/program_run.h"

namespace apps_test {
namespace {

const Environment no_password{{"PATIENTDB_PASSWORD", ""}};

class PatientDb : public testing::Test {
 protected:
  /// A small database without password: `t` with one row.
  std::string plain_database() {
    const std::string file = folder_.file("plain.mdb");
    EXPECT_EQ(run_patientdb({"create", file, "--empty"}, no_password).code, 0);
    const Outcome filled = run_patientdb(
        {"sql", file, "CREATE TABLE t (id COUNTER, n SHORT, s TEXT(5), d DATETIME, b YESNO, x DOUBLE, f SINGLE)",
         "INSERT INTO t (n, s, d, b, x, f) VALUES (7, 'a\"ü', #2/29/2024 7:05:00#, True, 0.1, 5.6)"},
        no_password);
    EXPECT_EQ(filled.code, 0) << filled.err;
    return file;
  }

  TemporaryFolder folder_;
};

TEST_F(PatientDb, CreatesADatabaseThatItsOtherCommandsShow) {
  const std::string file = folder_.file("Müller_Jörg.das");
  const Outcome created =
      run_patientdb({"create", file, "--name", "Müller", "--firstname=Jörg", "--diabetes-type", "1", "--therapy", "3"});
  ASSERT_EQ(created.code, 0) << created.err;

  const Outcome info = run_patientdb({"info", file, "--json"});
  const std::string version = std::to_string(database::current_minor_version);
  EXPECT_THAT(info.out, AllOf(StartsWith(R"({"MajVersion":4,"MinVersion":)" + version + R"(,"Type":0,"Desc":")"),
                              HasSubstr("vantrix"), Not(HasSubstr("brimol"))));
  EXPECT_THAT(run_patientdb({"info", file}).out, HasSubstr("MinVersion      " + version + "\n"));

  const Outcome patient =
      run_patientdb({"sql", "--json", file, "SELECT name, firstname, typ, Therapy, birthday FROM patdat"});
  EXPECT_EQ(patient.out,
            R"({"columns":["name","firstname","typ","Therapy","birthday"],"rows":[["Müller","Jörg",1,3,null]],)"
            "\"affected\":0}\n");

  EXPECT_THAT(run_patientdb({"schema", file, "--json"}).out, StartsWith(R"({"tables":[)"));
  EXPECT_THAT(run_patientdb({"schema", file, "DB_INFO"}).out,
              AllOf(StartsWith("db_info\n"), HasSubstr("\nDesc            Text      255           2"),
                    Not(HasSubstr("glucose"))));
}

TEST_F(PatientDb, ShowsEachKindOfValue) {
  const std::string file = plain_database();
  EXPECT_EQ(run_patientdb({"sql", file, "SELECT * FROM t", "UPDATE t SET n = NULL", "--json"}, no_password).out,
            R"({"columns":["id","n","s","d","b","x","f"],"rows":[[1,7,"a\"ü","2024-02-29 07:05:00",-1,0.1,5.6]],)"
            "\"affected\":0}\n"
            "{\"columns\":[],\"rows\":[],\"affected\":1}\n");
  EXPECT_EQ(run_patientdb({"sql", file, "SELECT id, n, s FROM t"}, no_password).out,
            "id  n  s\n"
            "--  -  ---\n"
            " 1     a\"ü\n"
            "1 row\n");
}

TEST_F(PatientDb, TellsErrorsByTheirNumberAndLeavesFilesAsTheyWere) {
  const std::string plain = plain_database();
  const std::string patient = folder_.file("patient.das");
  ASSERT_EQ(run_patientdb({"create", patient}).code, 0);
  const std::string zero = folder_.write("zero.das", ""), text = folder_.write("text.das", "no database, only text");
  const std::string damaged = folder_.write("damaged.mdb", content_of(plain).substr(0, 3000));
  const std::string missing_folder = folder_.file("nowhere/x.das");
  struct Case {
    std::vector<std::string> arguments;
    Environment environment;
    std::string message;
  };
  const Case cases[] = {
      {{"create", patient}, {}, "error 3204: "},
      {{"create", patient}, no_password, "error 3204: "},
      {{"create", zero, "--empty"}, {}, "error 3204: "},
      {{"create", missing_folder}, {}, "error 3044: The folder of the database file is not a valid path: it does not"},
      {{"create", folder_.file(std::string(240, 'x'))}, {}, "error 3044: The name of the database file is too long"},
      {{"info", folder_.file(std::string(256, 'x'))}, {}, "error 3044: The name of the database file is too long"},
      {{"create", missing_folder, "--empty"}, no_password, "error 3044: "},
      {{"info", folder_.file("missing.das")}, {}, "error 3024: "},
      {{"info", patient}, {{"PATIENTDB_PASSWORD", "another"}}, "error 3031: "},
      {{"info", patient}, no_password, "error 3031: "},
      {{"info", zero}, {}, "error 3343: "},
      {{"info", patient, "--engine", "automation"}, {}, "error 429: "},
      {{"sql", text, "SELECT 1"}, {}, "error 3343: "},
      {{"schema", damaged}, no_password, "error 3"},
      {{"info", plain}, no_password, "error 3078: "},
      {{"schema", plain, "nothing"}, no_password, "error 3265: "},
      {{"sql", plain, "SELECT * FROM nothing"}, no_password, "error 3078: "},
      {{"sql", plain, "SELECT nothing FROM t"}, no_password, "error 3061: "},
      {{"sql", plain, "SELECT 1; SELECT 2"}, no_password, "error 3142: "},
      {{"sql", plain, "UPDATE t SET s = 'longer'"}, no_password, "error 3163: "},
      {{"sql", plain, "UPDATE t SET n = 32768"}, no_password, "error 3"},
      {{"sql", plain, "UPDATE t SET s = ''"}, no_password, "error 3315: "},
  };
  const auto before = folder_.snapshot();
  for (const Case& row : cases) {
    const Outcome outcome = run_patientdb(row.arguments, row.environment);
    EXPECT_EQ(outcome.code, 1) << row.message << testing::PrintToString(row.arguments);
    EXPECT_THAT(outcome.err, StartsWith(row.message)) << testing::PrintToString(row.arguments);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(folder_.snapshot(), before) << testing::PrintToString(row.arguments);
  }
}

TEST_F(PatientDb, AnswersWrongUsageWithExitCodeTwo) {
  const std::string file = plain_database();
  const std::string script = folder_.write("script.sql", "SELECT 1;");
  const std::string empty = folder_.write("empty.txt", "\n"), binary = folder_.write("binary.sql", "\xFF\xFE;");
  const std::string large = folder_.write("large.txt", std::string(4097, 'x'));
  struct Case {
    std::vector<std::string> arguments;
    std::string message;
  };
  const Case cases[] = {
      {{}, "Usage: patientdb"},
      {{"destroy", file}, "no command \"destroy\""},
      {{"info"}, "Something is missing"},
      {{"info", file, "more"}, "one argument too many"},
      {{"info", file, "--colour"}, "no option --colour"},
      {{"info", file, "--engine=another"}, "not \"another\""},
      {{"info", ""}, "name is empty"},
      {{"sql", file}, "Something is missing"},
      {{"sql", file, "SELECT 1", "--script", script}, "one argument too many"},
      {{"sql", file, "--script", folder_.file("none.sql")}, "none.sql cannot be read: there is no such file."},
      {{"sql", file, "--script", binary}, "binary.sql is not UTF-8"},
      {{"info", file, "--password-file", folder_.file("none.txt")}, "none.txt cannot be read: there is"},
      {{"info", file, "--password-file", folder_.file("none/x.txt")},
       "x.txt cannot be read: its folder does not exist"},
      {{"info", file, "--password-file", folder_.path().string()}, "cannot be read: it is a folder"},
      {{"info", file, "--password-file", large}, "large.txt is too large: more than 4 KiB"},
      {{"sql", file, "--script", folder_.file(std::string(256, 's'))}, "s cannot be read: its name is too long"},
      {{"info", file, "--password-file", empty}, "empty.txt is empty"},
      {{"create", folder_.file("x"), "--therapy", "6"}, "--therapy takes a whole number from 1 to 5"},
      {{"create", folder_.file("x"), "--diabetes-type", ""}, "--diabetes-type takes"},
      {{"create", folder_.file("x"), "--empty", "--name", "N"}, "has no patient: --name"},
  };
  const auto before = folder_.snapshot();
  for (const Case& row : cases) {
    const Outcome outcome = run_patientdb(row.arguments, no_password);
    EXPECT_EQ(outcome.code, 2) << row.message;
    EXPECT_THAT(outcome.err, HasSubstr(row.message));
    EXPECT_EQ(outcome.out, "");
  }
  EXPECT_EQ(folder_.snapshot(), before);
}

TEST_F(PatientDb, ShowsHelpForEachCommand) {
  EXPECT_THAT(run_patientdb({"--help"}).out, HasSubstr("Usage: patientdb COMMAND"));
  for (const std::string command : {"create", "info", "schema", "sql"}) {
    const Outcome help = run_patientdb({command, "file", "--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_THAT(help.out, AllOf(StartsWith("Usage: patientdb " + command), HasSubstr("PATIENTDB_PASSWORD")));
  }
}

TEST_F(PatientDb, TellsWhatTheJetEngineDoesWithAPasswordBeforeAnythingIsMade) {
  struct Row {
    std::string_view password;
    int code;
    std::string_view said;
  };
  const std::string file = folder_.file("jet.das");
  for (const Row& row :
       {Row{"fünfzehnZeichen", 2, "at most 14 characters"}, Row{"vierzehnZeichn", 1, "does not encrypt the file"}}) {
    const Environment environment{{"PATIENTDB_PASSWORD", std::string(row.password)}};
    const Outcome outcome = run_patientdb({"create", file, "--engine", "automation"}, environment);
    EXPECT_EQ(outcome.code, row.code) << row.password;
    EXPECT_THAT(outcome.err, HasSubstr(row.said));
    EXPECT_FALSE(std::filesystem::exists(file));
  }
}

TEST_F(PatientDb, TakesThePasswordFromFileThenEnvironmentThenDefault) {
  const std::string own = folder_.file("own.das"), plain = folder_.file("plain.das");
  const Environment secret{{"PATIENTDB_PASSWORD", "geheim §1"}}, wrong{{"PATIENTDB_PASSWORD", "falsch"}};
  const std::string password_file = folder_.write("password.txt", "\xEF\xBB\xBFgeheim §1\r\nsecond line\r\n");
  ASSERT_EQ(run_patientdb({"create", own}, secret).code, 0);
  ASSERT_EQ(run_patientdb({"create", plain, "--name", "N"}, no_password).code, 0);

  EXPECT_EQ(run_patientdb({"info", own}, secret).code, 0);
  EXPECT_EQ(run_patientdb({"info", own, "--password-file", password_file}).code, 0);
  EXPECT_EQ(run_patientdb({"info", own, "--password-file", password_file}, wrong).code, 0);
  EXPECT_EQ(run_patientdb({"info", own}, wrong).code, 1);
  EXPECT_EQ(run_patientdb({"info", own}).code, 1);
  EXPECT_EQ(run_patientdb({"info", plain}, no_password).code, 0);
  EXPECT_THAT(content_of(plain), StartsWith("SQLite format 3"));
  EXPECT_THAT(content_of(own), Not(StartsWith("SQLite format 3")));

  for (const char* unfit : {"ab", "äb", "123456789012345678901"}) {
    const Environment environment{{"PATIENTDB_PASSWORD", unfit}};
    EXPECT_EQ(run_patientdb({"create", folder_.file("x.das")}, environment).code, 2) << unfit;
  }
  EXPECT_FALSE(std::filesystem::exists(folder_.path() / "x.das"));
}

TEST_F(PatientDb, RunsAScriptAsAWholeOrNotAtAll) {
  const std::string file = plain_database();
  const std::string good = folder_.write("good.sql",
                                         "-- two tables\r\nCREATE TABLE a (s TEXT(20));\r\n"
                                         "INSERT INTO a (s) VALUES ('x;--y');\r\nSELECT s FROM a;\r\n");
  const std::string bad = folder_.write("bad.sql", "UPDATE a SET s = 'z';\nDROP TABLE t;\n\nINSERT INTO b VALUES (1);");
  const Outcome done = run_patientdb({"sql", file, "--script", good, "--json"}, no_password);
  EXPECT_EQ(done.code, 0) << done.err;
  EXPECT_THAT(done.out, HasSubstr("{\"columns\":[\"s\"],\"rows\":[[\"x;--y\"]],\"affected\":0}\n"));

  const Outcome failed = run_patientdb({"sql", file, "--script", bad}, no_password);
  EXPECT_EQ(failed.code, 1);
  EXPECT_THAT(failed.err, AllOf(StartsWith("error 3"), HasSubstr("bad.sql, line 4; nothing was changed")));
  const Outcome kept = run_patientdb({"sql", file, "SELECT s FROM a", "SELECT n FROM t", "--json"}, no_password);
  EXPECT_THAT(kept.out, AllOf(HasSubstr("[[\"x;--y\"]]"), HasSubstr("[[7]]")));
}

TEST_F(PatientDb, KeepsWhatStatementsDidBeforeTheOneThatFails) {
  const std::string file = plain_database();
  const Outcome outcome =
      run_patientdb({"sql", file, "UPDATE t SET n = 8", "nonsense", "UPDATE t SET n = 9"}, no_password);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.out, "1 row affected\n");
  EXPECT_THAT(run_patientdb({"sql", file, "SELECT n FROM t", "--json"}, no_password).out, HasSubstr("[[8]]"));
}

}  // namespace
}  // namespace apps_test
