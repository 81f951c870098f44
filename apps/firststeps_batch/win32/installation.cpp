#include "apps/firststeps_batch/installation.h"

namespace firststeps_batch {

std::string default_hive(std::string_view) { return {}; }

}  // namespace firststeps_batch
