// A database file made as small as what it holds.
#pragma once

#include <cstdint>
#include <string_view>

#include "database/environment.h"

namespace database::keeping {

struct Compaction {
  std::uint64_t bytes_before = 0, bytes_after = 0;
  std::int64_t rows = 0;  ///< of all tables
};

/// Writes the file anew, without gaps, and puts it in its own place once every table of it has been read back and holds
/// what it held. AutoNumbers are set back as the engine's compacting does: they count on from the highest one that is
/// there. On failure the file is as it was: 3045 where it is open elsewhere, 3251 where it belongs to an engine that
/// cannot be asked for this or has a second name in a folder, 3343 where what was written is not what was there.
Compaction compact_file(const Environment& environment, std::string_view path, std::string_view password);

}  // namespace database::keeping
