// Exporting tables and taking them back.
#include <iomanip>
#include <limits>
#include <sstream>
#include <utility>

#include "database/engine/embedded/plain_file.h"
#include "database/transfer/export.h"
#include "support/encoding.h"
#include "tests/apps/program_run.h"

namespace apps_test {
namespace {

const Environment without_password{{"PATIENTDB_PASSWORD", ""}};

class Transfer : public testing::Test {
 protected:
  Outcome run(const std::vector<std::string>& arguments) const { return run_patientdb(arguments, without_password); }

  /// Two tables: `t` has every type of field, with values that are easily confused; `odd "names"` has names with every
  /// allowed character.
  std::string full_database() const {
    std::string file = folder_.file("full.das");
    EXPECT_EQ(run({"create", file, "--name", "Ödön"}).code, 0);
    const Outcome filled =
        run({"sql",
             file,
             "CREATE TABLE t (id COUNTER, yes YESNO, b BYTE, n SHORT, l LONG, f SINGLE, x DOUBLE, d DATETIME, s "
             "TEXT(60), m MEMO)",
             "CREATE UNIQUE INDEX byid ON t (id) WITH PRIMARY",
             "CREATE INDEX two ON t (s, d)",
             "CREATE UNIQUE INDEX three ON t (n)",
             "CREATE TABLE [odd, name?] ([a b] TEXT(9), [Ä] LONG)",
             "CREATE TABLE [ODD, name*] (one TEXT(9))",
             "INSERT INTO t (yes, b, n, l, f, x, d, s, m) VALUES (True, 255, -32768, -2147483648, 5.6, 0.1, #2/29/2024 "
             "7:05:01#, "
             "'a\"b''c,d', 'Zeile' & chr(13) & chr(10) & 'zwei' & chr(10) & 'drei' & chr(13))",
             "INSERT INTO t (id, d, s, m, x, f) VALUES (17, 0.5/86400, Null, Null, 1.7976931348623157E308, 3.4E38)",
             "INSERT INTO t (d, s, m, x, f) VALUES (45351.123456789, ' Öß€ ', '😀𝄞', 4.9E-324, -1E-40)",
             "INSERT INTO t (d, s, m, x) VALUES (-0.25, '=1+1', 'ohne', -1E15 / 3)",
             "INSERT INTO t (d, s, m) VALUES (-1.75, 'x', '\\N')",
             "INSERT INTO t (d) VALUES (-657434)",
             "INSERT INTO t (n) VALUES (1)",
             "DELETE * FROM t WHERE n=1",
             "INSERT INTO [odd, name?] VALUES ('eins', 1)",
             "INSERT INTO [ODD, name*] VALUES (NULL)",
             "INSERT INTO [ODD, name*] VALUES ('e')",
             "CREATE TABLE [Nul] (rowid LONG, x LONG)",
             "INSERT INTO [Nul] VALUES (5, 1)",
             "INSERT INTO [Nul] VALUES (3, 2)",
             "INSERT INTO glucose (vDate, Comment, ExtData) VALUES (#1/2/2024#, '', Null)"});
    EXPECT_EQ(filled.code, 0) << filled.err;
    return file;
  }

  /// Layout and rows as the console tool prints them.
  std::string told(const std::string& file) const {
    return run({"schema", file, "--json"}).out + run({"sql", file, "SELECT * FROM t", "SELECT * FROM [odd, name?]",
                                                      "SELECT * FROM [ODD, name*]", "SELECT * FROM glucose", "--json"})
                                                     .out;
  }

  /// The content of the folder's files, by name.
  std::map<std::string, std::string> files_of(const std::string& folder) const {
    std::map<std::string, std::string> files;
    for (const auto& [name, content] : folder_.snapshot()) {
      if (name.size() > folder.size() && name.starts_with(folder)) files[name.substr(folder.size() + 1)] = content;
    }
    return files;
  }

