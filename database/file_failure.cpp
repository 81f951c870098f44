#include "database/file_failure.h"

#include <utility>

namespace database {

bool is_file_failure(const support::RuntimeError& error) noexcept {
  constexpr int disk_error = 3043, in_use = 3045, not_opened = 3051, damaged = 3343;
  const int number = error.number();
  return number == disk_error || number == in_use || number == not_opened || number == damaged;
}

FileFailures::FileFailures()
    : previous_(
          support::set_skipped_statement_listener([this](std::string_view label, const support::RuntimeError& error) {
            any_ |= is_file_failure(error);
            if (previous_) previous_(label, error);
          })) {}

FileFailures::~FileFailures() { support::set_skipped_statement_listener(std::move(previous_)); }

}  // namespace database
