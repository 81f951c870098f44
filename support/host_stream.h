// Files by host path that are read or written in parts from beginning to end, and a new folder that is filled before it
// gets its name.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace support {

/// A new file. On POSIX it belongs to the user alone.
class HostFileWriter {
 public:
  /// The writer is false afterwards if a file exists already or none can be made.
  explicit HostFileWriter(const std::string& path);
  ~HostFileWriter();
  HostFileWriter(const HostFileWriter&) = delete;
  HostFileWriter& operator=(const HostFileWriter&) = delete;
  explicit operator bool() const noexcept { return handle_ != nullptr; }

  /// False if not everything could be written.
  bool write(std::string_view bytes);
  /// Waits until everything is on the disk, and closes the file. False if the system refuses. To be called once.
  bool close();

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

class HostFileReader {
 public:
  /// The reader is false afterwards if there is no regular file that can be read.
  explicit HostFileReader(const std::string& path);
  ~HostFileReader();
  HostFileReader(const HostFileReader&) = delete;
  HostFileReader& operator=(const HostFileReader&) = delete;
  explicit operator bool() const noexcept { return handle_ != nullptr; }

  /// The number of bytes that were read, 0 only at the end of the file; nothing if the file cannot be read.
  std::optional<std::size_t> read(std::span<char> buffer);

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

/// A new folder. On POSIX it belongs to the user alone. While this object lives, is_host_folder_unused() is false.
class NewHostFolder {
 public:
  /// The object is false afterwards if something exists at the path already or no folder can be made.
  explicit NewHostFolder(std::string path);
  ~NewHostFolder();
  NewHostFolder(const NewHostFolder&) = delete;
  NewHostFolder& operator=(const NewHostFolder&) = delete;
  explicit operator bool() const noexcept { return handle_ != nullptr; }

  /// Waits until the names of its files are on the disk, then renames the folder; afterwards the new name is on the
  /// disk, too. False if something of that name exists, or the system refuses. To be called once.
  bool take_name(const std::string& target);

 private:
  struct Handle;
  std::string path_;
  std::unique_ptr<Handle> handle_;
};

/// False if a process is filling the folder, or the folder cannot be opened.
bool is_host_folder_unused(const std::string& path);

}  // namespace support
