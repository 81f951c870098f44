// What a run tells whoever asked for a report when it has finished.
#pragma once

#include <string>

#include "wizard/assistant.h"

namespace firststeps {

/// Writes what was written, and what was worth a word before, into the file, a host path. False when it could not be
/// written, true where no file is named.
bool write_report(const std::string& file, const wizard::frmAssistantFirstSteps& assistant);

}  // namespace firststeps
