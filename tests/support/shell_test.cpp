#include "support/shell.h"

#include <gtest/gtest.h>

#include "support/file_system.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/trash.h"

namespace support {
namespace {

constexpr RecycleDisplay silent_display{nullptr, false, false};

TEST(Recycle, MovesMatchingFilesToWhereTheyCanBeRestoredFrom) {
  const testing::TemporaryFolder folder;
  const testing::Trash trash(folder);
  ASSERT_TRUE(host_file_system().create_folder(folder.windows("user\\folder.tb")));
  for (const char* name : {"user/a.tb", "user/Ü b.TB", "user/c.mnu"}) folder.write(name, name);
  EXPECT_EQ(recycle(folder.windows("user"), "*.tb", silent_display), (std::vector<std::string>{"a.tb", "Ü b.TB"}));
  EXPECT_EQ(host_file_system().files(folder.windows("user"), "*"), std::vector<std::string>{"c.mnu"});
  EXPECT_TRUE(host_file_system().folder_exists(folder.windows("user\\folder.tb")));
  trash.expect_file("a.tb", "user/a.tb");

  EXPECT_TRUE(recycle(folder.windows("user"), "*.tb", silent_display).empty());
  EXPECT_TRUE(recycle(folder.windows("none"), "*.tb", silent_display).empty());
}

TEST(Recycle, KeepsBothFilesOfOneName) {
  const testing::TemporaryFolder folder;
  const testing::Trash trash(folder);
  folder.write("a.tb", "first");
  EXPECT_EQ(recycle(folder.windows(), "a.tb", silent_display).size(), 1U);
  folder.write("a.tb", "second");
  EXPECT_EQ(recycle(folder.windows(), "a.tb", silent_display).size(), 1U);
  trash.expect_file("a.tb", "first");
  trash.expect_file("a.tb.2", "second");
}

TEST(Shell, KnowsAFolderOfThisMachineAndNoFileThatIsMissing) {
  const testing::TemporaryFolder folder;
  EXPECT_FALSE(is_network_path(folder.windows()));
  EXPECT_FALSE(open_file(folder.windows("none.jpg")));
}

}  // namespace
}  // namespace support
