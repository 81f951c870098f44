// A session with the real programs leaves the password nowhere, in any spelling, and gives other users nothing to read.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "database/engine/engine.h"
#include "database/environment.h"
#include "support/encoding.h"
#include "support/file_system.h"
#include "tests/apps/process_run.h"

namespace apps_test {
namespace {

namespace fs = std::filesystem;

const std::string sought = "Xylofön7Geheim";

/// The spellings in which a password could be in a file.
std::vector<std::string> spellings(const std::string& password) {
  std::string wide, digits;
  for (const char16_t unit : support::utf16_from_utf8(password)) {
    wide += static_cast<char>(unit & 0xFFU);
    wide += static_cast<char>(unit >> 8U);
  }
  for (const char c : password) {
    constexpr std::string_view hexadecimal = "0123456789abcdef";
    digits += hexadecimal[static_cast<unsigned char>(c) >> 4U];
    digits += hexadecimal[static_cast<unsigned char>(c) & 15U];
  }
  return {password, support::cp1252_from_utf8(password), wide, digits};
}

class PasswordTraces : public ProcessTest {
 protected:
  PasswordTraces() { fs::create_directory(folder_.path() / "tmp"); }

  /// The places in the test's folder and in the output that hold the password.
  std::vector<std::string> traces(const std::string& password) const {
    auto contents = folder_.snapshot();
    contents.merge(outside_.snapshot());
    std::vector<std::string> found;
    for (const auto& [name, content] : contents) {
      for (const std::string& spelling : spellings(password)) {
        if (content.find(spelling) != std::string::npos || name.find(spelling) != std::string::npos)
          found.push_back(name);
      }
    }
    return found;
  }
  /// The files that other users may read.
  std::vector<std::string> open_to_others() const {
    std::vector<std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder_.path())) {
      const auto rights = entry.status().permissions() & (fs::perms::group_all | fs::perms::others_all);
      const bool ours = entry.path() == folder_.path() / "tmp";
      if (rights != fs::perms::none && !ours) found.push_back(entry.path());
    }
    return found;
  }
  /// Makes an old patient database with the password.
  void make_old_database(const std::string& file) const {
    const auto engine = engine::open_engine("DAO.DBEngine.36");
    const auto database = engine->create_database(support::host_file_system().windows_path(file),
                                                  engine::locale_general, engine::version_30);
    database->execute("CREATE TABLE temporary (n LONG)");
    database->new_password("", sought);
  }
};

TEST_F(PasswordTraces, ASessionOfTheConsoleToolLeavesNone) {
  const TemporaryFolder keys;
  keys.write("environment", sought);
  keys.write("wrong", sought + "x");
  make_old_database(folder_.file("old.das"));
  const Outcome outcome = shell("cd '" + folder_.path().string() + "'; KEYS='" + keys.path().string() +
                                "'; LAYOUTS='" TEST_DATA_DIR R"sh(/layouts'
    umask 0; export TMPDIR="$PWD/tmp" PATIENTDB_PASSWORD="$(cat $KEYS/environment)"
    tool() { $BIN/patientdb "$@" --journal journal.log; }
    tool create P.das --name Quastenflosser --firstname J
    tool create P.das
    tool info P.das; tool schema P.das --json
    tool sql P.das 'SELECT nothing FROM patdat'; tool sql P.das 'DROP'
    tool index index.mdb create; tool index index.mdb refresh 0 P.das
    tool sql old.das --script $LAYOUTS/4.0.sql
    tool upgrade old.das --yes && echo upgraded
    unset PATIENTDB_PASSWORD
    tool info P.das --password-file $KEYS/environment && echo opened
    tool info P.das --password-file $KEYS/wrong
    tool index index.mdb refresh 1 P.das --password-file $KEYS/wrong)sh");
  EXPECT_THAT(outcome.out, testing::AllOf(HasSubstr("\nupgraded\n"), HasSubstr("\nopened\n")));
  EXPECT_THAT(outcome.err, HasSubstr("error 3031"));
  EXPECT_THAT(content_of(folder_.file("journal.log")), HasSubstr(" sql!"));
  EXPECT_THAT(content_of(folder_.file("old.4.0.das")), Not(IsEmpty()));
  EXPECT_THAT(traces(sought), IsEmpty());
  EXPECT_THAT(open_to_others(), IsEmpty());
  EXPECT_TRUE(fs::is_empty(folder_.path() / "tmp"));
}

