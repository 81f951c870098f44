// What a run without a window takes from its platform.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace firststeps_batch {

/// The hive used where none is named: empty for the machine's own registry (Windows), else "registry.reg" in the
/// program folder. Both are paths of this host.
std::string default_hive(std::string_view program_folder);

/// Moves the files (no folders) of a folder that match a pattern of "*" and "?" into the recycle bin without any
/// dialog. Windows paths; returns the names of what was moved.
std::vector<std::string> recycle(std::string_view folder, std::string_view pattern);

}  // namespace firststeps_batch
