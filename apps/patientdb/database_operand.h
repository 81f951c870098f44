// The database file that a command works on: its path as the user gave it, its password, the engine that the user
// chose, and the open database.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "apps/console/arguments.h"
#include "apps/console/console.h"
#include "database/engine/engine.h"
#include "database/environment.h"

namespace patientdb {

/// "auto": a file is opened by the engine that wrote it. A new file is made by the machine's automation objects, if it
/// has them.
inline constexpr console::Option engine_option{"--engine", "NAME",
                                               "Who opens the file or makes it: auto (default), embedded, automation."};

/// Raises UsageError for a name that is none of these.
engine::EngineFactory engine_of(const console::Arguments& arguments);

/// Chooses the engine that makes a new database with the environment's password. A password of the user's own is meant
/// to encrypt the file, but the automation objects do not encrypt. Therefore the embedded engine makes the file, unless
/// the automation objects are asked for; if they are installed, `err` is told so. Raises UsageError for a password that
/// the automation objects do not accept (more than 14 characters).
void choose_maker(const console::Arguments& arguments, database::Environment& environment, std::ostream& err);

/// The password for this run: --password-file, else PATIENTDB_PASSWORD, else the default one. An empty one means no
/// password. Raises InputError if the password file cannot be read or holds no password.
std::string password(const console::Arguments& arguments, const console::Console& console);

/// The first line of a file. Raises InputError if the file cannot be read, or the line is empty, no UTF-8 or holds a
/// NUL.
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

/// Opens the database that the first operand names. Raises UsageError for an empty name, and the engine's errors: 3024
/// no such file, 3031 wrong password, 3343 no database.
OpenDatabase open_database(const console::Arguments& arguments, const console::Console& console, Access access);

}  // namespace patientdb
