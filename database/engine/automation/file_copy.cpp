#include "database/engine/automation/file_copy.h"

#include <windows.h>

#include <vector>

#include "support/error.h"
#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace engine::automation {
namespace {

using support::FileHandle;

constexpr DWORD chunk_size = 1 << 20;

support::RuntimeError error_of(DWORD failure) {
  switch (failure) {
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return {3045, "Could not use the database file; it is already in use."};
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return {3204, "Database already exists."};
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
      return {3044, "The folder of the database file is not a valid path."};
    case ERROR_ACCESS_DENIED:
      return {3051, "The database file cannot be opened: you need permission."};
    default:
      return {3043, "Disk or network error."};
  }
}

void check(bool done) {
  if (!done) throw error_of(GetLastError());
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
