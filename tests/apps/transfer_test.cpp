// Exporting tables and taking them back.
#include <gmock/gmock.h>

#include <iomanip>
#include <sstream>

#include "support/encoding.h"
#include "tests/apps/program_run.h"

namespace {

using apps_test::content_of;
using apps_test::Environment;
using apps_test::Outcome;
using apps_test::run_interrupted;
using apps_test::run_patientdb;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const Environment without_password{{"PATIENTDB_PASSWORD", ""}};

class Transfer : public testing::Test {
 protected:
  Outcome run(const std::vector<std::string>& arguments) const { return run_patientdb(arguments, without_password); }

  /// Two tables: `t` has every type of field and values that are hard to tell, `odd "names"` what a name can be.
  std::string full_database() const {
    std::string file = folder_.file("full.das");
    EXPECT_EQ(run({"create", file, "--name", "Ödön"}).code, 0);
    const Outcome filled =
        run({"sql", file,
             "CREATE TABLE t (id COUNTER, yes YESNO, b BYTE, n SHORT, l LONG, f SINGLE, x DOUBLE, d DATETIME, s "
             "TEXT(60), m MEMO)",
             "CREATE UNIQUE INDEX byid ON t (id) WITH PRIMARY", "CREATE INDEX two ON t (s, d)",
             "CREATE TABLE [odd, name?] ([a b] TEXT(9), [Ä] LONG)", "CREATE TABLE [ODD, name*] (one TEXT(9))",
             "INSERT INTO t (yes, b, n, l, f, x, d, s, m) VALUES (True, 255, -32768, -2147483648, 5.6, 0.1, #2/29/2024 "
             "7:05:01#, "
             "'a\"b''c,d', 'Zeile' & chr(13) & chr(10) & 'zwei' & chr(10) & 'drei' & chr(13))",
             "INSERT INTO t (id, d, s, m, x, f) VALUES (17, #12:00:00#, Null, Null, 1.7976931348623157E308, 3.4E38)",
             "INSERT INTO t (d, s, m, x, f) VALUES (45351.123456789, ' Öß€ ', '😀𝄞', 4.9E-324, -1E-40)",
             "INSERT INTO t (d, s, m, x) VALUES (-0.25, '=1+1', 'ohne', -1E15 / 3)",
             "INSERT INTO t (d, s, m) VALUES (-1.75, 'x', '\\N')", "INSERT INTO t (d) VALUES (-657434)",
             "INSERT INTO t (n) VALUES (1)", "DELETE * FROM t WHERE n=1", "INSERT INTO [odd, name?] VALUES ('eins', 1)",
             "INSERT INTO [ODD, name*] VALUES (NULL)", "INSERT INTO [ODD, name*] VALUES ('e')",
             "INSERT INTO glucose (vDate, Comment, ExtData) VALUES (#1/2/2024#, '', Null)"});
    EXPECT_EQ(filled.code, 0) << filled.err;
    return file;
  }

  /// Layout and rows as the console tool tells them.
  std::string told(const std::string& file) const {
    return run({"schema", file, "--json"}).out + run({"sql", file, "SELECT * FROM t", "SELECT * FROM [odd, name?]",
                                                      "SELECT * FROM [ODD, name*]", "SELECT * FROM glucose", "--json"})
                                                     .out;
  }

  /// What a folder holds, by name.
  std::map<std::string, std::string> files_of(const std::string& folder) const {
    std::map<std::string, std::string> files;
    for (const auto& [name, content] : folder_.snapshot()) {
      if (name.size() > folder.size() && name.starts_with(folder)) files[name.substr(folder.size() + 1)] = content;
    }
    return files;
  }

