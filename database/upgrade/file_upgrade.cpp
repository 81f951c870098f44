#include "database/upgrade/file_upgrade.h"

#include <optional>

#include "database/file_failure.h"
#include "database/open_database.h"

namespace database {
namespace {

constexpr int file_exists = 3204;

/// Saves the copy; its path. Raises 3204 where all names are taken.
std::string save_copy_beside(engine::Database& database, std::string_view path, std::string_view layout) {
  constexpr int most_copies = 99;
  const std::size_t name = path.find_last_of("\\/:") + 1;
  const std::size_t dot = path.rfind('.');
  const std::size_t stem = dot == std::string_view::npos || dot < name ? path.size() : dot;
  for (int number = 1;; ++number) {
    std::string copy{path.substr(0, stem)};
    copy.append(".").append(layout).append(number > 1 ? "-" + std::to_string(number) : "").append(path.substr(stem));
    try {
      database.save_copy(copy);
      return copy;
    } catch (const support::RuntimeError& error) {
      if (error.number() != file_exists || number == most_copies) throw;
    }
  }
}

/// The last error that a procedure passed over, which is the one that ended it.
class LastPassedOver {
 public:
  support::RuntimeError error() const {
    return error_.value_or(support::RuntimeError(support::error_number::internal_error, "Not upgraded."));
  }

 private:
  std::optional<support::RuntimeError> error_;
  support::SkippedStatementWatch watch_{
      [this](std::string_view, const support::RuntimeError& error) { error_ = error; }};
};

std::string layout_of(const VersionRecord& record) {
  return std::to_string(record.MajVersion) + "." + std::to_string(record.MinVersion);
}

}  // namespace

FileUpgrade upgrade_file(const Environment& environment, std::string_view path) {
  const auto engine = create_engine(environment, false);
  const auto database = engine->open_database(path, true, false, connect_text(environment.patient_password()));
  VersionRecord record;
  const LastPassedOver last;
  if (!db_ReadDBInfo(environment, *database, record)) throw last.error();
  FileUpgrade done{layout_of(record), {}};
  const std::string copy = save_copy_beside(*database, path, done.layout);
  if (db_WriteDBInfo(environment, *database, record) != 1) {
    const support::RuntimeError failure = last.error();
    if (!is_file_failure(failure)) environment.file_system().remove(copy);
    throw failure;
  }
  done.copy = copy.substr(copy.find_last_of("\\/:") + 1);
  return done;
}

}  // namespace database
