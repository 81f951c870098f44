// Failures of a file or its disk. A procedure passes over the statement that a layout refuses; one that fails for these
// reasons could succeed the next time, and what was read or written so far is not to be taken for the whole.
#pragma once

#include <optional>
#include <string_view>

#include "support/error.h"

namespace database {

/// Disk or network error, full disk, in use or locked elsewhere, cannot be opened, unknown format.
bool is_file_failure(const support::RuntimeError& error) noexcept;

/// Notices them among the statements that are passed over while it lives.
class FileFailures {
 public:
  bool any() const noexcept { return first_.has_value(); }
  const std::optional<support::RuntimeError>& first() const noexcept { return first_; }

 private:
  std::optional<support::RuntimeError> first_;
  support::SkippedStatementWatch watch_{[this](std::string_view, const support::RuntimeError& error) {
    if (!first_ && is_file_failure(error)) first_ = error;
  }};
};

}  // namespace database
