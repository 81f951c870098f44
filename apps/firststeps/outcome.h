// What a run tells whoever asked for a report when it has finished.
#pragma once

#include <string>

#include "wizard/finish_report.h"

namespace firststeps {

/// Writes the report into the file, a host path. False when it could not be written, true where no file is named.
bool write_report(const std::string& file, const wizard::FinishReport& report);

}  // namespace firststeps
