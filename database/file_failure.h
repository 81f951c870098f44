// Failures of a file or its disk. A procedure passes over the statement that a layout refuses; one that fails for these
// reasons could succeed the next time, and what was read or written so far is not to be taken for the whole: work asks
// for support::outcome_of() its parts, and for the first of these failures in it.
#pragma once

#include "support/error.h"

namespace database {

/// Disk or network error, full disk, in use or locked elsewhere, cannot be opened, unknown format.
bool is_file_failure(const support::RuntimeError& error) noexcept;

/// The file could not be opened for writing; it may be readable all the same.
bool may_still_be_read(const support::RuntimeError& error) noexcept;

}  // namespace database
