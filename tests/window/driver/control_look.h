// What can be said of a control as it is shown: whether its text fits, and the name under which a screen reader speaks
// of it.
#pragma once

#include <string>

#include "tests/window/driver/wizard_program.h"

namespace window_driver {

/// Says what of the control's text cannot be seen; empty where all can, and for controls that scroll. `font` is the
/// face that the installation names.
std::string cut_text(const WizardProgram& program, const form::Control& control, const std::string& font);

/// As the system's own accessibility gives it; needs a ComSession.
std::string accessible_name(HWND window);

}  // namespace window_driver
