#include "apps/firststeps_batch/installation.h"

#include <filesystem>

namespace firststeps_batch {

std::string default_hive(std::string_view folder) { return (std::filesystem::path(folder) / "registry.reg").string(); }

}  // namespace firststeps_batch
