// The desktop's trash as freedesktop.org lays it down: the file goes to "files", a note of where it was to "info".
#pragma once

#include <filesystem>

namespace firststeps_batch {

/// Moves a file into the user's trash, or where that lies on another file system into the trash at the top of the
/// file's own. False where neither can take it; the file is where it was then.
bool move_to_trash(const std::filesystem::path& file);

}  // namespace firststeps_batch
