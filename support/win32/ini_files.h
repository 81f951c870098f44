// Ini files on Windows. The profile calls read and write in the system's code page, which need not be 1252; ours do
// not.
#pragma once

#include "support/file_ini_files.h"

namespace support {

class Win32IniFiles final : public FileIniFiles {
 public:
  /// In a folder that takes no new files a file cannot be replaced in one step: where the system's code page is 1252,
  /// the profile call then changes it in its place.
  bool write(std::string_view file, std::string_view section, std::string_view key, std::string_view value) override;
};

}  // namespace support
