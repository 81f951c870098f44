// A disk that is full, played by the limit that the system puts on the size of files.

#include "tests/database/database_test.h"
#include "tests/support/posix/file_size_limit.h"

namespace database::testing {
namespace {

using FullDisk = DatabaseTest;

TEST_F(FullDisk, LeavesNoFileWhereverItStopsTheCreation) {
  int refused = 0;
  bool created = false;
  for (rlim_t limit = 1; !created; limit += 96 << 10) {
    support::RuntimeError failure{0, "none"};
    {
      const support::testing::FileSizeLimit full{limit};
      created = CreatePatientDatabase(environment, path("new.das"), sample_patient(), {}, &failure) == 1;
    }
    if (created) continue;
    ++refused;
    EXPECT_EQ(failure.number(), 3043) << limit << ": " << failure.what();
    ASSERT_TRUE(files().empty()) << limit << ": " << files().front();
  }
  EXPECT_GT(refused, 2);
  EXPECT_EQ(files(), std::vector<std::string>{"new.das"});
}

}  // namespace
}  // namespace database::testing
