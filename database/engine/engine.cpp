#include "database/engine/engine.h"

namespace engine {

Transaction::~Transaction() {
  if (!database_) return;
  try {
    database_->rollback_transaction();
  } catch (const support::RuntimeError&) {
    // The database was closed or has rolled back by itself: nothing of the transaction is left either way.
  }
}

}  // namespace engine