  apps_test::TemporaryFolder folder_;
};

TEST_F(Transfer, ThereAndBackIsTheSameByteForByte) {
  const std::string file = full_database(), rows = told(file);
  ASSERT_THAT(rows, AllOf(HasSubstr("😀𝄞"), HasSubstr("17,0,null")));
  const std::vector<std::vector<std::string>> forms = {{"--format", "csv"}, {"--format", "sqlite"}};
  for (const std::vector<std::string>& form : forms) {
    SCOPED_TRACE(form.back());
    const std::string first = folder_.file("first-" + form.back()), again = folder_.file("again-" + form.back());
    const std::string back = folder_.file(form.back() + ".das");
    ASSERT_THAT(run({"export", file, first, form[0], form[1]}).out, HasSubstr(": 46 tables, "));
    const Outcome imported = run({"import", first, back});
    ASSERT_EQ(imported.code, 0) << imported.err;
    EXPECT_EQ(told(back), rows);
    EXPECT_EQ(run({"export", back, again, form[0], form[1]}).code, 0);
    EXPECT_EQ(files_of(first), files_of(again));
    // The next number is that behind the rows that are there.
    EXPECT_EQ(run({"sql", back, "INSERT INTO t (s) VALUES ('new')", "SELECT max(id) FROM t", "--json"}).code, 0);
  }
}

TEST_F(Transfer, CsvTellsNullFromAnEmptyTextAndMomentsToTheirLastBit) {
  const std::string folder = folder_.file("csv");
  ASSERT_EQ(run({"export", full_database(), folder}).code, 0);
  const auto files = files_of(folder);
  EXPECT_EQ(files.at("t.csv"),
            "id,yes,b,n,l,f,x,d,s,m\r\n"
            "1,-1,255,-32768,-2147483648,5.6,0.1,2024-02-29T07:05:01,\"a\"\"b'c,d\",\"Zeile\r\nzwei\ndrei\r\"\r\n"
            "17,0,,,,3.4e+38,1.7976931348623157e+308,1899-12-30T12:00:00,,\r\n"
            "18,0,,,,-1e-40,5e-324,2024-02-29T02:57:46.6665695,\" Öß€ \",😀𝄞\r\n"
            "19,0,,,,,-333333333333333.3,days:-0.25,=1+1,ohne\r\n"
            "20,0,,,,,,1899-12-29T18:00:00,x,\\N\r\n"
            "21,0,,,,,,0100-01-01T00:00:00,,\r\n");
  EXPECT_EQ(files.at("odd, name_.csv") + files.at("ODD, name_-2.csv"), "a b,Ä\r\neins,1\r\none\r\n\r\ne\r\n");
  EXPECT_THAT(files.at("glucose.csv"), HasSubstr(",2024-01-02T00:00:00,,,0,,0,\"\",,0,0,0\r\n"));
}

TEST_F(Transfer, CodePage1252IsWrittenOrRefusedWithItsPlace) {
  const std::string file = full_database(), folder = folder_.file("ansi"), back = folder_.file("back.das");
  const std::vector<std::string> command = {"export", file, folder, "--encoding", "windows-1252"};
  const auto before = folder_.snapshot();
  const Outcome refused = run(command);
  EXPECT_EQ(refused.code, 1);
  EXPECT_EQ(refused.err, "error 3421: t.m, row 3: a character that code page 1252 does not have\n");
  EXPECT_EQ(folder_.snapshot(), before);
  ASSERT_EQ(run({"sql", file, "UPDATE t SET m='Größe' WHERE id=18"}).code, 0);
  ASSERT_EQ(run(command).code, 0);
  EXPECT_THAT(content_of(folder + "/t.csv"), HasSubstr("\" \xD6\xDF\x80 \",Gr\xF6\xDF"
                                                       "e\r\n"));
  EXPECT_EQ(run({"import", folder, back}).code, 0);
  EXPECT_EQ(told(back), told(file));
}

TEST_F(Transfer, NamedTablesAloneAreExportedAndCounted) {
  const Outcome outcome = run({"export", full_database(), folder_.file("one"), "T", "t", "--format", "json", "--json"});
  std::ostringstream answer;
  answer << "{\"folder\":" << std::quoted(folder_.file("one"))
         << ",\"tables\":[{\"name\":\"t\",\"file\":\"t.json\",\"rows\":6}]}\n";
  EXPECT_EQ(outcome.out, answer.str());
  EXPECT_THAT(outcome.err, HasSubstr("not protected"));
  EXPECT_THAT(content_of(folder_.file("one/t.json")),
              HasSubstr(R"({"id":17,"yes":false,"b":null,"n":null,"l":null,"f":3.4e+38,"x":1.7976931348623157e+308,)"
                        R"("d":"1899-12-30T12:00:00","s":null,"m":null},)"));
  EXPECT_THAT(content_of(folder_.file("one/README.txt")), AllOf(HasSubstr("t (t.json): 6"), HasSubstr("mg/dl")));
}

TEST_F(Transfer, WhatCannotBeDoneLeavesEverythingAsItWas) {
  const std::string file = full_database();
  const std::string taken = folder_.file("taken");
  folder_.write("taken/other.txt", "kept");
  struct Case {
    std::vector<std::string> arguments;
    int code;
    std::string error;
  };
  const Case cases[] = {
      {{file, taken}, 1, "error 3204: "},
      {{file, file}, 1, "error 3204: "},
      {{file, folder_.file("no/such")}, 1, "error 3044: "},
      {{file, folder_.file("new"), "gone"}, 1, "error 3265: There is no table gone."},
      {{folder_.file("gone.das"), folder_.file("new")}, 1, "error 3024: "},
      {{file, folder_.file("new"), "--format", "xml"}, 2, "--format takes"},
      {{file, folder_.file("new"), "--encoding", "latin1"}, 2, "--encoding takes"},
      {{file, folder_.file("new"), "--format", "json", "--encoding", "utf-8"}, 2, "--encoding goes with"},
      {{file}, 2, "Something is missing"},
  };
  const auto before = folder_.snapshot();
  for (const Case& row : cases) {
    std::vector<std::string> arguments{"export"};
    arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.code, row.code) << row.error;
    EXPECT_THAT(outcome.err, testing::StartsWith(row.error));
    EXPECT_EQ(folder_.snapshot(), before) << row.error;
  }
}

