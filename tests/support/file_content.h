// The bytes of a file, read without the code under test.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <system_error>

namespace support::testing {

/// Nothing if there is no such file, or it cannot be opened.
inline std::optional<std::string> content_of(const std::filesystem::path& path) {
  std::error_code failed;
  const std::uintmax_t size = std::filesystem::file_size(path, failed);
  std::ifstream file(path, std::ios::binary);
  if (failed || !file) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(size), '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

}  // namespace support::testing
