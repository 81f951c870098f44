// Failures of a file or its disk. A procedure passes over the statement that a layout refuses; one that fails for these
// reasons could succeed the next time, and what was read or written so far is not to be taken for the whole.
#pragma once

#include "support/error.h"

namespace database {

/// Disk error or full disk, in use elsewhere, cannot be opened, damaged.
bool is_file_failure(const support::RuntimeError& error) noexcept;

/// Notices them among the statements that are passed over while it lives.
class FileFailures {
 public:
  FileFailures();
  ~FileFailures();
  FileFailures(const FileFailures&) = delete;
  FileFailures& operator=(const FileFailures&) = delete;
  bool any() const noexcept { return any_; }

 private:
  support::SkippedStatementListener previous_;
  bool any_ = false;
};

}  // namespace database
