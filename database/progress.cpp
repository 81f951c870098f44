#include "database/progress.h"

#include "support/error.h"

namespace database {

void end_if_interrupted(const Progress* progress) {
  constexpr int cancelled_by_user = 3059;
  if (progress != nullptr && progress->interrupted()) {
    throw support::RuntimeError(cancelled_by_user, "Interrupted; nothing of it was kept.");
  }
}

}  // namespace database
