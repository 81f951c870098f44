// The wizard without a window: the pages are answered from a file, then the finish writes what a user's run would
// write.
#pragma once

#include <string>
#include <vector>

#include "apps/console/console.h"

namespace firststeps_batch {

/// Runs the program, arguments without its name, and returns the exit code.
int run(const std::vector<std::string>& arguments, console::Console& console);

}  // namespace firststeps_batch
