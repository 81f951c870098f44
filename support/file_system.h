// Files and folders by Windows path. On POSIX, drive Z: and a leading backslash mean the root folder, other drives do
// not exist, "\" becomes "/", and names are found in any case, an exact match first. Nothing here raises anything but
// out of memory.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace support {

class FileSystem {
 public:
  virtual ~FileSystem() = default;
  /// Size in bytes; nothing if the file is missing or is a folder.
  virtual std::optional<std::uint64_t> file_size(std::string_view path) const = 0;
  virtual bool folder_exists(std::string_view path) const = 0;
  /// Creates the folder and those above it. True when it exists afterwards.
  virtual bool create_folder(std::string_view path) = 0;
  /// Files (not folders) of a folder that match a pattern of "*" and "?", names only, sorted.
  virtual std::vector<std::string> files(std::string_view folder, std::string_view pattern) const = 0;
  /// The whole content; nothing if the file cannot be read or is larger than `limit` bytes.
  virtual std::optional<std::string> read(std::string_view path, std::uint64_t limit) const = 0;
  /// Renames within one file system. Never replaces: false if `target` exists or the call fails.
  virtual bool rename_without_replacing(std::string_view source, std::string_view target) = 0;
  /// Deletes a file (never a folder). True when it was there and is gone.
  virtual bool remove(std::string_view path) = 0;
  // The next three only look; they change nothing. What they say may be different a moment later.

  /// True if a file could be made in the folder or, if the folder is missing, if the folder could be made.
  virtual bool can_create_in(std::string_view folder) const = 0;
  /// True if the file exists and may be written.
  virtual bool can_write(std::string_view path) const = 0;
  /// Bytes that this user may still write on the folder's volume. If the folder is missing, the nearest existing folder
  /// above it counts. Nothing if the system does not say.
  virtual std::optional<std::uint64_t> free_space(std::string_view folder) const = 0;
  /// The path as this host's calls want it (UTF-8). On Windows it is unchanged. On POSIX it has "/" and the spelling on
  /// disk; for a path that cannot exist there (another drive, a NUL), it is a path that no call can open or create.
  virtual std::string host_path(std::string_view path) const = 0;
  /// The Windows path of a host path: absolute, with backslashes.
  virtual std::string windows_path(std::string_view host_path) const = 0;
};

/// True when the file exists and is at least one byte long.
bool file_test(const FileSystem& files, std::string_view path);

/// True when a file name matches a pattern of "*" (any characters) and "?" (one), without regard to case. "*.*" matches
/// every name, as the shell takes it.
bool matches_pattern(std::string_view name, std::string_view pattern);

/// The machine's files.
FileSystem& host_file_system();

}  // namespace support
