// The console tool for patient databases. Each command has a source of its own; one table lists them.
#pragma once

#include <string>
#include <vector>

#include "apps/console/console.h"

namespace patientdb {

/// Runs one command and returns the exit code. `arguments` does not hold the program's name.
int run(const std::vector<std::string>& arguments, console::Console& console);

}  // namespace patientdb
