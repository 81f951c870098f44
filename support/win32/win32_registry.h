// Windows' registry through its W calls, so that the stored texts do not depend on the system's code page. Texts that
// do not fit code page 1252, in which the diary reads, are not written.
#pragma once

#include "support/registry.h"

namespace support {

class Win32Registry final : public Registry {
 public:
  bool key_exists(RootKey root, std::string_view key) const override;
  std::optional<RegistryValue> read(RootKey root, std::string_view key, std::string_view name) const override;
  CreateResult create_key(RootKey root, std::string_view key, std::string_view class_name) override;
  bool can_write(RootKey root, std::string_view key) const override;
  bool write_text(RootKey root, std::string_view key, std::string_view name, std::string_view value) override;
};

}  // namespace support
