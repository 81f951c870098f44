// What the program asks of the desktop: the recycle bin, the user's program for a file, the choice of a folder. Paths
// are Windows paths. Nothing here raises; a failure is an empty or false result.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// What the desktop shows while files go to the recycle bin.
struct RecycleDisplay {
  /// The window that its dialogs belong to; null for none.
  void* owner = nullptr;
  bool confirmation = true;
  bool progress = true;
};

/// Moves the files (not folders) of a folder that match a pattern to the recycle bin, from where they can be restored.
/// Returns the names of the files that are gone; files that the user declined to move stay and are not among them.
std::vector<std::string> recycle(std::string_view folder, std::string_view pattern, const RecycleDisplay& display = {});

/// False if files deleted in the folder cannot be restored: on a share, and on drives without a recycle bin.
bool has_recycle_bin(std::string_view folder);

/// Opens a file with the user's program for it (verb "open"). True if the program was started.
bool open_file(std::string_view path);

/// Lets the user choose a folder. Nothing if the user cancels, or if no desktop can ask.
std::optional<std::string> choose_folder(std::string_view title, void* owner);

/// True for a path on another machine.
bool is_network_path(std::string_view path);

}  // namespace support
