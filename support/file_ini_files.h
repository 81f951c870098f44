// The profile calls of Windows, answered from the files themselves: byte for byte as the calls do it under code page
// 1252, whatever the system's code page is, and with the UTF-8 mark that the calls do not know.
#pragma once

#include <string>

#include "support/ini.h"
#include "support/ini_document.h"

namespace support {

class FileIniFiles : public IniFiles {
 public:
  std::string value(std::string_view file, std::string_view section, std::string_view key, std::string_view fallback,
                    std::size_t size) const override;
  std::string keys(std::string_view file, std::string_view section, std::string_view fallback,
                   std::size_t size) const override;
  std::string sections(std::string_view file, std::string_view fallback, std::size_t size) const override;
  bool write(std::string_view file, std::string_view section, std::string_view key, std::string_view value) override;

 private:
  /// write() once the entry is known to be a good one; raises what replace_host_file does.
  bool change(const std::string& path, std::string_view file, std::string_view section, std::string_view key,
              std::string_view value);
  const IniDocument* document(std::string_view file) const;

  // The document read last. It is read from disk every time but parsed again only when its bytes have changed.
  mutable std::string cached_bytes_;
  mutable IniDocument cached_;
};

}  // namespace support
