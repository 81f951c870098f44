// The bytes of a file, read without the code under test.
#pragma once

#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

namespace support::testing {

/// Nothing if the file cannot be opened. Also reads files of the kernel, which have no size.
inline std::optional<std::string> content_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return std::move(bytes).str();
}

}  // namespace support::testing
