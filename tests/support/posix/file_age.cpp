#include "tests/support/file_age.h"

#include <filesystem>

namespace support::testing {

void set_age(const std::string& host_path, std::chrono::minutes age) {
  std::filesystem::last_write_time(host_path, std::filesystem::file_time_type::clock::now() - age);
}

}  // namespace support::testing
