// What an owner does with a whole file: compacting it, copying it, returning to a copy, changing its password.
#include <algorithm>
#include <filesystem>
#include <regex>

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/embedded_engine.h"
#include "database/engine/engine.h"
#include "database/keeping/backup.h"
#include "database/keeping/check.h"
#include "database/keeping/compact.h"
#include "support/file_system.h"
#include "support/host_file.h"
#include "tests/apps/program_run.h"

namespace apps_test {
namespace {

namespace fs = std::filesystem;

const Environment unencrypted{{"PATIENTDB_PASSWORD", ""}};

class Keeping : public testing::Test {
 protected:
  /// A patient's database with 60 glucose values, of which those from 31 on are deleted, and an item of a plan.
  std::string patient(const std::string& name = "Müller_Jörg.das") {
    std::string file = folder_.file(name);
    EXPECT_EQ(run_patientdb({"create", file, "--name", "Müller", "--firstname", "Jörg"}).code, 0);
    std::string script;
    for (int i = 1; i <= 60; ++i) {
      script += "INSERT INTO glucose (vDate, value, Comment) VALUES (#1/" + std::to_string(i % 28 + 1) + "/2024#, " +
                std::to_string(i) + ".5, '" + std::string(200, 'x') + "');\n";
    }
    script += "DELETE * FROM glucose WHERE ID>30;\n";
    const Outcome filled = run_patientdb({"sql", file, "--script", outside_.write("fill.sql", script)});
    EXPECT_EQ(filled.code, 0) << filled.err;
    return file;
  }
  static std::string glucose(const std::string& file) {
    return run_patientdb({"sql", file, "--json", "SELECT * FROM glucose ORDER BY ID"}).out;
  }
  static std::unique_ptr<engine::Database> opened(engine::Engine& engine, const std::string& file) {
    return engine.open_database(support::host_file_system().windows_path(file), false, false, "MS Access;pwd=brimol");
  }
  std::vector<std::string> names() const {
    std::vector<std::string> found;
    for (const auto& [path, content] : folder_.snapshot()) {
      found.push_back(path.substr(path.find_last_of("/\\") + 1));
    }
    return found;
  }

  TemporaryFolder folder_, outside_;
};

TEST_F(Keeping, CompactsToTheSameRowsInFewerBytesAndSetsNumbersBack) {
  const std::string file = patient(), before = glucose(file);
  const std::size_t size = content_of(file).size();
  const Outcome outcome = run_patientdb({"compact", file});
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  const std::size_t compacted = content_of(file).size();
  EXPECT_LT(compacted, size);
  EXPECT_THAT(outcome.out, HasSubstr(std::to_string(size) + " bytes before, " + std::to_string(compacted) + " after"));
  EXPECT_EQ(glucose(file), before);
  EXPECT_EQ(names(), std::vector<std::string>{"Müller_Jörg.das"});
  ASSERT_EQ(run_patientdb({"sql", file, "INSERT INTO glucose (vDate) VALUES (#2/2/2024#)"}).code, 0);
  EXPECT_THAT(run_patientdb({"sql", file, "SELECT max(ID) FROM glucose"}).out, HasSubstr("31")) << "was 61 otherwise";
  EXPECT_THAT(run_patientdb({"compact", file, "--json"}).out,
              AllOf(HasSubstr("\"bytes_before\":" + std::to_string(compacted)), HasSubstr(",\"rows\":")));
}

/// Records the calls.
class SeenProgress : public database::Progress {
 public:
  void start(std::string_view, std::int32_t maximum) override { maximum_ = maximum; }
  void set_caption(std::string_view) override {}
  void set_value(std::int32_t value) override {
    EXPECT_GE(value, value_) << "it goes back";
    value_ = value;
  }
  void finish() override {
    EXPECT_EQ(value_, maximum_);
    finished_at_ = value_;
  }
  std::int32_t finished_at() const { return finished_at_; }

