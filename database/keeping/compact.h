// Makes a database file as small as its content allows.
#pragma once

#include <cstdint>
#include <string_view>

#include "database/environment.h"

namespace database::keeping {

struct Compaction {
  std::uint64_t bytes_before = 0, bytes_after = 0;
  std::int64_t rows = 0;  ///< of all tables
};

/// Writes the file anew without gaps. It takes the old file's place after every table was read back and compared with
/// what it held before. AutoNumbers are set back, as the engine's own compacting does: they count on from the highest
/// existing number. On failure the file is as it was. Raises 3045 where it is open elsewhere, 3251 where its engine
/// cannot compact it or it has a second name in a folder, 3343 where the new file does not hold what the old one held.
Compaction compact_file(const Environment& environment, std::string_view path, std::string_view password);

}  // namespace database::keeping
