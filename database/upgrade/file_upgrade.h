// A patient database file brought to the current layout, after a checked copy of it.
#pragma once

#include <string>
#include <string_view>

#include "database/version_record.h"

namespace database {

struct FileUpgrade {
  std::string layout;  ///< that the file had: "4.40"
  std::string copy;    ///< name of the copy that lies beside it
};

/// Opens the file for this alone, saves a checked copy beside it ("NAME.4.40.das", "NAME.4.40-2.das" where that is
/// taken) and brings it to the current layout. Precondition: its record calls for that.
///
/// Raises what fails, with the file as it was: 3045 where it is open elsewhere, 3059 where the question about the pump
/// data finds nobody to answer it. Such a failure leaves no copy; one of the disk leaves it.
FileUpgrade upgrade_file(const Environment& environment, std::string_view path);

}  // namespace database
