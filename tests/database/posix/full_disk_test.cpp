// A full disk, played by the system's limit on the size of files.

#include "tests/database/database_test.h"
#include "tests/support/posix/file_size_limit.h"

namespace database::testing {
namespace {

using FullDisk = DatabaseTest;

TEST_F(FullDisk, LeavesNoFileWhereverItStopsTheCreation) {
  int refused = 0;
  int error = -1;
  for (rlim_t limit = 1; error != 0; limit += 96 << 10) {
    {
      const support::testing::FileSizeLimit full{limit};
      error = creation_error(path("new.das"), sample_patient());
    }
    if (error == 0) continue;
    ++refused;
    EXPECT_EQ(error, 3043) << limit;
    ASSERT_TRUE(files().empty()) << limit << ": " << files().front();
  }
  EXPECT_GT(refused, 2);
  EXPECT_EQ(files(), std::vector<std::string>{"new.das"});
}

}  // namespace
}  // namespace database::testing
