// A folder of a test's own, gone with the test.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace support::testing {

class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// Paths of a name in the folder: for the host's own calls, and as a Windows path. The name may be UTF-8.
  std::string host(std::string_view name) const;
  std::string windows(std::string_view name = {}) const;

  /// Writes a file past the code under test; returns its Windows path.
  std::string write(std::string_view name, std::string_view content) const;
  /// The file's bytes; nothing where there is none.
  std::optional<std::string> read(std::string_view name) const;
  void set_read_only(std::string_view name, bool read_only) const;
  /// How many entries the folder has: a temporary file that was left behind counts.
  std::size_t file_count() const;

 private:
  std::filesystem::path path_of(std::string_view name) const;

  std::filesystem::path folder_;
};

}  // namespace support::testing
