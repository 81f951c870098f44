// Names that differ only in case: a disk of this machine may hold several of them.
#include <gtest/gtest.h>

#include "support/file_system.h"
#include "tests/support/temporary_folder.h"

namespace support {
namespace {

using testing::TemporaryFolder;

/// The size of a file tells which of them was found.
TEST(FileNames, ThatDifferInCaseAreTheExactOneElseTheFirstInOrder) {
  // With few letters, with many, and with one that is not ASCII.
  for (const std::string stem : {"1-a", "a long name ", "4ö"}) {
    const TemporaryFolder folder;
    const FileSystem& files = host_file_system();
    const auto size_of = [&](const std::string& name) { return files.file_size(folder.windows(name)); };
    EXPECT_EQ(size_of(stem + "b.z"), std::nullopt);
    folder.write(stem + "b.z", "1");
    EXPECT_EQ(size_of(stem + "B.Z"), 1U) << stem;
    folder.write(stem + "b.Z", "22");
    EXPECT_EQ(size_of(stem + "B.Z"), 2U) << stem << ": upper case comes first";
    folder.write(stem + "B.z", "333");
    EXPECT_EQ(size_of(stem + "B.Z"), 3U) << stem;
    EXPECT_EQ(size_of(stem + "b.z"), 1U) << stem << ": the exact one";
    EXPECT_EQ(size_of(stem + "bb.z"), std::nullopt);
  }
}

}  // namespace
}  // namespace support
