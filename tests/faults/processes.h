// Runs work in processes of its own, also several that do the same at the same time.
#pragma once

#include <sys/types.h>

#include <functional>

namespace faults {

/// Starts a process that ends with the result of `run`, or with -1 if it throws.
pid_t start_process(const std::function<int()>& run);

/// Waits for the process's end and returns its exit code. The test fails if a signal has ended it.
int wait_for(pid_t process);

/// Runs `run(0)` to `run(count - 1)`, each in a process of its own, and waits for all. If one does not return 0, the
/// test fails.
void run_together(int count, const std::function<int(int process)>& run);

}  // namespace faults
