// Brings a patient database file to the current layout, after making a checked copy of it.
#pragma once

#include <string>
#include <string_view>

#include "database/version_record.h"

namespace database {

struct FileUpgrade {
  std::string layout;  ///< the layout that the file had: "4.40"
  std::string copy;    ///< name of the copy beside the file; empty where none was made
};

/// The error that ended an upgrade. The file is as it was.
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

/// Brings a database, which is opened only for this, to the current layout. Precondition: `record` is the database's
/// own and calls for the upgrade. If a copy is wanted, a checked copy is first saved beside the file ("NAME.4.40.das",
/// or "NAME.4.40-2.das" where that is taken). It gets its name only when it is complete. Raises UpgradeFailure, with
/// the file as it was: 3059 where nobody answers the question about the pump data, 3204 where all names are taken.
/// After a failure of the disk the copy stays, after any other it is removed.
FileUpgrade upgrade_opened(const Environment& environment, engine::Database& database, std::string_view path,
                           VersionRecord& record, bool with_copy);

/// Opens the file only for this and does the same, with a copy. Also raises 3045 where the file is open elsewhere.
FileUpgrade upgrade_file(const Environment& environment, std::string_view path);

}  // namespace database
