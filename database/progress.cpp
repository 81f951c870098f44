#include "database/progress.h"

#include "support/error.h"

namespace database {

void end_if_interrupted(const Progress* progress) {
  if (progress != nullptr && progress->interrupted()) {
    throw support::RuntimeError(support::error_number::cancelled, "Interrupted; nothing of it was kept.");
  }
}

}  // namespace database