 private:
  std::int32_t value_ = 0, maximum_ = 0, finished_at_ = 0;
};

TEST_F(Keeping, TellsHowFarItIs) {
  const support::FileSystem& files = support::host_file_system();
  const std::string file = files.windows_path(patient()), copy = files.windows_path(folder_.file("copy.das"));
  database::Environment environment;
  SeenProgress backup, compaction, check;
  environment.progress = &backup;
  database::keeping::back_up(environment, file, database::default_password, copy, false);
  environment.progress = &compaction;
  database::keeping::compact_file(environment, file, database::default_password);
  environment.progress = &check;
  database::keeping::check_database(environment, file, database::default_password);
  EXPECT_GT(backup.finished_at(), 0);
  EXPECT_GT(compaction.finished_at(), 0);
  EXPECT_GT(check.finished_at(), 0);
}

TEST_F(Keeping, ChangesNothingWhereSomebodyHasTheFileOpen) {
  const std::string file = patient(), copy = folder_.file("copy.das");
  ASSERT_EQ(run_patientdb({"backup", file, copy}).code, 0);
  const auto engine = engine::embedded::create_embedded_engine(std::chrono::milliseconds(20));
  const auto user = opened(*engine, file);
  const std::string content = content_of(file);
  const Environment new_word{{"PATIENTDB_NEW_PASSWORD", "geheim"}};
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"compact", file},
                                                    {"password", file},
                                                    {"restore", copy, file},
                                                    {"backup", copy, file, "--overwrite"}}) {
    const Outcome outcome = run_patientdb(arguments, new_word);
    EXPECT_EQ(outcome.code, 1) << arguments.front();
    EXPECT_THAT(outcome.err, StartsWith("error 3045: ")) << arguments.front();
    EXPECT_EQ(content_of(file), content);
  }
  EXPECT_EQ(names().size(), 2U);
  EXPECT_EQ(user->open_recordset("SELECT * FROM glucose WHERE ID=1")->record_count(), 1);
}

TEST_F(Keeping, WritesNoFileAnewThatHasASecondName) {
  const std::string file = folder_.file("first.das");
  ASSERT_EQ(run_patientdb({"create", file}).code, 0);
  ASSERT_TRUE(support::link_host_file(file, folder_.file("second.das")));
  const auto before = folder_.snapshot();
  EXPECT_THAT(run_patientdb({"compact", file}).err, StartsWith("error 3251: "));
  EXPECT_THAT(run_patientdb({"password", file}, {{"PATIENTDB_NEW_PASSWORD", "geheim"}}).err,
              StartsWith("error 3251: "));
  EXPECT_EQ(folder_.snapshot(), before);
}

TEST_F(Keeping, CopiesAFileThatIsInUseAsItIsStored) {
  const std::string file = patient(), before = glucose(file);
  const auto engine = engine::embedded::create_embedded_engine(std::chrono::milliseconds(20));
  const auto user = opened(*engine, file);
  user->begin_transaction();
  user->execute("DELETE * FROM glucose");
  const Outcome outcome = run_patientdb({"backup", file, folder_.file("copy.das")});
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(outcome.out, AllOf(StartsWith(folder_.file("copy.das") + ": "), HasSubstr(" tables, ")));
  EXPECT_EQ(glucose(folder_.file("copy.das")), before) << "what is not committed is in no copy";
  user->commit_transaction();
  EXPECT_THAT(glucose(file), HasSubstr("\"rows\":[]"));
}

TEST_F(Keeping, CopiesWhatAnotherToolKeepsInASecondFile) {
  const std::string file = patient();
  engine::embedded::Connection other{file, {}};
  engine::embedded::FileSalt salt{};
  std::ranges::copy(other.beginning(salt.size()), salt.begin());
  other.use_key({"brimol", salt});
  other.first_read();
  other.run("PRAGMA journal_mode=WAL");
  other.run("DELETE FROM glucose WHERE ID>5");
  const std::string before = glucose(file);
  const Outcome outcome = run_patientdb({"backup", file, folder_.file("copy.das")});
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(before, AllOf(HasSubstr("[5,\"2024"), Not(HasSubstr("[6,\"2024"))));
  EXPECT_EQ(glucose(folder_.file("copy.das")), before);
}

