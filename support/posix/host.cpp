#include "support/host.h"

#include <cstdlib>

#include "support/file_ini_files.h"
#include "support/hive_registry.h"
#include "support/windows_path.h"

namespace support {

namespace {

/// The path of the user's own hive. Its folder is created, so that the hive can be written.
std::string user_hive_path() {
  const char* const configuration = std::getenv("XDG_CONFIG_HOME");
  const char* const home = std::getenv("HOME");
  std::string folder = std::string(home != nullptr ? home : "") + "/.config";
  if (configuration != nullptr && *configuration == '/') folder = configuration;
  folder += "/firststeps";
  FileSystem& files = host_file_system();
  files.create_folder(files.windows_path(folder));
  return folder + "/registry.reg";
}

}  // namespace

std::unique_ptr<Registry> host_registry(std::string_view hive_path) {
  return open_hive(hive_path.empty() ? user_hive_path() : std::string(hive_path));
}

IniFiles& host_ini_files() {
  static FileIniFiles files;
  return files;
}

UserLocale host_locale() { return {}; }

std::string host_local_data() { return {}; }

}  // namespace support
