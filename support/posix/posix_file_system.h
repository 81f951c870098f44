// Windows paths on a POSIX machine.
#pragma once

#include <string>

#include "support/file_system.h"

namespace support {

/// "." for a name without a folder.
std::string folder_of(const std::string& path);

/// A file's new name is on the disk only when its folder is. What cannot be synced is left to the system.
void sync_folder_of(const std::string& path);

class PosixFileSystem final : public FileSystem {
 public:
  std::optional<std::uint64_t> file_size(std::string_view path) const override;
  bool folder_exists(std::string_view path) const override;
  bool create_folder(std::string_view path) override;
  std::vector<std::string> files(std::string_view folder, std::string_view pattern) const override;
  std::optional<std::string> read(std::string_view path, std::uint64_t limit) const override;
  bool rename_without_replacing(std::string_view source, std::string_view target) override;
  bool remove(std::string_view path) override;
  bool can_create_in(std::string_view folder) const override;
  bool can_write(std::string_view path) const override;
  std::optional<std::uint64_t> free_space(std::string_view folder) const override;
  std::string host_path(std::string_view path) const override;
  std::string windows_path(std::string_view host_path) const override;
};

}  // namespace support
