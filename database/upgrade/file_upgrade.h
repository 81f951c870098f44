// A patient database file brought to the current layout, after a checked copy of it.
#pragma once

#include <string>
#include <string_view>

#include "database/version_record.h"

namespace database {

struct FileUpgrade {
  std::string layout;  ///< that the file had: "4.40"
  std::string copy;    ///< name of the copy that lies beside it; empty where none was made
};

/// What ended an upgrade; the file is as it was.
class UpgradeFailure : public support::RuntimeError {
 public:
  UpgradeFailure(const support::RuntimeError& failure, std::string copy);
  /// Name of the copy that was kept; empty where there is none.
  const std::string& copy() const noexcept { return copy_; }

 private:
  std::string copy_;
};

/// "4.40"
std::string layout_text(const VersionRecord& record);

/// Brings a database, which is opened for this alone, to the current layout. Precondition: `record` is its own and
/// calls for that. Before, a checked copy is saved beside the file where one is wanted ("NAME.4.40.das",
/// "NAME.4.40-2.das" where that is taken); it has its name only when it is whole. Raises UpgradeFailure, with the file
/// as it was: 3059 where the question about the pump data finds nobody to answer it, 3204 where all names are taken. A
/// failure of the disk leaves the copy, every other one removes it.
FileUpgrade upgrade_opened(const Environment& environment, engine::Database& database, std::string_view path,
                           VersionRecord& record, bool with_copy);

/// Opens the file for this alone and does the same with a copy. Raises 3045 where it is open elsewhere, too.
FileUpgrade upgrade_file(const Environment& environment, std::string_view path);

}  // namespace database
