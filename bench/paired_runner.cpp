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

double median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

Result measure(const Job& job) {
  std::vector<double> ours, straight;
  milliseconds_of(job, job.ours);
  milliseconds_of(job, job.straight);
  for (int round = 0; round < job.rounds; ++round) {
    // Who goes first changes, so that neither always finds the caches that the other left.
    if (round % 2 == 0) ours.push_back(milliseconds_of(job, job.ours));
    straight.push_back(milliseconds_of(job, job.straight));
    if (round % 2 != 0) ours.push_back(milliseconds_of(job, job.ours));
  }
  return {median(ours), median(straight)};
}

}  // namespace bench
