// The file system below SQLite, in which the plan's faults happen.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace faults {

/// Puts it between SQLite's cipher and the machine's files, for every database that this process opens from now on.
void install_fault_vfs();

/// What is on the disk now counts as synced.
void forget_unsynced();

/// True while the calls are those of SQLite's own file system, whose operations are counted as it is asked for them.
bool is_call_of_sqlite();

// Of files beside SQLite's.
void tell_created(const std::string& path);
void tell_written(const std::string& path, std::int64_t offset, std::string_view bytes);
void tell_synced(const std::string& path);

/// A file or folder is about to be given another's name; the names of a folder have reached the disk.
void tell_rename(const char* source, const char* target);
void tell_synced_folder();

}  // namespace faults
