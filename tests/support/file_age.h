// Makes files and folders look older than they are.
#pragma once

#include <chrono>
#include <string>

namespace support::testing {

/// Sets the time of the last change to so many minutes ago. The standard library's own call refuses folders on Windows.
void set_age(const std::string& host_path, std::chrono::minutes age);

}  // namespace support::testing