  TemporaryFolder folder_;
};

TEST_F(Transfer, ThereAndBackIsTheSameByteForByte) {
  const std::string file = full_database(), rows = told(file);
  ASSERT_THAT(rows, AllOf(HasSubstr("😀𝄞"), HasSubstr("17,0,null")));
  const std::vector<std::vector<std::string>> forms = {{"--format", "csv"}, {"--format", "sqlite"}};
  for (const std::vector<std::string>& form : forms) {
    SCOPED_TRACE(form.back());
    const std::string first = folder_.file("first-" + form.back()), again = folder_.file("again-" + form.back());
    const std::string back = folder_.file(form.back() + ".das");
    ASSERT_THAT(run({"export", file, first, form[0], form[1]}).out, HasSubstr(": 47 tables, "));
    const Outcome imported = run({"import", first, back});
    ASSERT_EQ(imported.code, 0) << imported.err;
    EXPECT_EQ(told(back), rows);
    EXPECT_EQ(run({"export", back, again, form[0], form[1]}).code, 0);
    EXPECT_EQ(files_of(first), files_of(again));
    // The next number follows that of the last row.
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
            "17,0,,,,3.4e+38,1.7976931348623157e+308,1899-12-30T00:00:00.5,,\r\n"
            "18,0,,,,-1e-40,5e-324,2024-02-29T02:57:46.6665695,\" Öß€ \",😀𝄞\r\n"
            "19,0,,,,,-333333333333333.3,days:-0.25,=1+1,ohne\r\n"
            "20,0,,,,,,1899-12-29T18:00:00,x,\\N\r\n"
            "21,0,,,,,,0100-01-01T00:00:00,,\r\n");
  EXPECT_EQ(files.at("odd, name_.csv") + files.at("ODD, name_-2.csv"), "a b,Ä\r\neins,1\r\none\r\n\r\ne\r\n");
  EXPECT_EQ(files.at("tNul.csv"), "rowid,x\r\n5,1\r\n3,2\r\n") << "the name of a device";
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
  ASSERT_EQ(run({"sql", file, "CREATE TABLE places ([Łódź] LONG)"}).code, 0);
  EXPECT_THAT(run({"export", file, folder_.file("more"), "--encoding", "windows-1252"}).err, HasSubstr("error 3421: "));
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
                        R"("d":"1899-12-30T00:00:00.5","s":null,"m":null},)"));
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
      {"t.csv", "-32768", "-32767.5", "t.csv, row 2: n is no value of its type"},
      {"t.csv", "255", "1e2", "t.csv, row 2: b is no value of its type"},
      {"t.csv", "1,-1,", "1,0.5,", "t.csv, row 2: yes is no value of its type"},
      {"t.csv", "0.1", "nan", "t.csv, row 2: x is no value of its type"},
      {"t.csv", "3.4e+38", "3.5e+38", "t.csv, row 3: f is no value of its type"},
      {"t.csv", "07:05:01", "07:05:1.", "t.csv, row 2: d is no value of its type"},
      {"t.csv", "days:-0.25", "days:inf", "t.csv, row 5: d is no value of its type"},
      {"odd, name_.csv", "eins,1\r\n", "ei\rns,1\r\n", "row 2: a carriage return stands alone"},
      {"_indexes.csv", "t,two,d,no,no", "t,two,d,no,yes", "the rows of index two contradict each other"},
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

/// A table "t" with one field and the value in it.
class OneValue : public jet_import::Source {
 public:
  OneValue(engine::DataType type, engine::Value value) : value_(std::move(value)) {
    tables_.push_back({"t", {{.name = "x", .type = type}}, {}, {}, {}, 1});
  }
  const std::vector<jet_import::SourceTable>& tables() const override { return tables_; }
  const std::vector<std::string>& linked_tables() const override { return linked_tables_; }
  std::unique_ptr<jet_import::SourceRows> rows(std::size_t) override { return std::make_unique<Row>(value_); }

 private:
  class Row : public jet_import::SourceRows {
   public:
    explicit Row(engine::Value value) : value_(std::move(value)) {}
    bool next() override { return !std::exchange(read_, true); }
    engine::Value value(std::size_t) override { return value_; }

