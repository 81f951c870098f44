// The option by which the user chooses the engine.
#pragma once

#include "apps/console/arguments.h"
#include "database/engine/engine.h"

namespace patientdb {

/// "auto": a file by the engine that wrote it, new ones by the automation objects of the machine where it has them.
inline constexpr console::Option engine_option{"--engine", "NAME",
                                               "Who opens the file or makes it: auto (default), embedded, automation."};

/// Raises UsageError for a name that is none of these.
engine::EngineFactory engine_of(const console::Arguments& arguments);

}  // namespace patientdb
