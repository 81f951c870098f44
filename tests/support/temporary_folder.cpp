#include "tests/support/temporary_folder.h"

#include <chrono>
#include <fstream>
#include <iterator>
#include <system_error>

#include "support/file_system.h"
#include "tests/support/file_content.h"

namespace support::testing {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  static int count = 0;
  const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
  folder_ = fs::temp_directory_path() / ("firststeps-" + std::to_string(stamp) + "-" + std::to_string(++count));
  fs::create_directories(folder_);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

fs::path TemporaryFolder::path_of(std::string_view name) const {
  return folder_ / fs::path(std::u8string(name.begin(), name.end()));
}

std::string TemporaryFolder::host(std::string_view name) const {
  const std::u8string text = path_of(name).u8string();
  return {text.begin(), text.end()};
}

std::string TemporaryFolder::windows(std::string_view name) const {
  return host_file_system().windows_path(name.empty() ? folder_.string() : host(name));
}

std::string TemporaryFolder::write(std::string_view name, std::string_view content) const {
  std::ofstream(path_of(name), std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
  return windows(name);
}

std::optional<std::string> TemporaryFolder::read(std::string_view name) const { return content_of(path_of(name)); }

void TemporaryFolder::set_read_only(std::string_view name, bool read_only) const {
  const auto rights = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  fs::permissions(path_of(name), rights, read_only ? fs::perm_options::remove : fs::perm_options::add);
}

std::size_t TemporaryFolder::file_count() const {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
}

}  // namespace support::testing
