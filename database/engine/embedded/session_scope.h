// The operations of a session as a whole: the reads of one operation, and a change.
#pragma once

#include <memory>

#include "database/engine/embedded/session.h"

namespace engine::embedded {

/// One operation. All its waits for the file's locks together take at most the busy time. In a transaction that has
/// begun and is not committed yet, all operations count as one, so that none of them waits again for a reader that
/// keeps the changes in memory.
class WaitingScope {
 public:
  explicit WaitingScope(Session& session);
  ~WaitingScope() { --session_.waiting_scopes_; }
  WaitingScope(const WaitingScope&) = delete;
  WaitingScope& operator=(const WaitingScope&) = delete;

 private:
  Session& session_;
};

/// Reads of one operation. They see one state of the file, and look once whether the layout has changed.
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

/// One change that happens completely or not at all, inside the open transaction or in one of its own. It is undone
/// unless done() was reached.
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
