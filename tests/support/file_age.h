// Files and folders that a test makes older than they are.
#pragma once

#include <chrono>
#include <string>

namespace support::testing {

/// The file or folder was last changed that long ago. The library's own call refuses folders on Windows.
void set_age(const std::string& host_path, std::chrono::minutes age);

}  // namespace support::testing
