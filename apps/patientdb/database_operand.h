// The database file that a command works on: its path as the user gave it, its password, and the open database.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "apps/console/arguments.h"
#include "apps/console/console.h"
#include "database/engine/engine.h"

namespace patientdb {

/// The password for this run: --password-file, else PATIENTDB_PASSWORD, else the default one. Empty: none. Raises
/// InputError where the password file cannot be read or holds no password.
std::string password(const console::Arguments& arguments, const console::Console& console);

/// The first line of a file. Raises InputError where it cannot be read, is empty, no UTF-8 or holds a NUL.
std::string password_from_file(const std::string& host_path);

/// Raises UsageError unless a new database may have this password: 3 to 20 characters, or none.
void check_new_password(std::string_view word);

/// The Windows path of a host path. Raises UsageError for an empty one.
std::string database_path(std::string_view host_path);

/// The engine must outlive its database.
struct OpenDatabase {
  std::unique_ptr<engine::Engine> engine;
  std::unique_ptr<engine::Database> database;
};

enum class Access { ReadOnly, ReadWrite };

/// Opens the first operand. Raises UsageError for an empty name, and what the engine raises: 3024 no such file, 3031
/// wrong password, 3343 no database.
OpenDatabase open_database(const console::Arguments& arguments, const console::Console& console, Access access);

}  // namespace patientdb
