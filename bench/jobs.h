// The measured jobs. A new one is a function here and its line in bench_database.cpp.
#pragma once

#include <filesystem>

#include "bench/paired_runner.h"

namespace bench {

// Each works on files of its own in the folder.
Job creation_job(const std::filesystem::path& folder);
Job reading_job(const std::filesystem::path& folder);
Job ladder_job(const std::filesystem::path& folder);
Job pump_conversion_job(const std::filesystem::path& folder);
Job pump_statistics_job(const std::filesystem::path& folder);
Job summary_job(const std::filesystem::path& folder);
Job backup_job(const std::filesystem::path& folder);
Job export_job(const std::filesystem::path& folder);
Job check_job(const std::filesystem::path& folder);
// The walk with keys derived ahead beside the one without; the limit is that of two processors.
Job index_ahead_job(const std::filesystem::path& folder);
GrowthJob ladder_growth_job(const std::filesystem::path& folder);
GrowthJob pump_conversion_growth_job(const std::filesystem::path& folder);
GrowthJob pump_statistics_growth_job(const std::filesystem::path& folder);
GrowthJob summary_growth_job(const std::filesystem::path& folder);
GrowthJob index_growth_job(const std::filesystem::path& folder);

}  // namespace bench
