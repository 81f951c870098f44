// The file system below SQLite, in which the plan's faults happen.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace faults {

/// Puts this file system between SQLite's cipher and the machine's files, for every database that this process opens
/// from now on.
void install_fault_vfs();

/// Treats everything that is on the disk now as synced.
void forget_unsynced();

/// True while SQLite's own file system makes the calls; their operations have been counted already.
bool is_call_of_sqlite();

// Functions for files that are not SQLite's.
void tell_created(const std::string& path);
void tell_written(const std::string& path, std::int64_t offset, std::string_view bytes);
void tell_synced(const std::string& path);

/// The first: a file or folder is about to get another's name. The second: the names in a folder have reached the disk.
void tell_rename(const char* source, const char* target);
void tell_synced_folder();

}  // namespace faults
