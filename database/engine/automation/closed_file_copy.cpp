#include "database/engine/automation/closed_file_copy.h"

#include <windows.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "database/engine/engine_error.h"
#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace engine::automation {
namespace {

using support::FileHandle;

constexpr DWORD chunk_size = 1 << 20;

struct FailureRow {
  DWORD failure;
  error_number::Number number;
};

constexpr FailureRow failures[] = {
    {ERROR_SHARING_VIOLATION, error_number::file_in_use}, {ERROR_LOCK_VIOLATION, error_number::file_in_use},
    {ERROR_FILE_EXISTS, error_number::database_exists},   {ERROR_ALREADY_EXISTS, error_number::database_exists},
    {ERROR_PATH_NOT_FOUND, error_number::invalid_path},   {ERROR_INVALID_NAME, error_number::invalid_path},
    {ERROR_ACCESS_DENIED, error_number::file_not_opened},
};

/// The engine's number of the system's last error; 3043 for those that the table lacks.
void check(bool done) {
  if (done) return;
  const auto* row = std::ranges::find(failures, GetLastError(), &FailureRow::failure);
  raise(row != std::end(failures) ? row->number : error_number::disk_error);
}

void copy_content(HANDLE source, HANDLE target) {
  std::vector<char> chunk(chunk_size);
  for (;;) {
    DWORD read = 0, written = 0;
    check(ReadFile(source, chunk.data(), chunk_size, &read, nullptr) != 0);
    if (read == 0) break;
    check(WriteFile(target, chunk.data(), read, &written, nullptr) != 0 && written == read);
  }
  check(FlushFileBuffers(target) != 0);
}

}  // namespace

void copy_database_file(std::string_view source, std::string_view target) {
  // Shared for reading alone: whoever writes is refused, or has refused us.
  const FileHandle from(CreateFileW(support::wide_path(source).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  check(static_cast<bool>(from));
  const std::wstring target_path = support::wide_path(target);
  FileHandle to(
      CreateFileW(target_path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  check(static_cast<bool>(to));
  try {
    copy_content(from.get(), to.get());
  } catch (const support::RuntimeError&) {
    to.close();
    DeleteFileW(target_path.c_str());
    throw;
  }
}

}  // namespace engine::automation
