// A folder that appears only when it is complete: it is filled under a name beside its own and then renamed. On POSIX
// the folder and its files are the user's alone.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "support/host_stream.h"

namespace transfer {

class OutputFolder {
 public:
  /// Raises 3204 where something exists at the path, unless it is an empty folder; 3044 where the folder above is
  /// missing; 75 where no folder can be made there. First removes the folders that killed exports of the same name have
  /// left.
  explicit OutputFolder(const std::string& host_path);
  /// Removes the folder unless finish() returned.
  ~OutputFolder();
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;

  /// The host path of a file in the folder, while the folder is being filled.
  std::string file(std::string_view name) const;
  /// Gives the folder its name. Raises 3204 where something was made there in the meantime, 3043 where the disk
  /// refuses.
  void finish();

 private:
  std::string path_, working_path_;
  std::optional<support::NewHostFolder> folder_;  ///< nothing once it has its name
};

/// A new file that is written from beginning to end. Raises 3043 with the file's name where it cannot be written.
class OutputFile {
 public:
  explicit OutputFile(const std::string& host_path);
  void write(std::string_view bytes);
  /// Writes what is pending, and closes the file when everything is on the disk.
  void close();

 private:
  [[noreturn]] void fail() const;
  void flush();

  std::string path_, pending_;
  support::HostFileWriter file_;
};

}  // namespace transfer
