#include <windows.h>

#include "database/engine/embedded/database_file.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"
#include "support/win32/handle.h"

namespace engine::embedded {

void create_private_file(const std::string& host_path) {
  // The folder's rights are passed on: the user's profile is closed to other users already.
  const std::u16string path = support::utf16_from_utf8(host_path);
  const bool created = support::with_patience([&] {
    return static_cast<bool>(
        support::FileHandle(CreateFileW(reinterpret_cast<const wchar_t*>(path.c_str()), GENERIC_WRITE, 0, nullptr,
                                        CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr)));
  });
  if (created) return;
  const DWORD failure = GetLastError();
  if (failure == ERROR_FILE_EXISTS || failure == ERROR_ALREADY_EXISTS) raise(error_number::database_exists);
  if (failure == ERROR_PATH_NOT_FOUND || failure == ERROR_INVALID_NAME) raise(error_number::invalid_path);
  raise(error_number::file_not_opened);
}

}  // namespace engine::embedded
