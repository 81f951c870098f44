#include <gmock/gmock.h>

#include <filesystem>

#include "database/jet_import/import.h"
#include "database/preferences.h"
#include "tests/apps/program_run.h"
#include "tests/import/posix/jet3_file.h"

namespace {

using apps_test::Environment;
using apps_test::Outcome;
using apps_test::run_patientdb;
using jet3::bytes_of;
using jet3::Type;
using testing::HasSubstr;
using testing::StartsWith;

const Environment no_password{{"PATIENTDB_PASSWORD", ""}};
const std::vector<jet3::Column> all_columns = {
    {"id", Type::Long, 0, true}, {"b", Type::Bool},   {"y", Type::Byte}, {"i", Type::Int},      {"m", Type::Money},
    {"f", Type::Float},          {"x", Type::Double}, {"d", Type::Date}, {"s", Type::Text, 20}, {"t", Type::Memo}};

jet3::Row row(std::int32_t id, const std::string& memo) {
  return {bytes_of(id),
          "",
          bytes_of<std::uint8_t>(200),
          bytes_of<std::int16_t>(-5),
          bytes_of<std::int64_t>(1234567),
          bytes_of(5.5F),
          bytes_of(0.1),
          bytes_of(36526.25),
          "M\xFCller \x80",
          memo};
}

class Jet3 : public testing::Test {
 protected:
  std::string write(const jet3::File& file) const { return folder_.write("old.mdb", file.content()); }
  Outcome import(const std::string& source, const Environment& environment = no_password) const {
    return run_patientdb({"import", source, folder_.file("new.das")}, environment);
  }
  std::string rows(const std::string& sql) const {
    return run_patientdb({"sql", folder_.file("new.das"), sql, "--json"}, no_password).out;
  }

  apps_test::TemporaryFolder folder_;
};

TEST_F(Jet3, FilesBringEachTypeOfValue) {
  jet3::File file("");
  const jet3::Row nulls(all_columns.size());
  jet3::Row last = nulls;
  last[0] = bytes_of<std::int32_t>(9);
  file.add({"Werte", all_columns, {row(7, jet3::File::memo_inside("\xC4rger")), last}, "id"});
  const Outcome outcome = import(write(file));
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(rows("SELECT * FROM Werte"),
              HasSubstr(R"("rows":[[7,-1,200,-5,123.4567,5.5,0.1,"2000-01-01 06:00:00","Müller €","Ärger"],)"
                        R"([9,0,null,null,null,null,null,null,null,null]])"));
  EXPECT_THAT(
      run_patientdb({"schema", folder_.file("new.das")}, no_password).out,
      testing::AllOf(HasSubstr("\nid     Long        4          17"), HasSubstr("\ns      Text       20           2"),
                     HasSubstr("Index PrimaryKey (id) primary unique\n")));
  run_patientdb({"sql", folder_.file("new.das"), "INSERT INTO Werte (s) VALUES ('new')"}, no_password);
  EXPECT_THAT(rows("SELECT max(id) FROM Werte"), HasSubstr("[[10]]"));
}

TEST_F(Jet3, FilesBringTheIndexesOfTablesThatLostColumnsOrHaveRelations) {
  const std::vector<jet3::Column> columns = {
      {"gone", Type::Long, 0, false, true}, {"n", Type::Long}, {"lost", Type::Text, 9, false, true}, {"k", Type::Long}};
  const std::vector<jet3::Row> rows = {{bytes_of(1), bytes_of(2), "x", bytes_of(3)}};
  for (const bool relation_first : {false, true}) {
    jet3::File file("");
    file.add({"t", columns, rows, "k", relation_first});
    const Outcome outcome = import(write(file));
    ASSERT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_THAT(this->rows("SELECT n, k FROM t"), HasSubstr("[[2,3]]"));
    EXPECT_THAT(run_patientdb({"schema", folder_.file("new.das")}, no_password).out,
                HasSubstr("Index PrimaryKey (k) primary unique\n"));
    std::filesystem::remove(folder_.file("new.das"));
  }
}

TEST_F(Jet3, FilesLoseAnIndexThatCannotBeReadOnlyWhereThatIsAskedFor) {
  jet3::File file("");
  file.add({"t", {{"n", Type::Long}}, {{bytes_of(1)}}, "nobody"});
  const std::string source = write(file), target = folder_.file("new.das");
  EXPECT_THAT(import(source).err, StartsWith("error 3343: t: index PrimaryKey cannot be read"));
  EXPECT_FALSE(std::filesystem::exists(target));
  const Outcome outcome = run_patientdb({"import", source, target, "--leave-out-indexes"}, no_password);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.err, HasSubstr("t: index PrimaryKey cannot be read, left out\n"));
  EXPECT_THAT(rows("SELECT n FROM t"), HasSubstr("[[1]]"));
}

TEST_F(Jet3, FilesBringReplicationNumbersWithTheirHyphens) {
  jet3::File file("");
  const std::string number("\x33\x22\x11\x00\x55\x44\x77\x66\x88\x99\xAA\xBB\xCC\xDD\xEE\xFF", 16);
  file.add({"t", {{"n", Type::Long}, {"r", Type::ReplicationNumber}}, {{bytes_of<std::int32_t>(1), number}}, ""});
  ASSERT_EQ(import(write(file)).code, 0);
  EXPECT_THAT(rows("SELECT r FROM t"), HasSubstr("[[\"{00112233-4455-6677-8899-AABBCCDDEEFF}\"]]"));
}

