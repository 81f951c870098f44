#include "wizard/windows_path.h"

#include "support/common_code.h"

namespace wizard {

std::string with_backslash(std::string folder) {
  if (!folder.ends_with('\\')) folder += '\\';
  return folder;
}

std::string join_path(std::string_view folder, std::string_view name) {
  std::string path = std::string(folder) + "\\" + std::string(name);
  support::RemoveSlashes(path);
  return path;
}

}  // namespace wizard
