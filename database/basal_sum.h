// Units of basal insulin. Rates follow each other; each is in force until the next one begins.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "database/engine/value.h"

namespace database::basal {

inline constexpr std::int64_t seconds_of_day = 86400;
inline constexpr std::int64_t end_of_day = seconds_of_day - 1;
/// How long before the start a rate may begin that is still in force, and how long an entry may last.
inline constexpr std::int64_t look_back = 7 * seconds_of_day, longest_interval = seconds_of_day;

inline std::int64_t seconds(engine::Date moment) {
  return std::llround(moment.days * static_cast<double>(seconds_of_day));
}
inline engine::Date moment_of(std::int64_t seconds) {
  return {static_cast<double>(seconds) / static_cast<double>(seconds_of_day)};
}

/// Rounds halves away from zero. A value that is a half in decimal digits counts as one, even if its binary number lies
/// a little below.
inline double rounded(double value, double scale) { return std::round(value * scale * (1 + 1e-15)) / scale; }

/// Adds up the units of basal rates, entry by entry.
class Sum {
 public:
  /// Adds a rate that is in force from this second on. `duration`, in seconds, counts where the interval is longer than
  /// a day.
  void add(std::int64_t second, double units_per_hour, double duration) {
    close(second);
    begin_ = second;
    rate_ = units_per_hour;
    duration_ = duration;
    open_ = true;
  }

  double total(std::int64_t end) {
    close(end);
    return rounded(total_, 10000);
  }

 private:
  void close(std::int64_t end) {
    if (!open_) return;
    open_ = false;
    const std::int64_t interval = std::abs(end - begin_);
    const double lasted = interval > longest_interval ? duration_ : static_cast<double>(interval);
    total_ += rounded(rate_ / 3600 * lasted, 1000);
  }

  bool open_ = false;
  std::int64_t begin_ = 0;
  double rate_ = 0, duration_ = 0, total_ = 0;
};

}  // namespace database::basal
