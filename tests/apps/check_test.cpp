// Checks of sound files, and of files that each have one fault.
#include <filesystem>

#include "database/engine/embedded/connection.h"
#include "tests/apps/program_run.h"

namespace apps_test {
namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const Environment plain_file{{"PATIENTDB_PASSWORD", ""}};
constexpr std::size_t checked_page_size = 4096;

class Check : public testing::Test {
 protected:
  std::string patient(const std::string& name) {
    std::string file = folder_.file(name);
    EXPECT_EQ(run_patientdb({"create", file, "--name", "Müller", "--firstname", "Jörg"}).code, 0);
    return file;
  }
  /// The outcome of a check of the file after these statements.
  Outcome after(const std::vector<std::string>& statements, const Environment& environment = {}) {
    const std::string file = folder_.file("case" + std::to_string(++count_) + ".das");
    EXPECT_EQ(run_patientdb({"create", file}, environment).code, 0);
    std::vector<std::string> arguments{"sql", file};
    arguments.insert(arguments.end(), statements.begin(), statements.end());
    const Outcome changed = run_patientdb(arguments, environment);
    EXPECT_EQ(changed.code, 0) << changed.err;
    return run_patientdb({"check", file}, environment);
  }

  TemporaryFolder folder_;
  int count_ = 0;
};

TEST_F(Check, FindsNothingInSoundFilesAndChangesNone) {
  const std::string own = patient("own.das"), plain = folder_.file("plain.das"), index = folder_.file("index.mdb"),
                    other = folder_.file("other.mdb");
  ASSERT_EQ(run_patientdb({"create", plain, "--name", "N"}, plain_file).code, 0);
  ASSERT_EQ(run_patientdb({"index", index, "create"}).code, 0);
  ASSERT_EQ(run_patientdb({"create", other, "--empty"}, plain_file).code, 0);
  const auto before = folder_.snapshot();
  const Outcome outcome = run_patientdb({"check", own, plain, index});
  EXPECT_EQ(outcome.code, 0) << outcome.out << outcome.err;
  EXPECT_THAT(outcome.out,
              AllOf(HasSubstr("own.das: layout 4.60, 43 tables, "), HasSubstr("plain.das: layout 4.60, 43 tables, "),
                    HasSubstr("index.mdb: 1 tables, "), Not(HasSubstr("note"))));
  EXPECT_THAT(run_patientdb({"check", other, "--json"}, plain_file).out,
              HasSubstr(R"("findings":[],"notes":["The file has no version record; its layout was not compared."]})"));
  EXPECT_EQ(folder_.snapshot(), before);
}

TEST_F(Check, NamesWhatIsWrongWithRowsAndLayout) {
  struct Case {
    std::vector<std::string> statements;
    std::vector<std::string> findings;
  };
  const Case cases[] = {
      {{"INSERT INTO therapieplan_details (lID, ItemType) VALUES (77, 500)",
        "INSERT INTO therapieplan_details (lID, ItemType) VALUES (78, 500)"},
       {"reference: therapieplan_details.lID: 2 rows: points to no row of therapieplan"}},
      {{"INSERT INTO glucose (vDate, importid) VALUES (#1/1/2024#, 5)",
        "INSERT INTO glucose (vDate, importid) VALUES (#1/1/2024#, 0)",
        "INSERT INTO glucose (vDate, importid) VALUES (#1/1/2024#, -1)", "INSERT INTO import (ImportDesc) VALUES ('a')",
        "INSERT INTO insulin (importid) VALUES (1)"},
       {"reference: glucose.importid: 1 row: points to no row of import"}},
      {{"INSERT INTO template_insulin (TEMPLATE_ID) VALUES (3)",
        "INSERT INTO template_detailed_intakes (lID) VALUES (1)"},
       {"reference: template_insulin.TEMPLATE_ID: 1 row: points to no row of templates",
        "reference: template_detailed_intakes.lID: 1 row: points to no row of template_intakes"}},
      {{"DROP TABLE sysevents"}, {"layout: sysevents: the table is missing"}},
      {{"ALTER TABLE patdat DROP COLUMN city"}, {"layout: patdat.city: the field is missing"}},
      {{"ALTER TABLE steps ALTER COLUMN flag TEXT(7)"}, {"layout: steps.flag: the field is Text instead of Long"}},
      {{"ALTER TABLE patdat ALTER COLUMN city TEXT(7)"},
       {"layout: patdat.city: the field has 7 characters instead of"}},
      {{"DROP INDEX vDate ON glucose"}, {"layout: glucose.vDate: the index is missing"}},
      {{"DELETE * FROM db_info"}, {"layout: db_info: the version record cannot be read"}},
  };
  for (const Case& row : cases) {
    const Outcome outcome = after(row.statements);
    EXPECT_EQ(outcome.code, 1) << row.findings.front();
    for (const std::string& finding : row.findings) EXPECT_THAT(outcome.out, HasSubstr(finding));
    const std::size_t count = row.findings.size();
    EXPECT_THAT(outcome.out, EndsWith(std::to_string(count) + (count == 1 ? " finding\n" : " findings\n")))
        << row.findings.front();
  }
  const Outcome newer = after({"UPDATE db_info SET MinVersion=61"});
  EXPECT_EQ(newer.code, 0);
  EXPECT_THAT(newer.out, HasSubstr("note: The layout 4.61 is none that this program knows"));
}

TEST_F(Check, NamesWhatAnotherProgramChangedInTheFile) {
  const std::string file = folder_.file("changed.mdb");
  ASSERT_EQ(run_patientdb({"create", file, "--empty"}, plain_file).code, 0);
  ASSERT_EQ(run_patientdb({"sql", file, "CREATE TABLE t (n LONG, id COUNTER)"}, plain_file).code, 0);
  const std::string sound = content_of(file);
  struct Case {
    const char *change, *finding;
  };
  for (const auto& [change, finding] : {
           Case{"CREATE INDEX stray ON t (n)", "catalogue: t: the index stray of the file is in no catalogue"},
           Case{"CREATE TABLE other (a)", "catalogue: other: the table other of the file is in no catalogue"},
           Case{"ALTER TABLE t ADD COLUMN more", "catalogue: t: the column more is no field"},
           Case{"DROP TABLE t", "catalogue: t: the table is not in the file"},
           Case{"INSERT INTO t (n, id) VALUES (1, 7), (2, NULL), (3, NULL)",
                "required: t.id: 2 rows: has no AutoNumber"},
       }) {
    folder_.write("changed.mdb", sound);
    engine::embedded::Connection{file, {}}.run(change);
    EXPECT_THAT(run_patientdb({"check", file}, plain_file).out, HasSubstr(finding)) << change;
  }
  EXPECT_THAT(run_patientdb({"check", file, "--json"}, plain_file).out,
              HasSubstr(R"({"check":"required","table":"t","field":"id","rows":2,"text":"has no AutoNumber)"))
      << "the last change";
  ASSERT_EQ(run_patientdb(
                {"sql", file, "INSERT INTO t (n) SELECT n FROM t WHERE id IS NULL", "DELETE * FROM t WHERE id IS NULL"},
                plain_file)
                .code,
            0);
  EXPECT_EQ(run_patientdb({"check", file}, plain_file).code, 0) << "numbered, as the documentation says";
}

TEST_F(Check, NamesPagesThatAreDamaged) {
  const std::string file = patient("sound.das");
  const std::string sound = content_of(file);
  int pages_named = 0;
  for (std::size_t page = 1; page < sound.size() / checked_page_size; page += 7) {
    std::string content = sound;
    char& byte = content[page * checked_page_size + 1000];
    byte = static_cast<char>(byte ^ 0x10);
    const Outcome outcome = run_patientdb({"check", folder_.write("damaged.das", content), "--json"});
    EXPECT_EQ(outcome.code, 1) << "page " << page + 1;
    // If the catalogue is damaged, the file is not opened.
    const std::string named = "page " + std::to_string(page + 1) + " of ";
    EXPECT_THAT(outcome.out, AnyOf(HasSubstr(named), HasSubstr("cannot be opened as a database"))) << outcome.out;
    pages_named += outcome.out.find(named) != std::string::npos ? 1 : 0;
    EXPECT_EQ(content_of(folder_.file("damaged.das")), content);
  }
  EXPECT_GE(pages_named, 12);
  std::string first = sound;
  first[100] = static_cast<char>(first[100] ^ 1);
  const Outcome unknown = run_patientdb({"check", folder_.write("first.das", first)});
  EXPECT_EQ(unknown.code, 5);
  EXPECT_THAT(unknown.err, HasSubstr("first.das: error 3031: "));
}

TEST_F(Check, TellsATableWhosePageIsDamaged) {
  const std::string file = folder_.file("plain.mdb");
  ASSERT_EQ(run_patientdb({"create", file, "--empty"}, plain_file).code, 0);
  std::string script = "CREATE TABLE lines (n LONG, text MEMO); CREATE INDEX n ON lines (n);\n";
  for (int i = 0; i < 300; ++i) {
    script += "INSERT INTO lines VALUES (" + std::to_string(i) + ", '" + std::string(200, 'x') + "');\n";
  }
  ASSERT_EQ(run_patientdb({"sql", file, "--script", folder_.write("fill.sql", script)}, plain_file).code, 0);
  std::string content = content_of(file);
  const std::size_t row =
      content.find(std::string(200, 'x'), content.size() / 2) / checked_page_size * checked_page_size;
  content.replace(row, 100, 100, '\x7f');
  const Outcome outcome = run_patientdb({"check", folder_.write("torn.mdb", content)}, plain_file);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.out, HasSubstr("structure: lines: "));
}

TEST_F(Check, IsEndedByNoDamage) {
  const std::string file = patient("sound.das");
  std::string plain = folder_.file("plain.das");
  ASSERT_EQ(run_patientdb({"create", plain, "--name", "N"}, plain_file).code, 0);
  for (const std::string& name : {file, plain}) {
    const std::string sound = content_of(name);
    for (std::size_t pages = 1; pages < sound.size() / checked_page_size; pages += 5) {
      const std::string cut = folder_.write("cut.das", sound.substr(0, pages * checked_page_size));
      const Outcome outcome = run_patientdb({"check", cut}, name == plain ? plain_file : Environment{});
      EXPECT_EQ(outcome.code, 1) << pages << outcome.err;
    }
    std::string zeroed = sound;
    for (std::size_t page = 1; page < sound.size() / checked_page_size; page += 3)
      zeroed.replace(page * checked_page_size, 64, 64, '\0');
    EXPECT_EQ(
        run_patientdb({"check", folder_.write("zeroed.das", zeroed)}, name == plain ? plain_file : Environment{}).code,
        1);
  }
  EXPECT_THAT(run_patientdb({"check", folder_.write("text.das", "no database, but a text of some length")}).out,
              HasSubstr("file: cannot be opened as a database: "));
}

TEST_F(Check, OfManyFilesIsEndedByControlC) {
  const std::string first = patient("first.das"), second = patient("second.das");
  const Outcome outcome = run_interrupted({"check", first, second}, "] glucose ");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.err, HasSubstr("\rerror 3059: "));
  EXPECT_EQ(outcome.out, "");
}

TEST_F(Check, KnowsNothingOfAFileThatItCannotOpen) {
  const std::string file = patient("own.das");
  struct Case {
    std::string file;
    Environment environment;
    std::string message;
  };
  for (const Case& row :
       {Case{file, {{"PATIENTDB_PASSWORD", "falsch"}}, "error 3031: "},
        Case{folder_.file("none.das"), {}, "error 3024: "}, Case{folder_.file("none/x.das"), {}, "error 3044: "}}) {
    const Outcome outcome = run_patientdb({"check", row.file, file}, row.environment);
    EXPECT_EQ(outcome.code, 5);
    EXPECT_THAT(outcome.err, StartsWith(row.file + ": " + row.message));
  }
}

}  // namespace
}  // namespace apps_test
