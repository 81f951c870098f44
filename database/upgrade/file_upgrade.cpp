#include "database/upgrade/file_upgrade.h"

#include <fmt/core.h>

#include <optional>
#include <utility>

#include "database/file_failure.h"
#include "database/open_database.h"
#include "database/upgrade/ladder.h"

namespace database {
namespace {

const support::RuntimeError not_upgraded{support::error_number::internal_error, "Not upgraded."};

/// Saves the copy and returns its path. Raises 3204 where all names are taken.
std::string save_copy_beside(engine::Database& database, std::string_view path, std::string_view layout) {
  constexpr int most_copies = 99;
  const std::size_t name = path.find_last_of("\\/:") + 1;
  const std::size_t dot = path.rfind('.');
  const std::size_t stem = dot == std::string_view::npos || dot < name ? path.size() : dot;
  for (int number = 1;; ++number) {
    std::string copy{path.substr(0, stem)};
    copy.append(".").append(layout).append(number > 1 ? fmt::format("-{}", number) : "").append(path.substr(stem));
    try {
      database.save_copy(copy);
      return copy;
    } catch (const support::RuntimeError& error) {
      if (error.number() != support::error_number::database_exists || number == most_copies) throw;
    }
  }
}

/// False for the lock of another user: it ends an upgrade before anything was changed.
bool leaves_copy(const support::RuntimeError& failure) {
  return is_file_failure(failure) && failure.number() != support::error_number::file_in_use;
}

std::string name_in(std::string_view path) { return std::string(path.substr(path.find_last_of("\\/:") + 1)); }

}  // namespace

UpgradeFailure::UpgradeFailure(const support::RuntimeError& failure, std::string copy)
    : RuntimeError(failure), copy_(std::move(copy)) {}

std::string layout_text(const VersionRecord& record) {
  return fmt::format("{}.{}", record.MajVersion, record.MinVersion);
}

FileUpgrade upgrade_opened(const Environment& environment, engine::Database& database, std::string_view path,
                           VersionRecord& record, bool with_copy) {
  FileUpgrade done{layout_text(record), {}};
  const std::string copy = with_copy ? save_copy_beside(database, path, done.layout) : std::string();
  bool written = false;
  const support::Outcome outcome =
      support::outcome_of([&] { written = db_WriteDBInfo(environment, database, record) == 1; });
  if (!written) {
    const support::RuntimeError failure = outcome.last().value_or(not_upgraded);
    const bool kept = !copy.empty() && leaves_copy(failure);
    if (!copy.empty() && !kept) environment.file_system().remove(copy);
    throw UpgradeFailure(failure, kept ? name_in(copy) : std::string());
  }
  done.copy = name_in(copy);
  return done;
}

FileUpgrade upgrade_file(const Environment& environment, std::string_view path) {
  const auto engine = create_engine(environment, false);
  const auto database = engine->open_database(path, true, false, connect_text(environment.patient_password()));
  VersionRecord record;
  bool read = false;
  const support::Outcome outcome = support::outcome_of([&] { read = db_ReadDBInfo(environment, *database, record); });
  if (!read) throw outcome.last().value_or(not_upgraded);
  return upgrade_opened(environment, *database, path, record, true);
}

}  // namespace database
