// Converts host paths (UTF-8) to paths of the standard library, and back.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace support {

inline std::filesystem::path std_path(std::string_view host_path) {
  return {std::u8string(host_path.begin(), host_path.end())};
}

/// The longest name of a file on both kinds of system: in bytes on POSIX, in units of UTF-16 on Windows.
inline constexpr std::size_t longest_file_name = 255;

/// True if no name in the path is longer than that, and the last one has room for `ending` more.
inline bool is_name_short_enough(const std::filesystem::path& path, std::size_t ending = 0) {
  for (const std::filesystem::path& name : path) {
    if (name.native().size() > longest_file_name) return false;
  }
  return path.filename().native().size() + ending <= longest_file_name;
}

inline std::string host_path_of(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace support