   private:
    engine::Value value_;
    bool read_ = false;
  };
  std::vector<jet_import::SourceTable> tables_;
  std::vector<std::string> linked_tables_;
  engine::Value value_;
};

TEST_F(Transfer, NumbersThatAFormCannotHoldAreRefusedOrTold) {
  using enum transfer::Format;
  const double none = std::numeric_limits<double>::quiet_NaN(), beyond = std::numeric_limits<double>::infinity();
  struct Case {
    engine::Value value;
    transfer::Format format;
    std::string file, content, note;  ///< empty content: the file is refused
  };
  const Case cases[] = {
      {-0.0, Csv, "t.csv", "x\r\n-0\r\n", ""},
      {-0.0F, Sqlite, "README.txt", "-0 is 0", "t: 1 times -0, which this form holds as 0"},
      {0.0, Sqlite, "README.txt", "t (tables.sqlite): 1", ""},
      {none, Csv, "t.csv", "nan", ""},
      {none, Json, "t.json", "\"nan\"", ""},
      {none, Sqlite, "", "", ""},
      {static_cast<float>(none), Sql, "", "", ""},
      {static_cast<float>(beyond), Sql, "tables.sql", "(9e999);", ""},
      {-beyond, Sql, "tables.sql", "(-9e999);", ""},
  };
  int number = 0;
  for (const Case& row : cases) {
    SCOPED_TRACE(++number);
    const std::string folder = folder_.file("form" + std::to_string(number));
    const auto type = std::holds_alternative<float>(row.value) ? engine::DataType::Single : engine::DataType::Double;
    OneValue source(type, row.value);
    const auto report = [&] { return transfer::export_tables(source, folder, {.format = row.format}, nullptr); };
    if (row.content.empty()) {
      EXPECT_THROW(report(), support::RuntimeError);
      continue;
    }
    const std::vector<std::string> notes = report().notes;
    EXPECT_EQ(notes.empty() ? "" : notes.front(), row.note);
    EXPECT_THAT(content_of(folder + "/" + row.file), HasSubstr(row.content));
  }
  ASSERT_EQ(run({"import", folder_.file("form1"), folder_.file("zero.das")}).out,
            "Table  Rows\n-----  ----\nt         1\n" + folder_.file("zero.das") + " created\n");
  EXPECT_THAT(run({"import", folder_.file("form4"), folder_.file("none.das")}).err,
              HasSubstr("x is no value of its type"));
}

TEST_F(Transfer, WhatAnotherProgramPutIntoASqliteFormIsTakenAsItIsOrRefused) {
  struct Case {
    std::string type, value, outcome;  ///< a row, or an error's number
  };
  const Case cases[] = {
      {"Integer", "7.0", "[[7]]"},   {"Integer", "2.5", "error 3421"}, {"Boolean", "0.5", "error 3421"},
      {"Long", "'x'", "error 3421"}, {"Date", "17.5", "error 3421"},   {"Date", "'2024-02-29'", "2024"},
      {"Memo", "1.5", "error 3421"}, {"Double", "3", "[[3]]"},         {"Memo", "x'00'", "error 3421"}};
  int number = 0;
  for (const Case& row : cases) {
    const std::string name = std::to_string(++number), path = folder_.file(name + ".sqlite");
    auto file = engine::embedded::create_plain_file(path);
    for (const std::string& sql :
         {std::string("CREATE TABLE _tables (\"Table\", File, Encoding, Rows, Rule, RuleText)"),
          std::string("CREATE TABLE _fields (\"Table\", Field, Type, Size, Attributes, Ordinal, \"Default\", Required, "
                      "AllowZeroLength, Rule, RuleText)"),
          std::string(
              "CREATE TABLE _indexes (\"Table\", \"Index\", Field, \"Primary\", \"Unique\", Required, IgnoreNulls, "
              "Clustered)"),
          std::string("INSERT INTO _tables VALUES ('t', '', '', 1, '', '')"),
          "INSERT INTO _fields VALUES ('t', 'x', '" + row.type + "', 0, 0, 0, '', 'no', 'no', '', '')",
          "CREATE TABLE t (x" + std::string(row.type == "Integer" ? " SMALLINT" : "") + ")",
          "INSERT INTO t VALUES (" + row.value + ")"}) {
      file->run(sql);
    }
    engine::embedded::finish_plain_file(std::move(file));
    const Outcome imported = run({"import", path, folder_.file(name + ".das")});
    const std::string rows = run({"sql", folder_.file(name + ".das"), "SELECT * FROM t", "--json"}).out;
    EXPECT_THAT(imported.err + rows, HasSubstr(row.outcome)) << row.type << ' ' << row.value;
  }
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
}  // namespace apps_test
