// The file system below SQLite, in which the plan's faults happen.
#pragma once

namespace faults {

/// Puts it between SQLite's cipher and the machine's files, for every database that this process opens from now on.
void install_fault_vfs();

/// What is on the disk now counts as synced.
void forget_unsynced();

}  // namespace faults
