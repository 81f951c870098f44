// Checks of a control as it is shown: whether its text fits, and the name that a screen reader uses for it.
#pragma once

#include <string>

#include "tests/window/driver/wizard_program.h"

namespace window_driver {

/// Says which part of the control's text cannot be seen; empty if all can, and for controls that scroll. `font` is the
/// font that the installation names.
std::string cut_text(const WizardProgram& program, const form::Control& control, const std::string& font);

/// The name that the system's own accessibility gives; needs a ComSession.
std::string accessible_name(HWND window);

}  // namespace window_driver
