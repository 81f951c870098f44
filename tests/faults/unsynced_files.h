// What of the files on a disk would survive a power cut: their content at the last sync, and what was done since.
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
  /// From here on the file's changes are told of. `existed`: not created just now.
  void opened(const std::string& path, bool existed);
  void written(const std::string& path, std::int64_t offset, std::string_view bytes);
  void truncated(const std::string& path, std::int64_t size);
  void synced(const std::string& path);
  /// Until the folder is synced the file may come back.
  void removed(const std::string& path);
  /// About to happen: the file or folder `source` takes the name of `target`, which may be missing. Until the folder is
  /// synced both may be as they were.
  void renamed(const std::string& source, const std::string& target);
  /// All work is in one folder.
  void folder_synced();
  void forget();

  /// Puts the files into the state after the cut. With `torn`, each sector of each change has reached the disk or not,
  /// as the seed has it; without, none has.
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
  /// What is known of the files in a folder is known of them in the other one.
  void move_files(const std::string& source, const std::string& target);
  static std::optional<std::string> surviving(const File& file, bool torn, std::mt19937& coins);

  std::map<std::string, File> files_;
  std::vector<Rename> renames_;
  std::vector<FolderRename> folder_renames_;
};

}  // namespace faults
