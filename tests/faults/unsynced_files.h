// Knows what would survive a power cut of the files on a disk: their content at the last sync, and the changes since.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace faults {

class UnsyncedFiles {
 public:
  /// From now on, the file's changes are reported here. `existed`: it was not created just now.
  void opened(const std::string& path, bool existed);
  void written(const std::string& path, std::int64_t offset, std::string_view bytes);
  void truncated(const std::string& path, std::int64_t size);
  void synced(const std::string& path);
  /// The file was removed. Until the folder is synced, it may return.
  void removed(const std::string& path);
  /// The file or folder `source` is about to get the name of `target`, which may be missing. Until the folder is
  /// synced, both may be as they were.
  void renamed(const std::string& source, const std::string& target);
  /// The folder was synced; all work is in one folder.
  void folder_synced();
  void forget();

  /// Puts the files into the state after the cut. With `torn`, the seed decides for each sector of each change whether
  /// it has reached the disk; otherwise no change has.
  void cut(bool torn, unsigned seed);

 private:
  struct Change {
    std::int64_t offset;  ///< of the bytes, or the new size
    std::optional<std::string> bytes;
  };
  struct File {
    std::optional<std::string> durable;  ///< nothing: not there
    std::vector<Change> changes;
    bool removed = false;
    bool created_anew = false;  ///< after it was removed: the changes are of another file than `durable`
  };
  struct Rename {
    std::string source, target;
    File replaced;
  };
  struct FolderRename {
    std::string source, target;
  };
  /// Everything that is known about the files in one folder is now known about the other one.
  void move_files(const std::string& source, const std::string& target);
  static std::optional<std::string> surviving(const File& file, bool torn, std::mt19937& coins);

  std::map<std::string, File> files_;
  std::vector<Rename> renames_;
  std::vector<FolderRename> folder_renames_;
};

}  // namespace faults
