// Finds what is wrong with the places of a page's controls, as their windows have them.
#pragma once

#include <string>
#include <vector>

#include "tests/window/driver/wizard_program.h"

namespace window_driver {

/// Of the controls that can be seen, names every one that lies outside its container or over another one; empty if none
/// does. On a page that scrolls, places below and above count as inside.
std::string misplaced(const WizardProgram& program, const std::vector<const form::Control*>& seen);

}  // namespace window_driver
