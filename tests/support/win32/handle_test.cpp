// Files that another program has open for a moment, as virus scanners and indexers do.

#include "support/win32/handle.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "support/file_system.h"
#include "support/host_file.h"
#include "support/win32/wide.h"
#include "tests/support/temporary_folder.h"

namespace support {
namespace {

class HeldForAMoment {
 public:
  explicit HeldForAMoment(const std::string& path)
      : file_(CreateFileW(wide_path(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)), end_([this] {
          std::this_thread::sleep_for(std::chrono::milliseconds(200));
          file_.close();
        }) {
    EXPECT_TRUE(static_cast<bool>(file_));
  }
  ~HeldForAMoment() { end_.join(); }
  HeldForAMoment(const HeldForAMoment&) = delete;
  HeldForAMoment& operator=(const HeldForAMoment&) = delete;

 private:
  FileHandle file_;
  std::thread end_;
};

TEST(Sharing, FilesThatSomebodyHoldsForAMomentAreWaitedFor) {
  const testing::TemporaryFolder folder;
  FileSystem& files = host_file_system();
  folder.write("a.txt", "old");
  {
    const HeldForAMoment held(folder.host("a.txt"));
    replace_host_file(folder.host("a.txt"), "new");
  }
  EXPECT_EQ(folder.read("a.txt"), "new");
  {
    const HeldForAMoment held(folder.host("a.txt"));
    EXPECT_TRUE(files.rename_without_replacing(folder.windows("a.txt"), folder.windows("b.txt")));
  }
  {
    const HeldForAMoment held(folder.host("b.txt"));
    EXPECT_TRUE(files.remove(folder.windows("b.txt")));
  }
  EXPECT_EQ(folder.file_count(), 0U);
}

TEST(Sharing, IsWaitedForTenTimesWithinASecondAndAHalfAndForNothingElse) {
  struct Case {
    DWORD reason;
    int calls;
  };
  for (const Case& row : {Case{ERROR_ACCESS_DENIED, 10}, Case{ERROR_SHARING_VIOLATION, 10},
                          Case{ERROR_LOCK_VIOLATION, 10}, Case{ERROR_FILE_NOT_FOUND, 1}, Case{ERROR_DISK_FULL, 1}}) {
    int calls = 0;
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(with_patience([&] {
      ++calls;
      SetLastError(row.reason);
      return false;
    }));
    EXPECT_EQ(GetLastError(), row.reason);
    EXPECT_EQ(calls, row.calls) << row.reason;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(1700)) << row.reason;
  }
}

}  // namespace
}  // namespace support