TEST_F(Keeping, NamesACopyInAFolderByLayoutAndMomentAndOverwritesNothingUnasked) {
  const std::string file = patient();
  fs::create_directory(folder_.file("copies"));
  const Outcome first = run_patientdb({"backup", file, folder_.file("copies"), "--json"});
  ASSERT_EQ(first.code, 0) << first.err;
  const std::regex name(R"re("backup":"[^"]*Müller_Jörg\.4\.60\.\d{8}-\d{6}\.das")re");
  EXPECT_TRUE(std::regex_search(first.out, name)) << first.out;
  EXPECT_THAT(first.out, HasSubstr("{\"table\":\"glucose\",\"rows\":30,\"checksum\":\""));
  for (int again = 0; again < 3; ++again) EXPECT_EQ(run_patientdb({"backup", file, folder_.file("copies")}).code, 0);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_.file("copies")), {}), 4) << "also within one second";

  const std::string copy = folder_.file("copy.das");
  ASSERT_EQ(run_patientdb({"backup", file, copy}).code, 0);
  const std::string content = content_of(copy);
  const Outcome second = run_patientdb({"backup", file, copy});
  EXPECT_THAT(second.err, StartsWith("error 3204: "));
  EXPECT_EQ(content_of(copy), content);
  ASSERT_EQ(run_patientdb({"sql", file, "DELETE * FROM glucose"}).code, 0);
  ASSERT_EQ(run_patientdb({"backup", file, copy, "--overwrite"}).code, 0);
  EXPECT_THAT(glucose(copy), HasSubstr("\"rows\":[]"));
  EXPECT_THAT(run_patientdb({"backup", file, file, "--overwrite"}).err, HasSubstr("are one file"));
  EXPECT_THAT(run_patientdb({"backup", file, folder_.file("none/copy.das")}).err, StartsWith("error 3044: "));
}

TEST_F(Keeping, ComesBackToACopyAndKeepsWhatWasThere) {
  const std::string file = patient(), copy = folder_.file("copy.das"), before = glucose(file);
  ASSERT_EQ(run_patientdb({"backup", file, copy}).code, 0);
  ASSERT_EQ(run_patientdb({"sql", file, "DELETE * FROM glucose"}).code, 0);
  const std::string emptied = content_of(file);
  const Outcome outcome = run_patientdb({"restore", copy, file});
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_EQ(glucose(file), before);
  const std::regex kept_name(R"(what was there before is in (.*Müller_Jörg\.replaced-\d{8}-\d{6}\.das))");
  std::smatch kept;
  ASSERT_TRUE(std::regex_search(outcome.out, kept, kept_name)) << outcome.out;
  EXPECT_EQ(content_of(kept.str(1)), emptied);

  // Also if the present file is no database, and if there is no file.
  const std::string damaged = folder_.write("damaged.das", "no database any more"), missing = folder_.file("new.das");
  for (const std::string& target : {damaged, missing}) {
    ASSERT_EQ(run_patientdb({"restore", copy, target}).code, 0);
    EXPECT_EQ(glucose(target), before);
  }
  EXPECT_EQ(names().size(), 6U) << testing::PrintToString(names());
}

TEST_F(Keeping, RestoresNothingFromACopyThatIsDamaged) {
  const std::string file = patient(), content = content_of(file), plain = folder_.file("plain.das");
  ASSERT_EQ(run_patientdb({"create", plain}, unencrypted).code, 0);
  std::string flipped = content_of(file);
  flipped[flipped.size() / 2] = static_cast<char>(flipped[flipped.size() / 2] ^ 1);
  std::string cut = content_of(plain);
  cut.resize(cut.size() - 4096 * 3);
  struct Case {
    std::string copy;
    Environment environment;
    std::string message;
  };
  const std::string foreign = folder_.file("foreign.das");
  ASSERT_EQ(run_patientdb({"create", foreign}).code, 0);
  ASSERT_EQ(run_patientdb({"sql", foreign, "UPDATE db_info SET [Desc]='another product'"}).code, 0);
  const Case cases[] = {
      {outside_.write("flipped.das", flipped), {}, "error 3343: "},
      {outside_.write("cut.das", cut), unencrypted, "error 3343: "},
      {outside_.write("text.das", "no database, but a text of some length"), {}, "error 3343: "},
      {foreign, {}, "error 3343: "},
      {outside_.file("none.das"), {}, "error 3024: "},
      {file, {}, "error 5: "},
  };
  const auto before = folder_.snapshot();
  for (const Case& row : cases) {
    const Outcome outcome = run_patientdb({"restore", row.copy, file}, row.environment);
    EXPECT_EQ(outcome.code, 1) << row.copy;
    EXPECT_THAT(outcome.err, StartsWith(row.message)) << row.copy;
    EXPECT_EQ(folder_.snapshot(), before) << row.copy;
  }
}

