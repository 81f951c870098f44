// Files that are written beside the one whose place they take in the end; what is left of them when a process is killed
// meanwhile; and how one takes that place.
#pragma once

#include <string>
#include <string_view>

namespace support {

/// What stands between a file's name and a few letters or digits in the names of files that are still being written:
/// by replace_host_file, and by the creation of a database.
inline constexpr std::string_view replacement_mark = ".writing-";
inline constexpr std::string_view new_database_mark = ".creating-";
/// The same in the names of folders that are being filled by an export.
inline constexpr std::string_view export_mark = ".exporting-";

/// The path of a file that is still being written for `path`: no two runs, and no file left by a run that was killed,
/// meet under it.
std::string working_path(std::string_view path, std::string_view mark);

/// Removes what processes that were killed left beside the file, given by its host path: files with the mark after its
/// name that no process has open and that were not changed for ten minutes. A journal goes only with the database that
/// it belongs to, or where that is gone. What was to replace a file stays as long as that file is missing: it may be
/// all that is left of it. Never raises.
void remove_abandoned_files(const std::string& host_path, std::string_view mark);

/// Removes such folders beside the one that is given by its host path, with the files in them: none of these was
/// changed for ten minutes, no process fills the folder, and there is nothing in it but files. Never raises.
void remove_abandoned_folders(const std::string& host_path, std::string_view mark);

/// The system's calls, by host path.
class ReplacementCalls {
 public:
  virtual ~ReplacementCalls() = default;
  /// One file in the place of the other. Where it fails, the other may be there or not.
  virtual bool replace(const std::string& source, const std::string& target) = 0;
  /// False where `target` exists.
  virtual bool rename(const std::string& source, const std::string& target) = 0;
  virtual bool exists(const std::string& path) const = 0;
  virtual void remove(const std::string& path) = 0;
};

enum class Replaced {
  Done,
  Refused,     ///< the target is as it was, the source is gone
  OnlySource,  ///< the target is gone, and the source, which could not take its name, is what there is
};

/// `source` takes the name of `target`, which may be missing. Never removes the source while the target is missing.
Replaced put_in_place(ReplacementCalls& calls, const std::string& source, const std::string& target);

}  // namespace support
