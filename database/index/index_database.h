// The patient index database: one row per patient with what is needed to choose one without opening each database, and
// the devices database that is kept in step with it.
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

/// What db_ProcessIndex does to a patient's row. The numbers are the diary's; those in between change no row.
namespace index_action {
inline constexpr std::int16_t refresh = 0;  ///< also 1 and 10: from the patient's own database
inline constexpr std::int16_t remove = 2;
inline constexpr std::int16_t write = 21;  ///< and above: from the patient record
}  // namespace index_action

/// What became of a patient's row beside its id.
struct IndexOutcome {
  /// Of the patient's database, where its layout called for that.
  std::optional<FileUpgrade> upgrade;
  /// Name of the copy that an upgrade which failed has left beside the patient's database.
  std::string kept_copy;
  /// Why no row was stored or removed: what the patient's database or the index raised.
  std::optional<support::RuntimeError> failure;
};

/// Adds, refreshes or removes the patient's row, and keeps the patient's name on the devices of "meters.mdb" in the
/// data folder. `patient.index_id` is the patient's number; a refresh sets it to the row's. Returns the row's id; 0
/// where none was stored. A new row never gets the number of a patient's file that is there.
///
/// A refresh first brings a patient database of an older layout up to date, after a checked copy and with the question
/// about the pump data asked. One that cannot be, that does not open, or whose disk fails, changes no row; nor does one
/// without a patient add one. A field that the index lacks until its upgrade is left out without a word. Never raises.
std::int32_t db_ProcessIndex(const Environment& environment, const Target& index, PatientRecord& patient,
                             std::int16_t action, std::string_view patient_database, IndexOutcome* outcome = nullptr);

/// The file of a patient by number, beside the index database or, where it is not there, in the data folder; empty
/// where neither has it.
std::string patient_file(const Environment& environment, std::string_view index_path, std::int32_t patient_id);

}  // namespace database
