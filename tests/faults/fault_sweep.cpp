#include "tests/faults/fault_sweep.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <string>

#include "support/error.h"
#include "tests/faults/fault_vfs.h"

namespace faults {
namespace {

constexpr Fault faults[] = {Fault::DiskError, Fault::ShortWrite, Fault::FullDisk,
                            Fault::Killed,    Fault::PowerCut,   Fault::TornPowerCut};
constexpr int failed = 1;

/// A new database gets the same salt in each run, so that its key is derived once.
void repeat_salts() { sqlite3_test_control(SQLITE_TESTCTRL_PRNG_RESTORE); }

bool run_with(Fault fault, int at, const Work& work) {
  repeat_salts();
  FaultPlan::current().arm(fault, at);
  return work.run();
}

void check(const Work& work, Ended ended) {
  try {
    work.check(ended);
  } catch (const support::RuntimeError& error) {
    ADD_FAILURE() << "error " << error.number() << ": " << error.what();
  }
}

/// Twice: the first run fills what the process keeps in memory, as in all the runs that follow.
int count_points(Fault fault, const Work& work) {
  int points = 0;
  for (int run = 0; run < 2; ++run) {
    work.prepare();
    EXPECT_TRUE(run_with(fault, 0, work)) << "without a fault";
    points = FaultPlan::current().disarm();
    check(work, Ended::Succeeded);
  }
  return points;
}

Ended ended(int code) {
  if (code == died) return Ended::Died;
  return code == 0 ? Ended::Succeeded : Ended::Failed;
}

/// False where a check has failed.
bool sweep_over(Fault fault, int points, const Work& work) {
  for (int at = 1; at <= points; ++at) {
    SCOPED_TRACE(std::string(name_of(fault)) + " at " + std::to_string(at) + " of " + std::to_string(points));
    work.prepare();
    check(work, ended(run_apart([&] { return run_with(fault, at, work) ? 0 : failed; })));
    if (testing::Test::HasFailure()) return false;
  }
  return true;
}

}  // namespace

std::span<const Fault> every_fault() { return faults; }

int run_apart(const std::function<int()>& run) {
  std::cout.flush();
  const pid_t child = fork();
  if (child == 0) _exit(run());
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
  return WEXITSTATUS(status);
}

void sweep(std::string_view name, const Work& work) {
  install_fault_vfs();
  sqlite3_test_control(SQLITE_TESTCTRL_PRNG_SAVE);
  int all_points = 0;
  for (const Fault fault : faults) {
    const int points = count_points(fault, work);
    EXPECT_GT(points, 0) << name_of(fault);
    if (testing::Test::HasFailure() || !sweep_over(fault, points, work)) return;
    all_points += points;
  }
  std::cout << "    faults at " << all_points << " points of " << name << '\n';
}

}  // namespace faults
