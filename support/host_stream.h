// Files by host path that are read or written from their beginning to their end in parts, and a new folder that is
// filled before it has its name.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace support {

/// A new file; on POSIX the user's alone.
class HostFileWriter {
 public:
  /// False afterwards where a file is there already or none can be made.
  explicit HostFileWriter(const std::string& path);
  ~HostFileWriter();
  HostFileWriter(const HostFileWriter&) = delete;
  HostFileWriter& operator=(const HostFileWriter&) = delete;
  explicit operator bool() const noexcept { return handle_ != nullptr; }

  /// False where not all of it could be written.
  bool write(std::string_view bytes);
  /// Closes it when what was written is on the disk. False where the system refuses. Once.
  bool close();

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

class HostFileReader {
 public:
  /// False afterwards where there is no regular file that can be read.
  explicit HostFileReader(const std::string& path);
  ~HostFileReader();
  HostFileReader(const HostFileReader&) = delete;
  HostFileReader& operator=(const HostFileReader&) = delete;
  explicit operator bool() const noexcept { return handle_ != nullptr; }

  /// The number of bytes, 0 only at the end of the file; nothing where it cannot be read.
  std::optional<std::size_t> read(std::span<char> buffer);

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

/// A new folder; on POSIX the user's alone. While this lives, is_host_folder_unused() is false.
class NewHostFolder {
 public:
  /// False afterwards where something is there already or none can be made.
  explicit NewHostFolder(std::string path);
  ~NewHostFolder();
  NewHostFolder(const NewHostFolder&) = delete;
  NewHostFolder& operator=(const NewHostFolder&) = delete;
  explicit operator bool() const noexcept { return handle_ != nullptr; }

  /// Gives it another name when the names of its files are on the disk; the new name is there afterwards, too. False
  /// where something of that name is there, or the system refuses. Once.
  bool take_name(const std::string& target);

 private:
  struct Handle;
  std::string path_;
  std::unique_ptr<Handle> handle_;
};

/// False where a process fills the folder, or it cannot be opened.
bool is_host_folder_unused(const std::string& path);

}  // namespace support
