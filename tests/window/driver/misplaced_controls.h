// What is wrong with the places of a page's controls, as their windows have them.
#pragma once

#include <string>

#include "tests/window/driver/wizard_program.h"

namespace window_driver {

/// Names every control that lies outside what holds it, or over another one; empty where none does. On a page that
/// scrolls, what is below or above counts as inside.
std::string misplaced(const WizardProgram& program);

}  // namespace window_driver
