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

/// Callbacks during the upgrade of an index; each may be empty.
struct IndexUpgradeWatch {
  /// Gets a description of the present work, for a status line.
  std::function<void(const std::string& caption)> status = {};
  /// Gets the progress, 0 to 100.
  std::function<void(std::int32_t percentage)> percentage = {};
  /// Is asked before each patient; true ends the walk there. The next upgrade goes on with this patient.
  std::function<bool()> cancelled = {};
  /// Gets each patient whose database was upgraded or could not be refreshed.
  std::function<void(std::int32_t id, const std::string& file, const IndexOutcome& outcome)> patient = {};
};

struct IndexUpgrade {
  std::size_t due = 0;        ///< patients whose databases were due
  std::size_t refreshed = 0;  ///< how many of these were refreshed
  std::size_t failed = 0;     ///< how many of these failed; they stay due
  std::size_t removed = 0;    ///< rows that were removed because their patient file is gone
  bool cancelled = false;
  /// Why the index itself could not be opened, changed or walked.
  std::optional<support::RuntimeError> failure;
  bool complete() const noexcept { return failed == 0 && !cancelled && !failure; }
};

/// Brings the index database up to date, and where that calls for it every patient database that it lists. Then removes
/// the rows whose patient file is in neither folder. If it is interrupted or cancelled, or a patient fails, the next
/// upgrade goes on with the patients that are still due. Never raises.
IndexUpgrade db_UpgradeIndexDatabase(const Environment& environment, std::string_view index_path,
                                     const IndexUpgradeWatch& watch);

}  // namespace database
