// bench_database [TEXT]: measures all jobs, or those whose name holds TEXT. It prints each job's time beside that of
// the straight one: medians in milliseconds or, for a growth, how many times longer ten times the rows take; then the
// ratio, and the two ratios between which half of the turns lie. Exit code 1 if a job takes longer than its limit
// allows.
#include <cstdio>
#include <exception>
#include <random>

#include "bench/jobs.h"
#include "database/engine/embedded/page_memory.h"

namespace {

/// A folder for this run; it is removed at the end.
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
    bench::creation_job,        bench::reading_job, bench::ladder_job,      bench::pump_conversion_job,
    bench::pump_statistics_job, bench::summary_job, bench::index_ahead_job, bench::backup_job,
    bench::export_job,          bench::check_job,
};

constexpr bench::GrowthJob (*growth_jobs[])(const std::filesystem::path&) = {
    bench::ladder_growth_job,  bench::pump_conversion_growth_job, bench::pump_statistics_growth_job,
    bench::summary_growth_job, bench::index_growth_job,
};

bool print(const std::string& name, const bench::Result& result, double limit) {
  const bool within = result.ratio.median <= limit;
  std::printf("%-44s %10.2f %12.2f %8.2f %5.2f-%-5.2f %7.2f%s\n", name.c_str(), result.ours, result.straight,
              result.ratio.median, result.ratio.low, result.ratio.high, limit, within ? "" : "  over");
  std::fflush(stdout);
  return within;
}

double limit_of(const bench::Job& job) { return job.limit; }
double limit_of(const bench::GrowthJob&) { return bench::growth_limit; }

/// Runs the jobs whose name holds the wanted text. True if all of them stay within their limits.
template <typename Makers>
bool run(const Makers& makers, const std::filesystem::path& folder, const std::string& wanted) {
  bool all_within = true;
  for (const auto& make : makers) {
    const auto job = make(folder);
    if (job.name.find(wanted) == std::string::npos) continue;
    all_within = print(job.name, bench::measure(job), limit_of(job)) && all_within;
  }
  return all_within;
}

}  // namespace

int main(int count, char** words) {
  const std::string wanted = count > 1 ? words[1] : "";
  // SQLite serves both sides in this process, and a straight job may be the first that uses it.
  engine::embedded::keep_pages_together();
  try {
    const WorkFolder folder;
    std::printf("%-44s %10s %12s %8s %11s %7s\n", "job", "ours", "straight", "ratio", "half within", "limit");
    const bool jobs_within = run(jobs, folder.path(), wanted);
    const bool growths_within = run(growth_jobs, folder.path(), wanted);
    return jobs_within && growths_within ? 0 : 1;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_database: %s\n", error.what());
    return 2;
  }
}
