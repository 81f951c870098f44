// The file calls of Windows.
#pragma once

#include "support/file_system.h"

namespace support {

class Win32FileSystem final : public FileSystem {
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
  std::string host_path(std::string_view path) const override { return std::string(path); }
  std::string windows_path(std::string_view host_path) const override;
};

}  // namespace support
