// Measures a job of ours and the same job written straight against SQLite's C interface. Both run in turn in one
// process, so that a disturbance affects both. The medians over all turns are compared.
#pragma once

#include <functional>
#include <string>

namespace bench {

struct Job {
  std::string name;
  double limit;  ///< ours may take at most this many times as long as the straight one
  std::function<void()> ours;
  std::function<void()> straight;
  /// Prepares the files that a run works on. Called before each run of either side, and not measured.
  std::function<void()> prepare = {};
  int rounds = 9;
};

/// The same job over few rows and over ten times as many.
struct GrowthJob {
  std::string name;
  Job large, small;
};

/// Our growth may be greater than that of the straight one by this factor.
inline constexpr double growth_limit = 1.05;

/// Half of the turns are between low and high.
struct Spread {
  double low = 0, median = 0, high = 0;
};

struct Result {
  double ours = 0, straight = 0;  ///< medians: milliseconds, or how many times longer the large job takes
  Spread ratio;                   ///< of ours to the straight one, turn by turn
};

// The first turn of each side is not measured.
Result measure(const Job& job);
Result measure(const GrowthJob& job);

}  // namespace bench
