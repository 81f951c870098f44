#include "apps/firststeps_batch/platform.h"

#include <filesystem>

#include "apps/firststeps_batch/posix/trash.h"
#include "support/file_system.h"

namespace firststeps_batch {

std::string default_hive(std::string_view program_folder) {
  return (std::filesystem::path(program_folder) / "registry.reg").string();
}

std::vector<std::string> recycle(std::string_view folder, std::string_view pattern) {
  const support::FileSystem& files = support::host_file_system();
  std::vector<std::string> moved;
  for (const std::string& name : files.files(folder, pattern)) {
    if (move_to_trash(files.host_path(std::string(folder) + "\\" + name))) moved.push_back(name);
  }
  return moved;
}

}  // namespace firststeps_batch
