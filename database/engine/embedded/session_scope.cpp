#include "database/engine/embedded/session_scope.h"

#include <utility>

namespace engine::embedded {

WaitingScope::WaitingScope(Session& session) : session_(session) {
  if (session.waiting_scopes_++ == 0 && session.connection_ && !session.in_transaction_) {
    session.connection_->begin_waiting();
  }
}

ReadScope::ReadScope(Session& session) : session_(session), waiting_(session) {
  session.require_open();
  if (!session.has_catalogue() || session.connection_->in_transaction()) return;
  session.connection_->run("BEGIN");
  own_transaction_ = true;
  try {
    session.adopt_catalogue();
  } catch (...) {
    end();
    throw;
  }
}

void ReadScope::end() noexcept {
  try {
    if (std::exchange(own_transaction_, false)) session_.connection_->run("COMMIT");
  } catch (const support::RuntimeError&) {
    // Nothing was written. If the transaction stayed open, everything that is written next would belong to it and be
    // lost.
    session_.give_up_transaction();
  }
}

AtomicChange::AtomicChange(Session& session) : session_(session), waiting_(session) {
  session.prepare_change();
  own_transaction_ = !session.connection_ || !session.connection_->in_transaction();
  if (own_transaction_) {
    session.begin_change();
  } else {
    session.connection_->run("SAVEPOINT change");
    catalogue_before_ = session.catalogue_;
  }
}

AtomicChange::~AtomicChange() {
  if (finished_) return;
  if (own_transaction_) {
    session_.undo_change();
    return;
  }
  try {
    session_.connection_->run("ROLLBACK TO change");
    session_.connection_->run("RELEASE change");
  } catch (const support::RuntimeError&) {
    // The whole transaction was rolled back already. Its commit will report that.
  }
  session_.catalogue_ = catalogue_before_;
}

void AtomicChange::done() {
  finished_ = true;
  if (own_transaction_) {
    session_.end_change();
  } else {
    session_.connection_->run("RELEASE change");
  }
}

}  // namespace engine::embedded
