// The conversion of pump data by hand, for the jobs that have it in them.
#pragma once

#include <sqlite3.h>

namespace bench {

/// Inside the caller's transaction: durations times 60, and a row of `ip` a day by one statement with window functions.
void convert_straight(sqlite3* database);

/// Writes down that the layout is the one that the ladder leads to.
void mark_as_current(sqlite3* database);

}  // namespace bench
