// What a session does as a whole: the reads of one operation, and a change.
#pragma once

#include <memory>

#include "database/engine/embedded/session.h"

namespace engine::embedded {

/// One operation, which waits for the file's locks as long as the busy time in all. In a transaction that is begun and
/// not committed yet, all its operations are one: none waits anew for a reader that keeps the changes in memory.
class WaitingScope {
 public:
  explicit WaitingScope(Session& session);
  ~WaitingScope() { --session_.waiting_scopes_; }
  WaitingScope(const WaitingScope&) = delete;
  WaitingScope& operator=(const WaitingScope&) = delete;

 private:
  Session& session_;
};

/// Reads of one operation that see one state of the file, and look at it once to learn whether the layout has changed.
class ReadScope {
 public:
  explicit ReadScope(Session& session);
  ~ReadScope() { end(); }
  ReadScope(const ReadScope&) = delete;
  ReadScope& operator=(const ReadScope&) = delete;

 private:
  void end() noexcept;

  Session& session_;
  WaitingScope waiting_;
  bool own_transaction_ = false;
};

/// One change that happens as a whole or not at all, inside the open transaction or in one of its own. Undone unless
/// done() was reached.
class AtomicChange {
 public:
  explicit AtomicChange(Session& session);
  ~AtomicChange();
  AtomicChange(const AtomicChange&) = delete;
  AtomicChange& operator=(const AtomicChange&) = delete;
  void done();

 private:
  Session& session_;
  WaitingScope waiting_;
  bool own_transaction_;
  std::shared_ptr<const StoredCatalogue> catalogue_before_;
  bool finished_ = false;
};

}  // namespace engine::embedded
