#include "apps/firststeps_batch/platform.h"

// clang-format off: shellapi.h needs what windows.h declares
#include <shellapi.h>
#include <windows.h>
// clang-format on

#include "support/encoding.h"
#include "support/file_system.h"

namespace firststeps_batch {
namespace {

bool move_to_recycle_bin(const std::string& path) {
  std::string names = support::cp1252_from_utf8(path);
  names.append(2, '\0');
  SHFILEOPSTRUCTA operation{};
  operation.wFunc = FO_DELETE;
  operation.pFrom = names.c_str();
  operation.fFlags = FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_SILENT | FOF_NOERRORUI | FOF_FILESONLY;
  return SHFileOperationA(&operation) == 0 && operation.fAnyOperationsAborted == 0;
}

}  // namespace

std::string default_hive(std::string_view) { return {}; }

std::vector<std::string> recycle(std::string_view folder, std::string_view pattern) {
  const support::FileSystem& files = support::host_file_system();
  std::vector<std::string> moved;
  for (const std::string& name : files.files(folder, pattern)) {
    const std::string path = std::string(folder) + (folder.ends_with('\\') ? "" : "\\") + name;
    if (move_to_recycle_bin(path) && !files.file_size(path)) moved.push_back(name);
  }
  return moved;
}

}  // namespace firststeps_batch
