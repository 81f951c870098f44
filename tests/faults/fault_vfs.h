// The file system below SQLite, in which the plan's faults happen.
#pragma once

namespace faults {

/// Puts it between SQLite's cipher and the machine's files, for every database that this process opens from now on.
void install_fault_vfs();

/// What is on the disk now counts as synced.
void forget_unsynced();

/// A file is about to be given another's name; the names of a folder have reached the disk.
void tell_rename(const char* source, const char* target);
void tell_synced_folder();

}  // namespace faults
