#include "database/file_failure.h"

#include <algorithm>

namespace database {

namespace {

/// What the engines say of a file that somebody else has, a lock that is not to be had, a disk, a network or a format.
constexpr int file_failures[] = {
    3006,  // the database is locked exclusively
    3008,  // the table is opened exclusively by another user
    3040,  // disk error while reading
    3043,  // disk or network error
    3045,  // the file is in use
    3049,  // damaged, or no database of this engine
    3050,  // the file cannot be locked
    3051,  // the file cannot be opened
    3052,  // too many locks
    3186,  // cannot be saved: locked by a user of another machine
    3187,  // cannot be read: locked by a user of another machine
    3188,  // cannot be updated: locked by another session of this machine
    3189,  // the table is locked exclusively
    3197,  // another user has changed the row meanwhile
    3218,  // cannot be updated: locked
    3260,  // cannot be updated: locked by a user of another machine
    3261,  // the table is locked exclusively by a user of another machine
    3262,  // the table cannot be locked: in use by a user of another machine
    error_unknown_format,
    3356,  // the database is opened exclusively on another machine
};
static_assert(std::ranges::is_sorted(file_failures));

}  // namespace

bool is_file_failure(const support::RuntimeError& error) noexcept {
  return std::ranges::binary_search(file_failures, error.number());
}

}  // namespace database
