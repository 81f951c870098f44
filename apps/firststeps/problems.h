// What the user is told after a finish that could not write everything.
#pragma once

#include <string>

#include "wizard/finish_report.h"
#include "wizard/installation_config.h"

namespace firststeps {

/// A sentence in the user's language, then a line for each thing that is missing; where they are many, for the first
/// ones. Empty where everything was written.
std::string problem_message(const wizard::InstallationConfig& config, const wizard::FinishReport& report);

}  // namespace firststeps
