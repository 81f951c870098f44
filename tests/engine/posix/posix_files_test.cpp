// What a test can do only on POSIX: look at a file's rights, fill the disk, die in the middle of the work.
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>

#include "database/engine/embedded/file_hold.h"
#include "support/abandoned_files.h"
#include "tests/engine/test_database.h"
#include "tests/support/posix/file_size_limit.h"

namespace engine::test {
namespace {

/// The result of the call, made in a process of its own.
template <typename Call>
int in_another_process(const Call& call) {
  const pid_t child = fork();
  if (child == 0) _exit(call());
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return WEXITSTATUS(status);
}

class PosixFiles : public EngineTest {
 protected:
  void add_rows(Database& database, int count) {
    const auto rows = database.open_recordset("things");
    for (int i = 0; i < count; ++i) {
      rows->add_new();
      rows->set_value("name", std::string("Zeile"));
      rows->set_value("note", std::string(200, 'x'));
      rows->update();
    }
  }

  /// A process deletes the rows, adds more than fit into the cache, so that the file itself changes, and dies.
  void die_in_a_transaction(const std::string& password) {
    ASSERT_EQ(in_another_process([&]() -> int {
                const auto database = open("test.das", password);
                database->begin_transaction();
                database->execute("DELETE FROM things");
                add_rows(*database, 20000);
                _exit(7);
              }),
              7);
    ASSERT_TRUE(exists("test.das-journal"));
  }
};

TEST_F(PosixFiles, LeavesNoHalfDatabase) {
  const support::testing::FileSizeLimit limit{16 << 10};
  const auto database = create("test.das", "geheim");
  EXPECT_EQ(error_number([&] { add_things(*database); }), 3043);
  EXPECT_FALSE(exists());
}

TEST_F(PosixFiles, RollsTheTransactionBackAndTakesNothingMoreIntoIt) {
  const auto database = create("test.das", "geheim");
  add_things(*database);
  add_rows(*database, 1);
  {
    const support::testing::FileSizeLimit limit{64 << 10};
    database->begin_transaction();
    EXPECT_EQ(error_number([&] { add_rows(*database, 20000); }), 3043);
    EXPECT_EQ(error_number([&] { add_rows(*database, 1); }), 3043);
    EXPECT_EQ(error_number([&] { database->commit_transaction(); }), 3043);
  }
  EXPECT_THAT(column(*database, "things", "name"), ElementsAre("Zeile"));
  add_rows(*database, 1);
  EXPECT_THAT(column(*open("test.das", "geheim"), "things", "name"), ElementsAre("Zeile", "Zeile"));
}

TEST_F(PosixFiles, AProcessThatDiesLeavesWhatWasCommitted) {
  {
    const auto database = create("test.das", "geheim");
    add_things(*database);
    add_rows(*database, 1);
  }
  for (const bool read_only : {false, true}) {
    die_in_a_transaction("geheim");
    const std::string half_done = content(), journal = content("test.das-journal");
    EXPECT_EQ((half_done + journal).find("Zeile"), std::string::npos) << "what is half done is encrypted, too";
    EXPECT_EQ(error_number([&] { open("test.das", "falsch", read_only); }), 3031);
    EXPECT_TRUE(half_done.starts_with(content()) && content("test.das-journal") == journal)
        << "a wrong key gives back no page, and the journal stays for the right one";
    EXPECT_THAT(column(*open("test.das", "geheim", read_only), "things", "name"), ElementsAre("Zeile")) << read_only;
  }
}

TEST_F(PosixFiles, TornAtTheirEndAreWholeAgainWithTheirJournal) {
  for (const std::string password : {"", "geheim"}) {
    {
      const auto database = create("test.das", password);
      add_things(*database);
      add_rows(*database, 1);
    }
    die_in_a_transaction(password);
    write("cut.das", content().substr(0, content().size() - 1000));
    std::filesystem::copy_file(host_path("test.das-journal"), host_path("cut.das-journal"));
    EXPECT_THAT(column(*open("cut.das", password), "things", "name"), ElementsAre("Zeile")) << password;
    write("cut.das", content().substr(0, content().size() - 1000));
    if (!password.empty()) {
      EXPECT_EQ(error_number([&] { open("cut.das", password); }), 3343) << "without a journal";
    }
    for (const auto& file : std::filesystem::directory_iterator(host_path(""))) std::filesystem::remove(file);
  }
}

TEST_F(PosixFiles, KeepTheirPasswordWhileAnybodyElseHasThemOpen) {
  add_things(*create("test.das", "alt"));
  std::filesystem::create_directory(host_path("there"));
  std::filesystem::create_hard_link(host_path(), host_path("hard.das"));
  std::filesystem::create_symlink(host_path(), host_path("there/soft.das"));
  const auto change = [&] { return error_number([&] { open("test.das", "alt")->new_password("alt", "neu"); }); };
  for (const char* const name : {"test.das", "hard.das", "there/soft.das"}) {
    const auto other = open(name, "alt");
    EXPECT_EQ(change(), 3045) << name;
    EXPECT_EQ(in_another_process([&] { return change() == 3045 ? 7 : 0; }), 7) << name;
  }
  EXPECT_EQ(change(), 3251) << "the other name would keep the old password";
  std::filesystem::remove(host_path("hard.das"));
  {
    embedded::FileHold alone{host_path().string(), std::chrono::milliseconds(0)};
    ASSERT_TRUE(alone.hold_alone());
    EXPECT_EQ(in_another_process([&] { return error_number([&] { open("test.das", "alt"); }) == 3045 ? 7 : 0; }), 7);
  }
  std::filesystem::permissions(host_path(), std::filesystem::perms(0640));
  EXPECT_EQ(error_number([&] { open("there/soft.das", "alt")->new_password("alt", "neu"); }), 0);
  EXPECT_TRUE(std::filesystem::is_symlink(host_path("there/soft.das")));
  EXPECT_EQ(std::filesystem::status(host_path()).permissions(), std::filesystem::perms(0640));
  EXPECT_EQ(error_number([&] { open("test.das", "neu"); }), 0);
}

TEST_F(PosixFiles, AreNotTakenForAbandonedWhileTheirBuilderLives) {
  const std::string name = "x.das.creating-0a1b2c3d";
  const auto builder = create(name);
  const auto clean_up_after_an_hour = [&] {
    const auto before = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    for (const auto& file : std::filesystem::directory_iterator(host_path(""))) {
      std::filesystem::last_write_time(file, before);
    }
    return in_another_process([&] {
      support::remove_abandoned_files(host_path("x.das").string(), support::new_database_mark);
      return 0;
    });
  };
  add_things(*builder);
  clean_up_after_an_hour();
  EXPECT_TRUE(exists(name)) << "between two transactions";
  builder->begin_transaction();
  add_rows(*builder, 1);
  builder->execute("DELETE FROM things");
  ASSERT_TRUE(exists(name + "-journal"));
  clean_up_after_an_hour();
  EXPECT_TRUE(exists(name + "-journal")) << "in the middle of one";
  builder->commit_transaction();
  builder->close();
  clean_up_after_an_hour();
  EXPECT_FALSE(exists(name));
}

TEST_F(PosixFiles, RightsOfANewFileAreTheUsersAlone) {
  add_things(*create());
  const auto rights = std::filesystem::status(host_path()).permissions();
  EXPECT_EQ(rights, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

TEST_F(PosixFiles, ANewFileIsRefusedInAFolderOfAnotherUser) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give a folder away";
  std::filesystem::create_directory(host_path("theirs"));
  constexpr uid_t other_user = 12345;
  ASSERT_EQ(chown(host_path("theirs").c_str(), other_user, 0), 0);
  EXPECT_EQ(error_number([&] { add_things(*create("theirs/test.das")); }), 3051);
  EXPECT_TRUE(std::filesystem::is_empty(host_path("theirs")));
}

TEST_F(PosixFiles, ANewFileIsRefusedInAFolderThatCannotBeWritten) {
  // Not even the system's administrator can create a file there.
  const auto database = engine().create_database("\\sys\\kernel\\test.das", locale_general, version_30);
  try {
    add_things(*database);
    ADD_FAILURE() << "it was created";
  } catch (const support::RuntimeError& error) {
    EXPECT_EQ(error.number(), 3051);
    EXPECT_THAT(error.what(), testing::HasSubstr("its folder cannot be written to"));
  }
}

TEST_F(PosixFiles, OpeningAFileKeepsTheLocksOfItsOtherHandles) {
  const auto first = create("test.das", "geheim");
  add_things(*first);
  first->begin_transaction();
  open("test.das", "geheim");
  const int error = in_another_process([&] {
    const auto other = open("test.das", "geheim");
    return error_number([&] { other->begin_transaction(); }) == 3045 ? 7 : 0;
  });
  EXPECT_EQ(error, 7) << "another process must not write beside the open transaction";
}

}  // namespace
}  // namespace engine::test
