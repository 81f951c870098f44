// Runs a piece of work once for each point at which a fault can happen, each time in a process of its own, and lets the
// test look at what is there afterwards.
#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "tests/faults/fault_plan.h"

namespace faults {

/// How a run ended.
enum class Ended { Succeeded, Failed, Died };

struct Work {
  /// Puts the state before on the disk.
  std::function<void()> prepare;
  /// True where it says that it has succeeded.
  std::function<bool()> run;
  /// After each run, in the process of the test.
  std::function<void(Ended)> check;
};

/// All faults; those of the disk alone, for work that is told of by what it returns.
std::span<const Fault> every_fault();

/// Sweeps over every point of every fault and prints how many there were. Failures of the checks name fault and point;
/// a sweep ends with the first one.
void sweep(std::string_view name, const Work& work);

/// Runs it in a process of its own; its exit code, and a failure of the test where a signal has ended it.
int run_apart(const std::function<int()>& run);

}  // namespace faults
