// Copies of database files that their owner keeps, and the way back from one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/keeping/table_fingerprint.h"

namespace database::keeping {

struct Backup {
  std::string path;
  std::uint64_t bytes = 0;
  std::vector<TableFingerprint> tables;
};

/// Saves a verified copy of `source` under the path `target`; where that is a folder, in it, under the file's name with
/// its layout and the present moment ("NAME.4.60.20240517-083000.das"). The copy has its name only when it is whole,
/// synced and read back. 3204 where a file of the name is there, unless it is to be replaced; then 3045 where anybody
/// has that one open. Else as VerifiedCopy raises.
Backup back_up(const Environment& environment, std::string_view source, std::string_view password,
               std::string_view target, bool replace);

struct Restored {
  std::string kept;  ///< path of the file that was replaced; empty where there was none
  std::vector<TableFingerprint> tables;
};

/// Puts a verified copy of `backup` in the place of `target`, whose old file is kept under a name with the present
/// moment ("NAME.replaced-20240517-083000.das"). Before, every page of the backup is checked, and where it has a
/// version record, that it is of this product. Whatever happens, the old file or the new one has the name. 3343 where
/// the backup does not hold together, 3045 where anybody has `target` open, 5 where both are one file.
Restored restore(const Environment& environment, std::string_view backup, std::string_view password,
                 std::string_view target);

}  // namespace database::keeping
