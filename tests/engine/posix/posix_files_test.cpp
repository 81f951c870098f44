// What only POSIX lets a test do: look at a file's rights, fill the disk, die in the middle.
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/engine/test_database.h"
#include "tests/support/posix/file_size_limit.h"

namespace engine::test {
namespace {

using testing::ElementsAre;

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
  EXPECT_THAT(column(*open("test.das", "geheim"), "things", "id"), ElementsAre("1", "2"));
}

TEST_F(PosixFiles, AProcessThatDiesLeavesWhatWasCommitted) {
  {
    const auto database = create("test.das", "geheim");
    add_things(*database);
    add_rows(*database, 1);
  }
  for (const bool read_only : {false, true}) {
    const pid_t child = fork();
    if (child == 0) {
      const auto database = open("test.das", "geheim");
      database->begin_transaction();
      database->execute("DELETE FROM things");
      // More than fits into memory: the file itself has changed when the process dies.
      add_rows(*database, 20000);
      _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    ASSERT_TRUE(exists("test.das-journal"));
    const std::string half_done = content(), journal = content("test.das-journal");
    EXPECT_EQ((half_done + journal).find("Zeile"), std::string::npos) << "what is half done is encrypted, too";
    EXPECT_EQ(error_number([&] { open("test.das", "falsch", read_only); }), 3031);
    EXPECT_TRUE(half_done.starts_with(content()) && content("test.das-journal") == journal)
        << "a wrong key gives back no page, and the journal stays for the right one";
    EXPECT_THAT(column(*open("test.das", "geheim", read_only), "things", "name"), ElementsAre("Zeile")) << read_only;
  }
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
  // Even the system's administrator can create nothing there.
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
  const pid_t child = fork();
  if (child == 0) {
    const auto other = open("test.das", "geheim");
    _exit(error_number([&] { other->begin_transaction(); }) == 3045 ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0) << "another process must not write beside the open transaction";
}

}  // namespace
}  // namespace engine::test
