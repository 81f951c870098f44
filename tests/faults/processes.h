// Work in processes of its own, and several processes that do the same at the same time.
#pragma once

#include <sys/types.h>

#include <functional>

namespace faults {

/// Starts a process that ends with what `run` returns, or with -1 where it throws.
pid_t start_process(const std::function<int()>& run);

/// Waits for its end; its exit code, and a failure of the test where a signal has ended it.
int wait_for(pid_t process);

/// Runs `run(0)` to `run(count - 1)`, each in a process of its own, and waits for all. Each is to return 0, else the
/// test fails.
void run_together(int count, const std::function<int(int process)>& run);

}  // namespace faults
