// The conversion of pump data by hand, for the jobs that contain it.
#pragma once

#include <sqlite3.h>

namespace bench {

/// Works inside the caller's transaction: multiplies durations by 60 and writes a row of `ip` for each day, by one
/// statement with window functions.
void convert_straight(sqlite3* database);

/// Records the layout as the one that the ladder ends with.
void mark_as_current(sqlite3* database);

}  // namespace bench
