// Ini files on Windows. Windows' profile calls read and write in the system's code page, which need not be 1252; these
// functions always use 1252.
#pragma once

#include "support/file_ini_files.h"

namespace support {

class Win32IniFiles final : public FileIniFiles {
 public:
  /// If no new file can be made in the folder, the file cannot be replaced in one step. Then, if the system's code page
  /// is 1252, the profile call changes the file in its place.
  bool write(std::string_view file, std::string_view section, std::string_view key, std::string_view value) override;
};

}  // namespace support
