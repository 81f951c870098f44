#include "database/file_failure.h"

namespace database {

bool is_file_failure(const support::RuntimeError& error) noexcept {
  constexpr int disk_error = 3043, in_use = 3045, not_opened = 3051;
  const int number = error.number();
  return number == disk_error || number == in_use || number == not_opened || number == error_unknown_format;
}

}  // namespace database
