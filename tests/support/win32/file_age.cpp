#include "tests/support/file_age.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace support::testing {

void set_age(const std::string& host_path, std::chrono::minutes age) {
  const FileHandle opened(CreateFileW(wide_path(host_path).c_str(), FILE_WRITE_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  ULARGE_INTEGER moment{{now.dwLowDateTime, now.dwHighDateTime}};
  moment.QuadPart -= static_cast<ULONGLONG>(age.count()) * 60 * 10'000'000;
  const FILETIME changed{moment.LowPart, moment.HighPart};
  ASSERT_TRUE(opened && SetFileTime(opened.get(), nullptr, nullptr, &changed) != 0) << host_path;
}

}  // namespace support::testing
