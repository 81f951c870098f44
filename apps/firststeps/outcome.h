// What a run tells when it has finished: the user of what could not be written, and whoever asked for it of everything.
#pragma once

#include <string>

#include "wizard/finish_report.h"
#include "wizard/installation_config.h"

namespace firststeps {

/// A sentence in the user's language, then a line for each thing that is missing; where they are many, for the first
/// ones. Empty where everything was written.
std::string problem_message(const wizard::InstallationConfig& config, const wizard::FinishReport& report);

/// Writes the report into the file, a host path. False when it could not be written, true where no file is named.
bool write_report(const std::string& file, const wizard::FinishReport& report);

}  // namespace firststeps
