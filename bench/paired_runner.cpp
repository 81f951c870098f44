#include "bench/paired_runner.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace bench {
namespace {

double milliseconds_of(const Job& job, const std::function<void()>& work) {
  if (job.prepare) job.prepare();
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

struct Turn {
  double ours = 0, straight = 0;
};

/// The sides take turns in going first, so that none always finds the caches that the other one left.
Turn take_turn(const Job& job, int round) {
  Turn turn;
  if (round % 2 == 0) turn.ours = milliseconds_of(job, job.ours);
  turn.straight = milliseconds_of(job, job.straight);
  if (round % 2 != 0) turn.ours = milliseconds_of(job, job.ours);
  return turn;
}

Spread spread_of(std::vector<double> values) {
  std::ranges::sort(values);
  return {values[values.size() / 4], values[values.size() / 2], values[values.size() - 1 - values.size() / 4]};
}

Result result_of(const std::vector<Turn>& turns) {
  std::vector<double> ours, straight, ratios;
  for (const Turn& turn : turns) {
    ours.push_back(turn.ours);
    straight.push_back(turn.straight);
    ratios.push_back(turn.ours / turn.straight);
  }
  return {spread_of(ours).median, spread_of(straight).median, spread_of(ratios)};
}

}  // namespace

Result measure(const Job& job) {
  take_turn(job, 0);
  std::vector<Turn> turns;
  turns.reserve(static_cast<std::size_t>(job.rounds));
  for (int round = 0; round < job.rounds; ++round) turns.push_back(take_turn(job, round));
  return result_of(turns);
}

Result measure(const GrowthJob& job) {
  take_turn(job.large, 0);
  take_turn(job.small, 0);
  std::vector<Turn> growths;
  growths.reserve(static_cast<std::size_t>(job.large.rounds));
  for (int round = 0; round < job.large.rounds; ++round) {
    const Turn large = take_turn(job.large, round), small = take_turn(job.small, round);
    growths.push_back({large.ours / small.ours, large.straight / small.straight});
  }
  return result_of(growths);
}

}  // namespace bench
