// A disk that is full, played by the limit that the system puts on the size of files.
#include <sys/resource.h>

#include <csignal>

#include "tests/database/database_test.h"

namespace database::testing {
namespace {

/// No file may grow beyond this many bytes while it lives.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limited{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limited);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int);
};

using FullDisk = DatabaseTest;

TEST_F(FullDisk, LeavesNoFileWhereverItStopsTheCreation) {
  int refused = 0;
  bool created = false;
  for (rlim_t limit = 1; !created; limit += 96 << 10) {
    support::RuntimeError failure{0, "none"};
    {
      const FileSizeLimit full{limit};
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
