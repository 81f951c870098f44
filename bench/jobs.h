// The measured jobs. A new one is a function here and its line in bench_database.cpp.
#pragma once

#include <filesystem>

#include "bench/paired_runner.h"

namespace bench {

// Each works on files of its own in the folder.
Job creation_job(const std::filesystem::path& folder);
Job reading_job(const std::filesystem::path& folder);

}  // namespace bench
