#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <memory>

#include "database/engine/embedded/embedded_engine.h"
#include "support/file_system.h"
#include "tests/apps/program_run.h"

namespace {

using apps_test::content_of;
using apps_test::Environment;
using apps_test::Outcome;
using apps_test::run_patientdb;
using testing::HasSubstr;
using testing::StartsWith;

const Environment unprotected{{"PATIENTDB_PASSWORD", ""}};

std::string jet_file(const std::string& name) { return std::string(JET_FILES_DIR "/") + name; }

std::string output_of(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::string output;
  std::array<char, 4096> buffer{};
  while (const std::size_t size = fread(buffer.data(), 1, buffer.size(), pipe.get()))
    output.append(buffer.data(), size);
  return output;
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

/// A value as mdb-export writes it.
std::string exported(const engine::Value& value) {
  if (engine::is_null(value)) return "";
  if (const bool* yes = std::get_if<bool>(&value)) return *yes ? "1" : "0";
  if (const auto* date = std::get_if<engine::Date>(&value)) return engine::iso_text(*date);
  return engine::to_text(value);
}

std::string exported(engine::Recordset& rows) {
  std::string text;
  for (; !rows.eof(); rows.move_next()) {
    for (std::int32_t i = 0; i < rows.field_count(); ++i) text += (i > 0 ? "|" : "") + exported(rows.value(i));
    text += '\n';
  }
  return text;
}

class JetFiles : public testing::Test {
 protected:
  /// Imports the file and returns the path of the new database.
  std::string import(const std::string& source) const {
    const Outcome outcome = run_patientdb({"import", source, folder_.file("new.das")}, unprotected);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    return folder_.file("new.das");
  }

  apps_test::TemporaryFolder folder_;
};

class JetFilesRows : public JetFiles, public testing::WithParamInterface<const char*> {};

TEST_P(JetFilesRows, AreThoseThatMdbExportShows) {
  const std::string source = jet_file(GetParam());
  const auto engine = engine::embedded::create_embedded_engine();
  const auto database =
      engine->open_database(support::host_file_system().windows_path(import(source)), false, true, "");
  const auto tables = lines_of(output_of("mdb-tables -1 '" + source + "'"));
  ASSERT_EQ(database->table_defs().count(), static_cast<std::int32_t>(tables.size()));
  for (const std::string& table : tables) {
    const std::string expected = output_of("mdb-export -H -Q -d '|' -D '%Y-%m-%d %H:%M:%S' -T '%Y-%m-%d %H:%M:%S' '" +
                                           source + "' '" + table + "'");
    EXPECT_NE(expected, "") << table;
    EXPECT_EQ(exported(*database->open_recordset(table)), expected) << table;
  }
}

INSTANTIATE_TEST_SUITE_P(Real, JetFilesRows, testing::Values("fruit.mdb", "users.mdb", "states.mdb"));

TEST_F(JetFiles, BringTheirFieldsAndIndexesAlong) {
  const std::string users = import(jet_file("users.mdb"));
  const std::string layout = run_patientdb({"schema", users}, unprotected).out;
  EXPECT_EQ(layout,
            "Users\n\n"
            "Field         Type     Size  Attributes  Default  Required  Empty  Ordinal\n"
            "------------  -------  ----  ----------  -------  --------  -----  -------\n"
            "UserId        Long        4          17           no        no           0\n"
            "UserName      Text      255           2           yes       no           1\n"
            "UserSex       Text      255           2           no        yes          2\n"
            "UserBirthday  Date        8           1           no        no           3\n"
            "UserMarried   Boolean     1           1  0        no        no           4\n"
            "Index PrimaryKey (UserId) primary unique\n\n");
  EXPECT_THAT(run_patientdb({"sql", users, "INSERT INTO Users (UserName) VALUES ('new')",
                             "SELECT UserId, UserMarried FROM Users WHERE UserName = 'new'", "--json"},
                            unprotected)
                  .out,
              HasSubstr("[[4,0]]"));
}

TEST_F(JetFiles, FindTheFieldsOfAnIndexWhereColumnsWereDeleted) {
  EXPECT_THAT(run_patientdb({"schema", import(jet_file("states.mdb"))}, unprotected).out,
              HasSubstr("Index PrimaryKey (State) primary unique\n"));
}

/// Sets the password of a file that has none. The file stores it as the difference of the two masks.
std::string with_password(std::string file, std::string_view password) {
  for (std::size_t i = 0; i < password.size(); ++i) {
    char& stored = file[0x42 + 2 * i];
    stored = static_cast<char>(stored ^ password[i]);
  }
  return file;
}

TEST_F(JetFiles, OpenWithTheirPasswordOnly) {
  const std::string locked = folder_.write("locked.mdb", with_password(content_of(jet_file("users.mdb")), "Insulin"));
  const std::string word = folder_.write("word.txt", "Insulin\n"), target = folder_.file("new.das");
  const auto before = folder_.snapshot();
  for (const char* wrong : {"", "insulin", "Insulin ", "brimol"}) {
    const Outcome refused = run_patientdb({"import", locked, target}, {{"PATIENTDB_SOURCE_PASSWORD", wrong}});
    EXPECT_EQ(refused.code, 1);
    EXPECT_THAT(refused.err, StartsWith("error 3031: "));
    EXPECT_TRUE(folder_.snapshot() == before);
  }
  const std::string other = folder_.file("other.das");
  EXPECT_EQ(run_patientdb({"import", locked, target, "--source-password-file", word}).code, 0);
  EXPECT_EQ(run_patientdb({"import", locked, other}, {{"PATIENTDB_PASSWORD", "Insulin"}}).code, 0);
  EXPECT_EQ(run_patientdb({"sql", target, "SELECT * FROM Users"}).code, 0) << "the default password is the target's";
  EXPECT_EQ(run_patientdb({"sql", other, "SELECT * FROM Users"}, {{"PATIENTDB_PASSWORD", "Insulin"}}).code, 0);
}

TEST_F(JetFiles, LeaveNothingBehindWhereTheyCannotBeRead) {
  const std::string whole = content_of(jet_file("fruit.mdb"));
  std::string fewer = whole;
  // Changes the number of rows in the definition of the first table with 37 rows.
  const std::string definition("\x02\x01", 2), rows("\x25\0\0\0", 4);
  for (std::size_t page = 0; page < fewer.size(); page += 4096) {
    if (fewer.compare(page, 2, definition) == 0 && fewer.compare(page + 16, 4, rows) == 0) fewer[page + 16] = '\x26';
  }
  ASSERT_TRUE(fewer != whole);
  const std::pair<std::string, std::string> cases[] = {
      {folder_.file("missing.mdb"), "error 3024: "},
      {folder_.write("text.mdb", "no database"), "error 3343: "},
      {folder_.write("header.mdb", whole.substr(0, 4096)), "error 3343: "},
      {folder_.write("cut.mdb", whole.substr(0, whole.size() / 2 + 1)), "error 3343: "},
      {folder_.write("quarter.mdb", whole.substr(0, whole.size() / 4)), "error 3343: "},
      {folder_.write("fewer.mdb", fewer), "error 3343: Fruit: the file announces 38 rows, 37 could be read"},
  };
  const auto before = folder_.snapshot();
  for (const auto& [file, message] : cases) {
    testing::internal::CaptureStderr();
    const Outcome outcome = run_patientdb({"import", file, folder_.file("new.das")}, unprotected);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "what libmdb says to itself";
    EXPECT_EQ(outcome.code, 1) << file;
    EXPECT_THAT(outcome.err, StartsWith(message)) << file;
    EXPECT_TRUE(folder_.snapshot() == before) << file;
  }
}

}  // namespace
