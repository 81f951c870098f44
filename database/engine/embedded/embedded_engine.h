// The embedded engine: the object model over SQLite3 Multiple Ciphers. A database with a password is encrypted in the
// SQLCipher 4 scheme. The user's tables are SQLite tables of the same names. Catalogue tables of the same file keep
// what SQLite does not know of a field.
#pragma once

#include <chrono>
#include <memory>
#include <string_view>

#include "database/engine/engine.h"

namespace engine::embedded {

/// How long an operation waits for another process that holds the file. Then it raises 3045.
inline constexpr std::chrono::milliseconds default_busy_time{5000};

/// Paths are Windows paths; the key of a file is derived once per process and password.
std::unique_ptr<Engine> create_embedded_engine(std::chrono::milliseconds busy_time = default_busy_time);

}  // namespace engine::embedded
