// The option by which the user chooses the engine.
#pragma once

#include <ostream>

#include "apps/console/arguments.h"
#include "database/engine/engine.h"
#include "database/environment.h"

namespace patientdb {

/// "auto": a file by the engine that wrote it, new ones by the automation objects of the machine where it has them.
inline constexpr console::Option engine_option{"--engine", "NAME",
                                               "Who opens the file or makes it: auto (default), embedded, automation."};

/// Raises UsageError for a name that is none of these.
engine::EngineFactory engine_of(const console::Arguments& arguments);

/// Who makes a new database with the environment's password. One of one's own is there to encrypt the file, and the
/// automation objects encrypt none: unless they are asked for, the embedded engine makes it, and where they are
/// installed, `err` says so. Raises UsageError for a password that they do not take (more than 14 characters).
void choose_maker(const console::Arguments& arguments, database::Environment& environment, std::ostream& err);

}  // namespace patientdb