TEST_F(PasswordTraces, ARunOfTheBatchProgramLeavesNoneOfTheDefaultOne) {
  folder_.write("home/vantrix.ini", "[setup]\r\nRegPath=vantrixPRO\r\n");
  folder_.write("home/setup.ini", "[setup]\r\njournal=journal.log\r\n");
  for (const std::string name : {"home", "home/vantrix.ini", "home/setup.ini"}) {
    fs::permissions(folder_.file(name), fs::perms::group_all | fs::perms::others_all, fs::perm_options::remove);
  }
  const std::string answers = outside_.write("answers.ini", "[PatDat]\ntxtFirstName=J\ntxtName=M\n");
  for (const std::string command_line : {"vantrix", "vantrixPRO"}) {
    const Outcome outcome = shell("umask 0; cd '" + folder_.path().string() + "'; export TMPDIR=\"$PWD/tmp\"; " +
                                  "$BIN/firststeps_batch --program-dir home --json " + command_line +
                                  (command_line == "vantrix" ? " --answers '" + answers + "'" : ""));
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    EXPECT_THAT(traces(std::string(database::default_password)), IsEmpty());
  }
  EXPECT_THAT(content_of(folder_.file("home/patients/M_J.das")), Not(IsEmpty()));
  EXPECT_THAT(content_of(folder_.file("home/patients/index.mdb")), Not(IsEmpty()));
  EXPECT_THAT(open_to_others(), IsEmpty());
}

TEST_F(PasswordTraces, ARunningProcessShowsNoneAndHasNoFileOpenButTheDatabase) {
  const std::string file = folder_.file("P.das");
  ASSERT_EQ(run_patientdb({"create", file}, {{"PATIENTDB_PASSWORD", sought}}).code, 0);
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  // The output is more than the pipe holds, so the process waits in the middle of its work.
  fcntl(ends[1], F_SETPIPE_SZ, 4096);
  const pid_t child = fork();
  if (child == 0) {
    dup2(ends[1], STDOUT_FILENO);
    // Handles that this process inherited are not the program's.
    close_range(STDERR_FILENO + 1, ~0U, 0);
    setenv("PATIENTDB_PASSWORD", sought.c_str(), 1);
    execl(BUILD_DIR "/bin/patientdb", "patientdb", "schema", file.c_str(), "--json", nullptr);
    _exit(127);
  }
  close(ends[1]);
  char byte = 0;
  EXPECT_EQ(read(ends[0], &byte, 1), 1);
  const std::string process = "/proc/" + std::to_string(child);
  const std::string command_line = content_of(process + "/cmdline");
  EXPECT_THAT(command_line, testing::AllOf(HasSubstr("schema"), Not(HasSubstr(sought))));
  std::vector<std::string> open_files;
  for (const auto& entry : fs::directory_iterator(process + "/fd")) {
    const fs::path target = fs::read_symlink(entry.path());
    if (fs::is_regular_file(entry.path()) && std::stoi(entry.path().filename()) > STDERR_FILENO)
      open_files.push_back(target);
  }
  EXPECT_THAT(open_files, testing::Each(file));
  EXPECT_THAT(content_of(process + "/task/" + std::to_string(child) + "/children"), IsEmpty());
  std::string rest(1 << 16, '\0');
  while (read(ends[0], rest.data(), rest.size()) > 0) {
  }
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace apps_test
