// The end of a commit: the moment in which its journal is gone.
#pragma once

namespace engine::embedded {

/// From here on, in the whole process, a journal that is deleted with its folder to be synced stays deleted after a
/// power cut. Windows syncs no folder: there the journal is emptied, and that synced, before it is deleted. Calling it
/// again does nothing.
void sync_ends_of_journals() noexcept;

/// Leaves the file empty on the disk; without effect where the system syncs folders.
void empty_file_for_good(const char* host_path) noexcept;

}  // namespace engine::embedded
