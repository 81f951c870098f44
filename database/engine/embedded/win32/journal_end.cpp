#include "database/engine/embedded/journal_end.h"

#include <windows.h>

#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace engine::embedded {

void empty_file_for_good(const char* host_path) noexcept {
  const support::FileHandle file(CreateFileW(support::wide_path(host_path).c_str(), GENERIC_WRITE,
                                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                             OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (file && SetEndOfFile(file.get()) != 0) FlushFileBuffers(file.get());
}

}  // namespace engine::embedded
