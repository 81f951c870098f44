// The installation that a run works on, and the checks before anything is touched.
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
  std::string program_folder;  ///< the folder of this program and its texts, in the same form
  std::unique_ptr<support::Registry> registry;
};

/// The hive that is used if none is named. On Windows it is empty, which means the machine's own registry; elsewhere it
/// is "registry.reg" in the installation's folder. Host paths.
std::string default_hive(std::string_view folder);

/// Raises InputError that names the missing or damaged folder, ini file or hive.
Installation find_installation(const console::Arguments& arguments, const console::Console& console);

/// Checks what start-up has found. Raises InputError for damaged ini files in the installation's folder, and the
/// engine's error, with the file's name, if the current patient database does not open.
void check_configuration(const wizard::InstallationConfig& config);

}  // namespace firststeps_batch
