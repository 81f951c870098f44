#include "database/engine/embedded/platform_file.h"

#include <windows.h>

#include <fstream>

#include "database/engine/engine_error.h"
#include "support/encoding.h"
#include "support/host_file.h"
#include "support/host_path.h"
#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace engine::embedded {

void create_private_file(const std::string& host_path) {
  // The file gets the rights of its folder. The user's profile is closed to other users already.
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

void empty_file_for_good(const char* host_path) noexcept {
  const support::FileHandle file(CreateFileW(support::wide_path(host_path).c_str(), GENERIC_WRITE,
                                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                             OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (file && SetEndOfFile(file.get()) != 0) FlushFileBuffers(file.get());
}

namespace {

/// Each commit changes the first page.
std::string first_page(const std::string& path) {
  std::string page(4096, '\0');
  std::ifstream file(support::std_path(path), std::ios::binary);
  file.read(page.data(), std::ssize(page));
  page.resize(static_cast<std::size_t>(file.gcount()));
  return page;
}

}  // namespace

// A file that somebody has open is not replaced. A program that opened, changed and closed it after it was released has
// left another first page.
void replace_held_file(std::unique_ptr<Connection>& held, const std::string& source, const std::string& target) {
  const std::string known = first_page(target);
  held.reset();
  try {
    support::replace_with_host_file(source, target, [&] { return first_page(target) == known; });
  } catch (const support::RuntimeError&) {
    if (support::host_file_exists(target) && (first_page(target) != known || !support::is_host_file_unused(target))) {
      raise(error_number::file_in_use);
    }
    throw;
  }
}

}  // namespace engine::embedded
