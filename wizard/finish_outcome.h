// What a finish wrote, in words for the user: the last thing that the wizard shows.
#pragma once

#include <string>

#include "wizard/finish_report.h"
#include "wizard/installation_config.h"

namespace wizard {

/// What was written, each place below what lies there; what was not written is left out. Lines end in "\r\n".
std::string written_text(const InstallationConfig& config, const FinishReport& report);

}  // namespace wizard
