// Host paths (UTF-8) as the standard library takes them, and back.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace support {

inline std::filesystem::path std_path(std::string_view host_path) {
  return {std::u8string(host_path.begin(), host_path.end())};
}

inline std::string host_path_of(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace support
