// Finds out which installation this run configures: the command line, the ini files beside the program, the registry.
#pragma once

#include <string>
#include <string_view>

#include "wizard/context.h"

namespace wizard {

/// The "|"-separated fields of the command line: 0 the whole line, 1 the installation's name, 2 the file name of a
/// patient database; empty for any other.
std::string command_line_field(std::string_view command_line, int field);

/// The registry key of the installation that a run with this command line configures (`RegKey`); empty where none is
/// named. Only reads "vantrix.ini". Never raises.
std::string installation_key(const Ports& ports, std::string_view command_line);

/// What the user sees of that installation before anything is begun: names, font, texts and the product. Only reads.
/// Never raises.
InstallationConfig known_installation(const Ports& ports, std::string_view command_line);

/// Fills `context.config`. False where the program must end at once: no installation name in "vantrix.ini"
/// and no command line. Whatever cannot be read keeps its default. In the professional edition a missing index database
/// is created. Never raises.
bool discover_installation(Context& context, std::string_view command_line);

}  // namespace wizard
