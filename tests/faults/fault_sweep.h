// Runs a piece of work once for each point at which a fault can happen, each time in a process of its own. After each
// run, the test can check what is left.
#pragma once

#include <functional>
#include <string_view>

#include "tests/faults/fault_plan.h"

namespace faults {

/// How a run ended.
enum class Ended { Succeeded, Failed, Died };

struct Work {
  /// Puts the state before the work on the disk.
  std::function<void()> prepare;
  /// What happens before in memory, without faults; may be empty. Each run begins with its result.
  std::function<void()> approach;
  /// The work. True if it reports success.
  std::function<bool()> run;
  /// Is called after each run, in the test's process.
  std::function<void(Ended)> check;
};

/// Sweeps over the points of every fault and prints how many there were. With FAULT_POINTS=all in the environment it
/// takes every point, else at most that many (default 20) of each fault, evenly spread. A failed check names fault and
/// point; the first failure ends the sweep.
void sweep(std::string_view name, const Work& work);

/// Prepares and runs the work once in this process, with its approach and without a fault, and returns what it reports.
/// Later runs can use the keys that it derived.
bool run_undisturbed(const Work& work);

/// Runs the work once, in a process of its own, with a fault at this point.
Ended run_with_fault(Fault fault, int at, const Work& work);

/// Runs the work once, in a process of its own, and cuts the power after it has reported success.
Ended run_and_cut_power(Fault power_cut, const Work& work);

}  // namespace faults