TEST_F(Keeping, TakesANewPasswordFromFileThenEnvironment) {
  const std::string file = patient(), before = glucose(file);
  const std::string word_file = outside_.write("word.txt", "geheim §1\r\n");
  const Environment other{{"PATIENTDB_NEW_PASSWORD", "ein anderes"}};
  const Outcome outcome = run_patientdb({"password", file, "--new-password-file", word_file}, other);
  ASSERT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(outcome.err, HasSubstr("The wizard opens files with the default password only"));
  EXPECT_THAT(outcome.out + outcome.err, AllOf(Not(HasSubstr("geheim")), Not(HasSubstr("ein anderes"))));
  EXPECT_THAT(run_patientdb({"info", file}).err, StartsWith("error 3031: "));
  EXPECT_THAT(
      run_patientdb({"sql", file, "--json", "SELECT [Password] FROM db_info"}, {{"PATIENTDB_PASSWORD", "geheim §1"}})
          .out,
      HasSubstr("\"geheim §1 \""));
  const Outcome back =
      run_patientdb({"password", file}, {{"PATIENTDB_PASSWORD", "geheim §1"}, {"PATIENTDB_NEW_PASSWORD", "brimol"}});
  EXPECT_THAT(back.err, HasSubstr("This is the default password"));
  EXPECT_EQ(glucose(file), before);

  const std::string plain = folder_.file("plain.das");
  ASSERT_EQ(run_patientdb({"create", plain}, unencrypted).code, 0);
  ASSERT_EQ(run_patientdb({"password", plain}, other).code, 0) << "one without a password gets one";
  EXPECT_THAT(content_of(plain), Not(StartsWith("SQLite")));
  EXPECT_EQ(run_patientdb({"info", plain}, {{"PATIENTDB_PASSWORD", "ein anderes"}}).code, 0);
}

TEST_F(Keeping, KeepsThePasswordWhereTheNewOneIsNone) {
  const std::string file = patient();
  const std::string empty = outside_.write("empty.txt", "\n");
  struct Case {
    std::vector<std::string> options;
    Environment environment;
    int code;
    std::string message;
  };
  const Case cases[] = {
      {{}, {}, 2, "There is no new password"},
      {{}, {{"PATIENTDB_NEW_PASSWORD", ""}}, 2, "is empty"},
      {{}, {{"PATIENTDB_NEW_PASSWORD", "äb"}}, 2, "3 to 20 characters"},
      {{}, {{"PATIENTDB_NEW_PASSWORD", "123456789012345678901"}}, 2, "3 to 20 characters"},
      {{"--new-password-file", empty}, {}, 2, "is empty"},
      {{}, {{"PATIENTDB_NEW_PASSWORD", "geheim"}, {"PATIENTDB_PASSWORD", "falsch"}}, 1, "error 3031: "},
  };
  const auto before = folder_.snapshot();
  for (const Case& row : cases) {
    std::vector<std::string> arguments{"password", file};
    arguments.insert(arguments.end(), row.options.begin(), row.options.end());
    const Outcome outcome = run_patientdb(arguments, row.environment);
    EXPECT_EQ(outcome.code, row.code) << row.message;
    EXPECT_THAT(outcome.err, HasSubstr(row.message));
    EXPECT_EQ(folder_.snapshot(), before) << row.message;
  }
}

}  // namespace
}  // namespace apps_test
