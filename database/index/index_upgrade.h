// The upgrade of the patient index database and of every patient database that it lists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "database/index/index_database.h"

namespace database {

/// How the upgrade of an index goes on; each may be empty.
struct IndexUpgradeWatch {
  /// Told what is being done, for a status line.
  std::function<void(const std::string& caption)> status = {};
  /// The same as 0 to 100.
  std::function<void(std::int32_t percentage)> percentage = {};
  /// Asked before each patient: true ends the walk there. The next upgrade goes on with this patient.
  std::function<bool()> cancelled = {};
  /// Told of each patient whose database was upgraded or could not be refreshed.
  std::function<void(std::int32_t id, const std::string& file, const IndexOutcome& outcome)> patient = {};
};

struct IndexUpgrade {
  std::size_t due = 0;        ///< patients whose databases were due
  std::size_t refreshed = 0;  ///< of these
  std::size_t failed = 0;     ///< of these; they stay due
  std::size_t removed = 0;    ///< rows whose patient file is gone
  bool cancelled = false;
  /// What kept the index itself from being opened, changed or walked.
  std::optional<support::RuntimeError> failure;
  bool complete() const noexcept { return failed == 0 && !cancelled && !failure; }
};

/// Brings the index database, and where that calls for it every patient database that it lists, up to date, then
/// removes the rows whose patient file is in neither folder. What was interrupted at any point, cancelled, or failed
/// for a patient is gone on with by the next upgrade, which walks those patients that are still due. Never raises.
IndexUpgrade db_UpgradeIndexDatabase(const Environment& environment, std::string_view index_path,
                                     const IndexUpgradeWatch& watch);

}  // namespace database
