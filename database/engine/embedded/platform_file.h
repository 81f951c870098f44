// Operations on a database file that each platform does in its own way. Paths are the host's.
#pragma once

#include <memory>
#include <string>

#include "database/engine/embedded/connection.h"

namespace engine::embedded {

/// Creates an empty file that only the user may read and write. Raises 3204 where a file is there, 3044 where there is
/// no such folder, 3051 where rights are missing or (POSIX) the folder belongs to another user.
void create_private_file(const std::string& host_path);

/// Empties the file, so that it is empty even after a power cut. Does nothing on POSIX, where a deletion is permanent
/// once the folder is synced.
void empty_file_for_good(const char* host_path) noexcept;

/// Puts `source`, a closed database, in the place of `target`, which `held` has open alone and locked. `held` is closed
/// afterwards, and may be closed on failure. Raises what support::replace_with_host_file() raises, and 3045 where
/// somebody has opened the file in the meantime: Windows gives a file's name to another file only after the file was
/// closed.
void replace_held_file(std::unique_ptr<Connection>& held, const std::string& source, const std::string& target);

}  // namespace engine::embedded
