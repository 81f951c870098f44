// Whole files by host path (UTF-8, as the system's own calls take it): bounded reading, and replacing a file in one
// step so that a crash or a full disk leaves either the old content or the new.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace support {

/// The whole content of a regular file; nothing where it cannot be read or is larger than `limit` bytes.
std::optional<std::string> read_host_file(const std::string& path, std::uint64_t limit);

/// True where something lies at the path, readable or not.
bool host_file_exists(const std::string& path);

/// Writes beside the file, syncs, and renames over it. An existing file keeps its access rights, and a link stays a
/// link to it; a new file is the user's alone. Throws RuntimeError (75), with the file as it was, also for a read-only
/// file.
void replace_host_file(const std::string& path, std::string_view content);

}  // namespace support
