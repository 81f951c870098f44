// The wizard's ports on this machine, for every program that runs the wizard.
#pragma once

#include <string>

#include "wizard/ports.h"

namespace apps {

/// The ports on this machine. `own_folder` is the folder of the installation that the wizard configures,
/// `program_folder` the folder of the program's file (Windows paths with their trailing backslash). Both are searched
/// for text tables in their folder "texts". Registry and user must outlive the ports.
wizard::Ports host_ports(support::Registry& registry, wizard::UserPort& user, const std::string& own_folder,
                         const std::string& program_folder);

}  // namespace apps
