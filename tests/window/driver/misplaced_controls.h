// Finds what is wrong with the places of a page's controls, as their windows have them.
#pragma once

#include <string>

#include "tests/window/driver/wizard_program.h"

namespace window_driver {

/// Names every control that lies outside its container or over another control; empty if none does. On a page that
/// scrolls, places below and above count as inside.
std::string misplaced(const WizardProgram& program);

}  // namespace window_driver
