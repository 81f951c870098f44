// A database file before it is opened: what it is, and the creation of a new one. Paths are the host's.
#pragma once

#include <string>

#include "database/engine/embedded/file_keys.h"

namespace engine::embedded {

struct DatabaseFile {
  bool encrypted = false;
  FileSalt salt = {};  ///< of an encrypted file
};

/// Looks at the file's beginning. 3024 missing, 3044 no such folder, 3051 unreadable, 3343 where it cannot be a
/// database of this engine.
DatabaseFile inspect_database_file(const std::string& host_path);

/// The errors of a place where a database is to be created: 3204 a file is there, 3044 no such folder.
void check_place_of_new_file(const std::string& host_path);

/// An empty file that only the user may read and write. 3204 where one is there, 3044 no such folder, 3051 no right.
void create_private_file(const std::string& host_path);

/// Removes the file where it is still empty.
void remove_empty_file(const std::string& host_path) noexcept;

}  // namespace engine::embedded
