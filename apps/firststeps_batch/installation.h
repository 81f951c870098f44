// The installation that a run works on, and what must be right with it before anything is touched.
#pragma once

#include <memory>
#include <string>

#include "apps/console/arguments.h"
#include "apps/console/console.h"
#include "support/registry.h"
#include "wizard/installation_config.h"

namespace firststeps_batch {

struct Installation {
  std::string own_folder;      ///< Windows path with its trailing backslash
  std::string program_folder;  ///< where this program and its texts lie, in the same form
  std::unique_ptr<support::Registry> registry;
};

/// The hive used where none is named, by platform: empty for the machine's own registry (Windows), else "registry.reg"
/// in the installation's folder. Host paths.
std::string default_hive(std::string_view folder);

/// Raises InputError that names the folder, ini file or hive that is missing or damaged.
Installation find_installation(const console::Arguments& arguments, const console::Console& console);

/// Checks what start-up has found. Raises InputError for the ini files in the installation's folder, and the engine's
/// number, with the file's name, where the current patient database does not open.
void check_configuration(const wizard::InstallationConfig& config);

}  // namespace firststeps_batch
