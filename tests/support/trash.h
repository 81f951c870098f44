// The recycle bin while a test runs. Except on Windows, it is in the test's own folder and can be looked into.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/temporary_folder.h"

namespace support::testing {

class Trash {
 public:
  explicit Trash(const TemporaryFolder& folder);
  ~Trash();
  Trash(const Trash&) = delete;
  Trash& operator=(const Trash&) = delete;

  /// Expects the file and its note, if the platform lets us see them.
  void expect_file(std::string_view name, std::string_view content) const;

 private:
  const TemporaryFolder& folder_;
  std::string before_;
};

}  // namespace support::testing
