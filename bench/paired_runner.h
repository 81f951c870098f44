// Measures a job of ours beside the same job written straight against SQLite's C interface. Both run in turn in one
// process, so that what disturbs one disturbs the other; medians are compared.
#pragma once

#include <functional>
#include <string>

namespace bench {

struct Job {
  std::string name;
  double limit;  ///< the most that ours may take, in times of the straight one
  int rounds;
  std::function<void()> ours;
  std::function<void()> straight;
  /// Unmeasured, before each run of either: the files that it works on.
  std::function<void()> prepare = {};
};

struct Result {
  double ours_ms = 0, straight_ms = 0;
  double ratio() const { return ours_ms / straight_ms; }
};

/// One round of each goes unmeasured first.
Result measure(const Job& job);

}  // namespace bench
