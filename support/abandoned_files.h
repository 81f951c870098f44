// Files that are written beside another file and take its place when they are complete: how one takes that place, and
// how files are removed that a killed process left behind.
#pragma once

#include <string>
#include <string_view>

namespace support {

/// In the name of a file that is still being written, this mark stands between the final name and a few letters or
/// digits. replace_host_file and the creation of a database use it.
inline constexpr std::string_view replacement_mark = ".writing-";
inline constexpr std::string_view new_database_mark = ".creating-";
/// The same mark for folders that an export is filling.
inline constexpr std::string_view export_mark = ".exporting-";

/// The path under which a file for `path` is written. No two runs get the same path, and no file of a killed run has
/// it.
std::string working_path(std::string_view path, std::string_view mark);

/// Removes the files that killed processes left beside the file at this host path: files with the mark behind its name
/// that no process has open and that were not changed for ten minutes. A journal is removed only together with its
/// database, or when its database is gone. A file that was to replace another one stays as long as that other file is
/// missing, because it may hold all that is left of it. Never raises.
void remove_abandoned_files(const std::string& host_path, std::string_view mark);

/// Removes such folders beside the one at this host path, with the files in them: folders that hold nothing but files,
/// of which none was changed for ten minutes, and that no process is filling. Never raises.
void remove_abandoned_folders(const std::string& host_path, std::string_view mark);

/// The system's calls that put_in_place() needs. Paths are host paths.
class ReplacementCalls {
 public:
  virtual ~ReplacementCalls() = default;
  /// Puts `source` in the place of `target`. After a failure, `target` may or may not be there.
  virtual bool replace(const std::string& source, const std::string& target) = 0;
  /// False where `target` exists.
  virtual bool rename(const std::string& source, const std::string& target) = 0;
  virtual bool exists(const std::string& path) const = 0;
  virtual void remove(const std::string& path) = 0;
};

enum class Replaced {
  Done,
  Refused,     ///< the target is as it was; the source was removed
  OnlySource,  ///< the target is gone; the source is kept under its own name, because it could not take the target's
};

/// `source` takes the name of `target`, which may be missing. Never removes the source while the target is missing.
Replaced put_in_place(ReplacementCalls& calls, const std::string& source, const std::string& target);

}  // namespace support
