// The console tool over patient databases: one command a file, listed in one table.
#pragma once

#include <string>
#include <vector>

#include "apps/console/console.h"

namespace patientdb {

/// Runs one command, arguments without the program's name, and returns the exit code.
int run(const std::vector<std::string>& arguments, console::Console& console);

}  // namespace patientdb
