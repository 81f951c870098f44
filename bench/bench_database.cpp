// bench_database [TEXT]: prints each job's time beside the straight one's, of all jobs or of those whose name holds the
// text. Exit code 1 where a job takes longer than its limit allows.
#include <cstdio>
#include <exception>
#include <random>

#include "bench/jobs.h"

namespace {

/// A folder of this run's own, gone at its end.
class WorkFolder {
 public:
  WorkFolder()
      : path_(std::filesystem::temp_directory_path() / ("bench_database." + std::to_string(std::random_device{}()))) {
    std::filesystem::create_directories(path_);
  }
  ~WorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

constexpr bench::Job (*jobs[])(const std::filesystem::path&) = {
    bench::creation_job,        bench::reading_job,
    bench::ladder_job,          bench::ladder_growth_job,
    bench::pump_conversion_job, bench::pump_conversion_growth_job,
    bench::pump_statistics_job, bench::pump_statistics_growth_job,
    bench::summary_job,         bench::summary_growth_job,
    bench::index_growth_job,    bench::index_ahead_job,
};

bool run(const bench::Job& job) {
  const bench::Result result = bench::measure(job);
  const bool within = result.ratio() <= job.limit;
  std::printf("%-44s %10.2f %12.2f %8.2f %7.2f%s\n", job.name.c_str(), result.ours_ms, result.straight_ms,
              result.ratio(), job.limit, within ? "" : "  over");
  std::fflush(stdout);
  return within;
}

}  // namespace

int main(int count, char** words) {
  const std::string wanted = count > 1 ? words[1] : "";
  try {
    const WorkFolder folder;
    bool all_within = true;
    std::printf("%-44s %10s %12s %8s %7s\n", "job", "ours ms", "straight ms", "ratio", "limit");
    for (const auto& make : jobs) {
      const bench::Job job = make(folder.path());
      if (job.name.find(wanted) != std::string::npos) all_within = run(job) && all_within;
    }
    return all_within ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_database: %s\n", error.what());
    return 2;
  }
}
