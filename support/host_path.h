// Host paths (UTF-8) as the standard library takes them, and back.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace support {

inline std::filesystem::path std_path(std::string_view host_path) {
  return {std::u8string(host_path.begin(), host_path.end())};
}

/// What file systems of both kinds take for one name: bytes on POSIX, units of UTF-16 on Windows.
inline constexpr std::size_t longest_file_name = 255;

/// True where no name in the path is longer than that, and the last one leaves room for `ending` more.
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
