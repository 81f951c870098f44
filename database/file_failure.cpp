#include "database/file_failure.h"

#include <algorithm>

namespace database {

namespace {

namespace error_number = support::error_number;

/// The errors of a file that is in use elsewhere, a lock that is not free, a disk, a network or a format.
constexpr error_number::Number file_failures[] = {
    error_number::database_locked,
    error_number::table_open_exclusively,
    error_number::disk_read_error,
    error_number::disk_error,
    error_number::file_in_use,
    error_number::damaged_file,
    error_number::file_not_lockable,
    error_number::file_not_opened,
    error_number::too_many_locks,
    error_number::not_saved_locked_elsewhere,
    error_number::not_read_locked_elsewhere,
    error_number::not_updated_locked_here,
    error_number::table_locked,
    error_number::changed_meanwhile,
    error_number::not_updated_locked,
    error_number::not_updated_locked_elsewhere,
    error_number::table_locked_elsewhere,
    error_number::table_not_lockable,
    error_number::unknown_format,
    error_number::database_open_elsewhere,
};
static_assert(std::ranges::is_sorted(file_failures));

}  // namespace

bool is_file_failure(const support::RuntimeError& error) noexcept {
  return std::ranges::binary_search(file_failures, error.number());
}

bool may_still_be_read(const support::RuntimeError& error) noexcept {
  return error.number() == error_number::read_only || error.number() == error_number::file_not_opened;
}

}  // namespace database
