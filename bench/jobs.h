// The measured jobs. To add one, declare its function here and add its line to bench_database.cpp.
#pragma once

#include <filesystem>

#include "bench/paired_runner.h"

namespace bench {

// Each job works on its own files in the folder.
Job creation_job(const std::filesystem::path& folder);
Job reading_job(const std::filesystem::path& folder);
Job ladder_job(const std::filesystem::path& folder);
Job pump_conversion_job(const std::filesystem::path& folder);
Job pump_statistics_job(const std::filesystem::path& folder);
Job summary_job(const std::filesystem::path& folder);
Job backup_job(const std::filesystem::path& folder);
Job export_job(const std::filesystem::path& folder);
Job check_job(const std::filesystem::path& folder);
// Compares the walk that derives keys ahead with the one that does not. The limit holds for two processors.
Job index_ahead_job(const std::filesystem::path& folder);
GrowthJob ladder_growth_job(const std::filesystem::path& folder);
GrowthJob pump_conversion_growth_job(const std::filesystem::path& folder);
GrowthJob pump_statistics_growth_job(const std::filesystem::path& folder);
GrowthJob summary_growth_job(const std::filesystem::path& folder);
GrowthJob index_growth_job(const std::filesystem::path& folder);

}  // namespace bench
