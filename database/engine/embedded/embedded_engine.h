// The embedded engine: the object model over SQLite3 Multiple Ciphers. A database with a password is encrypted in the
// SQLCipher 4 scheme. The user's tables are SQLite tables of the same names; what SQLite does not know of a field lives
// in catalogue tables of the same file.
#pragma once

#include <memory>

#include "database/engine/engine.h"

namespace engine::embedded {

/// Paths are Windows paths; the key of a file is derived once per process and password.
std::unique_ptr<Engine> create_embedded_engine();

}  // namespace engine::embedded
