// Files and folders by Windows path. On POSIX drive Z: is the root folder (as is a path that begins with a backslash),
// other drives do not exist, "\" becomes "/", and names are found without regard to case, an exact match first. Nothing
// here raises anything but out of memory.
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
  /// Size in bytes; nothing where it is missing or a folder.
  virtual std::optional<std::uint64_t> file_size(std::string_view path) const = 0;
  virtual bool folder_exists(std::string_view path) const = 0;
  /// Creates the folder and those above it. True when it exists afterwards.
  virtual bool create_folder(std::string_view path) = 0;
  /// Files (not folders) of a folder that match a pattern of "*" and "?", names only, sorted.
  virtual std::vector<std::string> files(std::string_view folder, std::string_view pattern) const = 0;
  /// The whole content; nothing where it cannot be read or is larger than `limit` bytes.
  virtual std::optional<std::string> read(std::string_view path, std::uint64_t limit) const = 0;
  /// Renames within one file system; never replaces: false where `target` exists or the call fails.
  virtual bool rename_without_replacing(std::string_view source, std::string_view target) = 0;
  /// Deletes a file (never a folder). True when it was there and is gone.
  virtual bool remove(std::string_view path) = 0;
  // Looks at what could be written; nothing is changed by them, and what they say may be different a moment later.

  /// True where a file could be made in the folder; of a folder that is not there, where it could be made.
  virtual bool can_create_in(std::string_view folder) const = 0;
  /// True where the file is there and may be written.
  virtual bool can_write(std::string_view path) const = 0;
  /// Bytes that this user may still write on the folder's volume, or on that of the nearest folder above that is there;
  /// nothing where the system does not say.
  virtual std::optional<std::uint64_t> free_space(std::string_view folder) const = 0;
  /// The path as this host's calls want it (UTF-8): unchanged on Windows; with "/" and the real case on POSIX, and for
  /// a path that cannot exist there (another drive, a NUL) one that no call can open or create.
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