TEST_F(Jet3, FilesBringLongTextsFromOtherPages) {
  std::string text;
  for (int i = 0; i < 700; ++i) text += "Zeile " + std::to_string(i) + "\r\n";
  jet3::File file("");
  const std::string spread = file.memo_on_pages(text, 1500),
                    own = file.memo_on_page(std::string_view(text).substr(0, 1900));
  file.add({"lang", {{"t", Type::Memo}}, {{spread}, {own}, {jet3::File::memo_inside("")}}, ""});
  const Outcome outcome = import(write(file));
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(rows("SELECT len(t) FROM lang"), HasSubstr("[[" + std::to_string(text.size()) + "],[1900],[0]]"));
  EXPECT_THAT(rows("SELECT right(t, 11) FROM lang WHERE len(t) > 1900"), HasSubstr("Zeile 699"));
}

TEST_F(Jet3, FilesKeepDeletedRowsToThemselves) {
  jet3::File file("");
  file.add({"t", all_columns, {row(1, ""), row(2, jet3::File::memo_inside("x"))}, "id"}, true);
  ASSERT_EQ(import(write(file)).code, 0);
  EXPECT_THAT(rows("SELECT id FROM t"), HasSubstr("\"rows\":[[2]]"));
}

TEST_F(Jet3, FilesOpenWithTheirPasswordOnly) {
  jet3::File file("J\xF6rg");
  file.add({"t", {{"n", Type::Long}}, {{bytes_of<std::int32_t>(3)}}, ""});
  const std::string source = write(file);
  EXPECT_THAT(import(source).err, StartsWith("error 3031: "));
  EXPECT_THAT(import(source, {{"PATIENTDB_PASSWORD", "Jorg"}}).err, StartsWith("error 3031: "));
  EXPECT_EQ(import(source, {{"PATIENTDB_PASSWORD", ""}, {"PATIENTDB_SOURCE_PASSWORD", "Jörg"}}).code, 0);
  EXPECT_THAT(rows("SELECT n FROM t"), HasSubstr("[[3]]"));
}

TEST_F(Jet3, FilesWithTornOrOverfullValuesAreRefused) {
  struct Case {
    const char* message;
    jet3::Row (*spoil)(jet3::File& file);
  };
  const Case cases[] = {
      // A number of 16 digits would be rounded.
      {"error 6: t: m: Overflow",
       [](jet3::File&) {
         jet3::Row spoilt = row(1, jet3::File::memo_inside(""));
         spoilt[4] = bytes_of<std::int64_t>(1234567890123456);
         return spoilt;
       }},
      {"error 3343: t: t: the value cannot be read",
       [](jet3::File&) { return row(1, jet3::File::memo_inside("torn").substr(0, 14)); }},
      {"error 3343: t: t: the value cannot be read",
       [](jet3::File& file) { return row(1, file.memo_on_pages(std::string(3000, 'x'), 1500).replace(0, 1, "\xFF")); }},
      {"error 3343: t: t: the value cannot be read",
       [](jet3::File& file) { return row(1, file.memo_on_page("x").replace(5, 1, "\xFF")); }},
      // A date beyond the year 9999.
      {"error 3",
       [](jet3::File&) {
         jet3::Row spoilt = row(1, jet3::File::memo_inside(""));
         spoilt[7] = bytes_of(1e9);
         return spoilt;
       }},
  };
  for (const Case& row : cases) {
    jet3::File file("");
    const jet3::Row spoilt = row.spoil(file);
    file.add({"t", all_columns, {spoilt}, ""});
    EXPECT_THAT(import(write(file)).err, StartsWith(row.message));
    EXPECT_EQ(folder_.snapshot().size(), 1U);
  }
}

TEST_F(Jet3, FilesLendTheirPreferencesToANewDatabase) {
  jet3::File lookup("brimol");
  lookup.add({"LabDefs", {{"type", Type::Int}}, {{bytes_of<std::int16_t>(1)}, {bytes_of<std::int16_t>(2)}}, ""});
  lookup.add({"preferredinsulin", {{"desc", Type::Text, 50}, {"picture", Type::Ole}}, {{"Insulin \xE4", {}}}, ""});
  const std::string patient = folder_.file("new.das");
  ASSERT_EQ(run_patientdb({"create", patient}, no_password).code, 0);
  support::FileSystem& files = support::host_file_system();
  database::Environment environment;
  const auto merge = [&] {
    const auto engine = engine::open_engine("DAO.DBEngine.36");
    const auto open = engine->open_database(files.windows_path(patient), false, false, "");
    return db_MergePreferences(environment, *open, files.windows_path(folder_.file("old.mdb")));
  };
  write(lookup);
  EXPECT_FALSE(merge());
  EXPECT_THAT(rows("SELECT count(*) FROM labdefs"), HasSubstr("[[15]]")) << "nothing reads Jet files here";

  environment.readable_copy = jet_import::readable_copy;
  EXPECT_FALSE(merge()) << "preferredmedicals is not there";
  EXPECT_THAT(rows("SELECT type FROM labdefs"), HasSubstr("[[1],[2]]"));
  EXPECT_THAT(rows("SELECT [desc] FROM preferredinsulin"), HasSubstr("[[\"Insulin ä\"]]"));
  lookup.add({"preferredmedicals", {{"desc", Type::Text, 50}}, {{"Metformin"}}, ""});
  write(lookup);
  EXPECT_TRUE(merge());
  EXPECT_THAT(rows("SELECT [desc] FROM preferredmedicals"), HasSubstr("[[\"Metformin\"]]"));

  folder_.write("old.mdb", lookup.content().substr(0, 4096));
  EXPECT_FALSE(merge());
  EXPECT_THAT(rows("SELECT [desc] FROM preferredmedicals"), HasSubstr("[[\"Metformin\"]]"))
      << "a torn file costs nothing";
}

}  // namespace
