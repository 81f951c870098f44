#include "database/progress.h"

#include <algorithm>
#include <limits>

#include "support/error.h"

namespace database {

std::int32_t progress_value(std::int64_t rows) {
  return static_cast<std::int32_t>(std::min<std::int64_t>(rows, std::numeric_limits<std::int32_t>::max()));
}

void end_if_interrupted(const Progress* progress) {
  if (progress != nullptr && progress->interrupted()) {
    throw support::RuntimeError(support::error_number::cancelled, "Interrupted; nothing of it was kept.");
  }
}

}  // namespace database
