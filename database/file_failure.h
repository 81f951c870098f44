// Failures of a file or its disk. A procedure passes over a statement that fails because of the layout. A statement
// that fails for these reasons could succeed the next time, and what was read or written so far must not be taken for
// the whole. Therefore procedures run their parts in support::outcome_of() and look for the first of these failures.
#pragma once

#include "support/error.h"

namespace database {

/// True for a disk or network error, a full disk, a file that is in use or locked elsewhere or cannot be opened, and an
/// unknown format.
bool is_file_failure(const support::RuntimeError& error) noexcept;

/// True where the file could not be opened for writing. It may still be readable.
bool may_still_be_read(const support::RuntimeError& error) noexcept;

}  // namespace database
