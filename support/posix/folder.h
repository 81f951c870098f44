// The folder that a file lies in, by host path.
#pragma once

#include <string>

namespace support {

/// "." for a name without a folder.
std::string folder_of(const std::string& path);

/// A file's new name is on the disk only when its folder is. What cannot be synced is left to the system.
void sync_folder_of(const std::string& path);

}  // namespace support
