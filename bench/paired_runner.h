// Measures a job of ours beside the same job written straight against SQLite's C interface. Both run in turn in one
// process, so that what disturbs one disturbs the other; what is compared are the medians over all turns.
#pragma once

#include <functional>
#include <string>

namespace bench {

struct Job {
  std::string name;
  double limit;  ///< the most that ours may take, in times of the straight one
  std::function<void()> ours;
  std::function<void()> straight;
  /// Unmeasured, before each run of either: the files that it works on.
  std::function<void()> prepare = {};
  int rounds = 9;
};

/// One job over few rows and over ten times as many.
struct GrowthJob {
  std::string name;
  Job large, small;
};

/// Ours may grow by this much more than the straight one does.
inline constexpr double growth_limit = 1.05;

/// Half of the turns lie between low and high.
struct Spread {
  double low = 0, median = 0, high = 0;
};

struct Result {
  double ours = 0, straight = 0;  ///< medians: milliseconds, or how many times longer the large job takes
  Spread ratio;                   ///< of ours to the straight one, turn by turn
};

// One turn of each goes unmeasured first.
Result measure(const Job& job);
Result measure(const GrowthJob& job);

}  // namespace bench
