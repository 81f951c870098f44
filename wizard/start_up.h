// Finds out which installation this run configures, from the command line, the ini files beside the program and the
// registry.
#pragma once

#include <string>
#include <string_view>

#include "wizard/context.h"

namespace wizard {

/// A field of the command line, whose fields are separated by "|": 0 the whole line, 1 the installation's name, 2 the
/// file name of a patient database; empty for any other number.
std::string command_line_field(std::string_view command_line, int field);

/// The registry key (`RegKey`) of the installation that a run with this command line configures; empty if none is
/// named. Reads only "vantrix.ini". Never raises.
std::string installation_key(const Ports& ports, std::string_view command_line);

/// What the user sees of that installation before the run begins: names, font, texts and the product. Only reads. Never
/// raises.
InstallationConfig known_installation(const Ports& ports, std::string_view command_line);

/// Fills `context.config`. False if the program must end at once: no installation name in "vantrix.ini" and no command
/// line. What cannot be read keeps its default. In the professional edition, a missing index database is created. Never
/// raises.
bool discover_installation(Context& context, std::string_view command_line);

}  // namespace wizard
