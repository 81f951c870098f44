#include "tests/faults/fault_sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string>

#include "support/error.h"
#include "tests/engine/quick_keys.h"
#include "tests/faults/fault_vfs.h"
#include "tests/faults/processes.h"

namespace faults {
namespace {

constexpr Fault faults[] = {Fault::DiskError, Fault::ShortWrite, Fault::FullDisk,
                            Fault::Killed,    Fault::PowerCut,   Fault::TornPowerCut};
constexpr int failed = 1;

bool run_with(Fault fault, int at, const Work& work) {
  engine::test::repeat_salts();
  forget_unsynced();
  FaultPlan::current().arm(fault, at);
  return work.run();
}

void begin(const Work& work) {
  work.prepare();
  if (work.approach) work.approach();
}

void check(const Work& work, Ended ended) {
  try {
    work.check(ended);
  } catch (const support::RuntimeError& error) {
    ADD_FAILURE() << "error " << error.number() << ": " << error.what();
  }
}

int step_between(int points) {
  const char* const wanted = std::getenv("FAULT_POINTS");
  if (wanted != nullptr && std::string_view(wanted) == "all") return 1;
  const int most_points = wanted == nullptr ? 20 : std::max(1, std::atoi(wanted));
  return (points + most_points - 1) / most_points;
}

/// Returns the number of runs.
int sweep_over(Fault fault, int points, const Work& work) {
  EXPECT_GT(points, 0) << name_of(fault);
  int runs = 0;
  for (int at = points; at > 0 && !testing::Test::HasFailure(); at -= step_between(points), ++runs) {
    SCOPED_TRACE(std::string(name_of(fault)) + " at " + std::to_string(at) + " of " + std::to_string(points));
    check(work, run_with_fault(fault, at, work));
  }
  return runs;
}

}  // namespace

bool run_undisturbed(const Work& work) {
  begin(work);
  const bool succeeded = run_with(Fault::None, 0, work);
  FaultPlan::current().disarm();
  return succeeded;
}

Ended run_with_fault(Fault fault, int at, const Work& work) {
  work.prepare();
  engine::test::repeat_salts();
  const int code = wait_for(start_process([&] { return run_with(fault, at, work) ? 0 : failed; }));
  if (code == died) return Ended::Died;
  return code == 0 ? Ended::Succeeded : Ended::Failed;
}

Ended run_and_cut_power(Fault power_cut, const Work& work) {
  work.prepare();
  const int code = wait_for(start_process([&] {
    if (!run_with(power_cut, 0, work)) return failed;
    FaultPlan::current().lose_unsynced();
    return 0;
  }));
  return code == 0 ? Ended::Succeeded : Ended::Failed;
}

void sweep(std::string_view name, const Work& work) {
  install_fault_vfs();
  // The first run fills what the process keeps in memory, as it is in all later runs.
  EXPECT_TRUE(run_undisturbed(work)) << "without a fault";
  EXPECT_TRUE(run_undisturbed(work)) << "without a fault";
  const FaultPlan counted = FaultPlan::current();
  check(work, Ended::Succeeded);
  begin(work);
  int all_points = 0, all_runs = 0;
  for (const Fault fault : faults) {
    if (testing::Test::HasFailure()) return;
    const int points = counted.points(fault);
    all_points += points;
    all_runs += sweep_over(fault, points, work);
  }
  std::cout << "    faults at " << all_runs << " of " << all_points << " points of " << name << '\n';
}

}  // namespace faults
