// Copies of database files for their owner to keep, and how to restore one.
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

/// Saves a verified copy of `source` under the path `target`. If that is a folder, the copy lies in it, under the
/// file's name with its layout and the present moment ("NAME.4.60.20240517-083000.das"). The copy gets its name only
/// when it is complete, synced and read back. Raises 3204 where a file of that name exists, unless it may be replaced;
/// then 3045 where anybody has it open. Else raises what VerifiedCopy raises.
Backup back_up(const Environment& environment, std::string_view source, std::string_view password,
               std::string_view target, bool replace);

struct Restored {
  std::string kept;  ///< path of the replaced file; empty where there was none
  std::vector<TableFingerprint> tables;
};

/// Puts a verified copy of `backup` in the place of `target`. The old file is kept under a name with the present moment
/// ("NAME.replaced-20240517-083000.das"). Before that, every page of the backup is checked and, if it has a version
/// record, also that it is of this product. Whatever happens, the old file or the new one has the name. Raises 3343
/// where the backup is inconsistent, 3045 where anybody has `target` open, 5 where both are the same file.
Restored restore(const Environment& environment, std::string_view backup, std::string_view password,
                 std::string_view target);

}  // namespace database::keeping
