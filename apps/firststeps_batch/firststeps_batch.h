// The wizard without a window. The pages are answered from a file; then the finish writes what it would write for a
// user.
#pragma once

#include <string>
#include <vector>

#include "apps/console/console.h"

namespace firststeps_batch {

/// Runs the program and returns the exit code. `arguments` does not hold the program's name.
int run(const std::vector<std::string>& arguments, console::Console& console);

}  // namespace firststeps_batch
