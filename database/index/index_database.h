// The patient index database. It has one row for each patient, with what a user needs to choose a patient without
// opening each database. Also the devices database, which is kept in step with the index.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "database/environment.h"
#include "database/patient.h"
#include "database/upgrade/file_upgrade.h"

namespace database {

/// What db_ProcessIndex does to a patient's row. The numbers are the diary's; numbers in between change no row.
namespace index_action {
inline constexpr std::int16_t refresh = 0;  ///< also 1 and 10: takes the values from the patient's own database
inline constexpr std::int16_t remove = 2;
inline constexpr std::int16_t write = 21;  ///< and above: takes the values from the patient record
}  // namespace index_action

/// What became of a patient's row, in addition to its id.
struct IndexOutcome {
  /// The upgrade of the patient's database, where its layout called for one.
  std::optional<FileUpgrade> upgrade;
  /// Name of the copy that a failed upgrade has left beside the patient's database.
  std::string kept_copy;
  /// Why no row was stored or removed: the error of the patient's database or of the index.
  std::optional<support::RuntimeError> failure;
};

/// Adds, refreshes or removes the patient's row, and keeps the patient's name on the devices of "meters.mdb" in the
/// data folder. `patient.index_id` is the patient's number; a refresh sets it to the row's. Returns the row's id, or 0
/// where no row was stored. A new row never gets the number of an existing patient file.
///
/// A refresh first brings a patient database of an older layout up to date; before that, it makes a checked copy and
/// asks the question about the pump data. If the upgrade fails, the database does not open or its disk fails, no row
/// changes. A database without a patient adds no row. A field that the index lacks until its upgrade is silently left
/// out. Never raises.
std::int32_t db_ProcessIndex(const Environment& environment, const Target& index, PatientRecord& patient,
                             std::int16_t action, std::string_view patient_database, IndexOutcome* outcome = nullptr);

/// The file of the patient with this number: beside the index database or, if it is not there, in the data folder.
/// Empty where neither has it.
std::string patient_file(const Environment& environment, std::string_view index_path, std::int32_t patient_id);

}  // namespace database
