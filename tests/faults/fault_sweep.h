// Runs a piece of work once for each point at which a fault can happen, each time in a process of its own, and lets the
// test look at what is there afterwards.
#pragma once

#include <functional>
#include <string_view>

#include "tests/faults/fault_plan.h"

namespace faults {

/// How a run ended.
enum class Ended { Succeeded, Failed, Died };

struct Work {
  /// Puts the state before on the disk.
  std::function<void()> prepare;
  /// What goes before in memory, without faults; may be empty. The runs begin with what it leaves.
  std::function<void()> approach;
  /// True where it says that it has succeeded.
  std::function<bool()> run;
  /// After each run, in the process of the test.
  std::function<void(Ended)> check;
};

/// Sweeps over the points of every fault and prints how many there were: every point where the environment has
/// FAULT_POINTS=all, else at most that many (20) of each fault, evenly spread. Failures of the checks name fault and
/// point; a sweep ends with the first one.
void sweep(std::string_view name, const Work& work);

/// Prepares and runs the work once in this process, with its approach and without a fault; what it says. The keys that
/// it derives are at hand in the runs that follow.
bool run_undisturbed(const Work& work);

/// Runs the work once, in a process of its own, with a fault at this point.
Ended run_with_fault(Fault fault, int at, const Work& work);

/// Runs the work once, in a process of its own, and cuts the power when it has said that it has succeeded.
Ended run_and_cut_power(Fault power_cut, const Work& work);

}  // namespace faults
