// The profile calls of Windows.
#pragma once

#include "support/ini.h"

namespace support {

class Win32IniFiles final : public IniFiles {
 public:
  std::string value(std::string_view file, std::string_view section, std::string_view key, std::string_view fallback,
                    std::size_t size) const override;
  std::string keys(std::string_view file, std::string_view section, std::string_view fallback,
                   std::size_t size) const override;
  std::string sections(std::string_view file, std::string_view fallback, std::size_t size) const override;
  bool write(std::string_view file, std::string_view section, std::string_view key, std::string_view value) override;
};

}  // namespace support