TEST_F(Transfer, AnExportThatIsNotWholeIsRefused) {
  const std::string folder = folder_.file("csv"), target = folder_.file("new.das");
  ASSERT_EQ(run({"export", full_database(), folder, "t", "odd, name?"}).code, 0);
  struct Case {
    std::string file, part, instead, error;
  };
  const Case cases[] = {
      {"t.csv", "21,0,,,,,,0100-01-01T00:00:00,,\r\n", "", "t: the file announces 6 rows, 5 could be read"},
      {"t.csv", "20,0,", "20,0", "t.csv, row 6: it has not as many cells"},
      {"t.csv", "\"Zeile", "Ze\"ile", "t.csv, row 2: a quote stands within a cell"},
      {"t.csv", "drei\r\"", "drei\r", "t.csv, row 2: a quote stands within a cell"},
      {"t.csv", ",\" Öß€ \"", ",\" Öß€ ", "t.csv, row 4: a quote does not end"},
      {"t.csv", "2024-02-29T07", "2024-02-30T07", "t.csv, row 2: d is no value of its type"},
      {"t.csv", "-32768", "-32768x", "t.csv, row 2: n is no value of its type"},
      {"t.csv", "-32768", "-32769", "t: n: "},
      {"t.csv", "ohne", "\xFF", "t.csv, row 5: a text is not UTF-8"},
      {"t.csv", "19,0", "18,0", "error 3022: "},
      {"t.csv", "id,yes", "yes,id", "t.csv, row 1: the fields are not those"},
      {"_fields.csv", "t,yes,Boolean", "t,yes,Bool", "\"Bool\" is no type"},
      {"_fields.csv", "t,yes", "q,yes", "there is no table q"},
      {"_tables.csv", "t,t.csv", "t,../t.csv", "leads out of its folder"},
      {"_tables.csv", "t,t.csv,utf-8", "t,t.csv,utf-9", "an encoding that is unknown"},
      {"_tables.csv", "t,t.csv", "t,u.csv", "error 3024: "},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.file + ": " + row.part);
    const std::string whole = content_of(folder + "/" + row.file);
    std::string changed = whole;
    ASSERT_NE(changed.find(row.part), std::string::npos);
    folder_.write("csv/" + row.file, changed.replace(changed.find(row.part), row.part.size(), row.instead));
    const auto before = folder_.snapshot();
    const Outcome outcome = run({"import", folder, target});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr(row.error));
    EXPECT_EQ(folder_.snapshot(), before);
    folder_.write("csv/" + row.file, whole);
  }
  EXPECT_EQ(run({"import", folder, target}).code, 0);
  EXPECT_THAT(run({"import", folder_.file(""), folder_.file("b.das")}).err, HasSubstr("holds no export"));
  EXPECT_THAT(run({"import", target, folder_.file("b.das")}).err, HasSubstr("it is no export"));
}

TEST_F(Transfer, ASpreadsheetsLineEndsAndMarkAreTaken) {
  const std::string folder = folder_.file("csv"), file = full_database(), back = folder_.file("back.das");
  ASSERT_EQ(run({"export", file, folder, "odd, name?"}).code, 0);
  folder_.write("csv/odd, name_.csv", std::string(support::utf8_byte_order_mark) + "a b,Ä\n\"neu\",2\n");
  ASSERT_EQ(run({"import", folder, back}).code, 0);
  EXPECT_THAT(run({"sql", back, "SELECT * FROM [odd, name?]", "--json"}).out, HasSubstr("[[\"neu\",2]]"));
  folder_.write("csv/odd, name_.csv", std::string(support::utf8_byte_order_mark) + "a b,Ä\n,");
  ASSERT_EQ(run({"import", folder, folder_.file("again.das")}).code, 0);
  EXPECT_THAT(run({"sql", folder_.file("again.das"), "SELECT * FROM [odd, name?]", "--json"}).out,
              HasSubstr("[[null,null]]"));
}

TEST_F(Transfer, NoPasswordIsExported) {
  const std::string file = folder_.file("secret.das");
  const Environment secret{{"PATIENTDB_PASSWORD", "xKennwort7"}};
  ASSERT_EQ(run_patientdb({"create", file, "--name", "A"}, secret).code, 0);
  for (const std::string form : {"csv", "json", "sqlite", "sql"}) {
    ASSERT_EQ(run_patientdb({"export", file, folder_.file(form), "--format", form}, secret).code, 0);
  }
  for (const auto& [name, content] : folder_.snapshot()) EXPECT_THAT(content, Not(HasSubstr("xKennwort7"))) << name;
}

TEST_F(Transfer, ControlCEndsItAtTheNextRowWithNothingHalfWritten) {
  const std::string file = full_database(), folder = folder_.file("csv");
  ASSERT_EQ(run({"export", file, folder, "t"}).code, 0);
  const std::vector<std::vector<std::string>> commands = {
      {"export", file, folder_.file("new"), "t"},
      {"export", file, folder_.file("new"), "t", "--format", "sqlite"},
      {"import", folder, folder_.file("new.das")}};
  const auto before = folder_.snapshot();
  for (const std::vector<std::string>& command : commands) {
    const Outcome outcome = run_interrupted(command, "] t ", without_password);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_THAT(outcome.err, HasSubstr("\rerror 3059: "));
    EXPECT_EQ(folder_.snapshot(), before);
  }
}

}  // namespace
