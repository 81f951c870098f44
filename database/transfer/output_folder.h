// A folder that comes into being whole: it is filled under a name beside its own and renamed when complete. On POSIX
// the folder and its files are the user's alone.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "support/host_stream.h"

namespace transfer {

class OutputFolder {
 public:
  /// Raises 3204 where something lies at the path, unless it is an empty folder; 3044 where the folder above is
  /// missing; 75 where none can be made there. Folders that exports of the same name have left, when they were killed,
  /// are removed first.
  explicit OutputFolder(const std::string& host_path);
  /// Leaves nothing behind unless finish() returned.
  ~OutputFolder();
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;

  /// Host path of a file in it, for as long as it is being filled.
  std::string file(std::string_view name) const;
  /// Gives the folder its name. Raises 3204 where something has come up there meanwhile, 3043 where the disk refuses.
  void finish();

 private:
  std::string path_, working_path_;
  std::optional<support::NewHostFolder> folder_;  ///< nothing once it has its name
};

/// A new file that is written from its beginning to its end. Raises 3043, with the file's name, where it cannot be.
class OutputFile {
 public:
  explicit OutputFile(const std::string& host_path);
  void write(std::string_view bytes);
  /// Writes what is pending and closes it when all is on the disk.
  void close();

 private:
  [[noreturn]] void fail() const;
  void flush();

  std::string path_, pending_;
  support::HostFileWriter file_;
};

}  // namespace transfer
