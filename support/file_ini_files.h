// Answers Windows' profile calls from the files themselves. The answers are byte for byte those that the calls give
// under code page 1252, whatever the system's code page is. Beyond that, this reader knows the byte order mark of
// UTF-8.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "support/ini.h"
#include "support/ini_document.h"

namespace support {

class FileIniFiles : public IniFiles {
 public:
  std::string value(std::string_view file, std::string_view section, std::string_view key, std::string_view fallback,
                    std::size_t size) const override;
  std::vector<std::string> values(std::string_view file, std::string_view section, std::span<const std::string> keys,
                                  std::size_t size) const override;
  std::string keys(std::string_view file, std::string_view section, std::string_view fallback,
                   std::size_t size) const override;
  std::string sections(std::string_view file, std::string_view fallback, std::size_t size) const override;
  bool write(std::string_view file, std::string_view section, std::string_view key, std::string_view value) override;

 private:
  /// The second half of write(), once the entry is known to be writable. Raises what replace_host_file raises.
  bool change(const std::string& path, std::string_view file, std::string_view section, std::string_view key,
              std::string_view value);
  const IniDocument* document(std::string_view file) const;

  // The document that was read last. The file is read every time, but parsed only when its bytes have changed.
  mutable std::string cached_bytes_;
  mutable IniDocument cached_;
};

}  // namespace support
