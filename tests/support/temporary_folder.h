// A folder for one test; it is removed with this object.
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

  /// Paths of a name in the folder: one for the host's own calls, and a Windows path. The name may be UTF-8.
  std::string host(std::string_view name) const;
  std::string windows(std::string_view name = {}) const;

  /// Writes a file without the code under test; returns its Windows path.
  std::string write(std::string_view name, std::string_view content) const;
  /// The file's bytes; nothing if there is none.
  std::optional<std::string> read(std::string_view name) const;
  void set_read_only(std::string_view name, bool read_only) const;
  /// The number of entries in the folder, including temporary files that were left behind.
  std::size_t file_count() const;

 private:
  std::filesystem::path path_of(std::string_view name) const;

  std::filesystem::path folder_;
};

}  // namespace support::testing
