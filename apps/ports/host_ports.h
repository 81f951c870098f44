// The wizard's ports on this machine, for every program that runs the wizard.
#pragma once

#include <string>

#include "wizard/ports.h"

namespace apps {

/// Ports over this machine. `own_folder` is the folder of the installation that the wizard takes for its own,
/// `program_folder` the one that the program lies in (Windows paths, with their trailing backslash): text tables are
/// looked for in the folder "texts" of both. Registry and user must outlive the ports.
wizard::Ports host_ports(support::Registry& registry, wizard::UserPort& user, const std::string& own_folder,
                         const std::string& program_folder);

}  // namespace apps
