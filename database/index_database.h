// The patient index database: one row per patient with what is needed to choose one without opening each database, and
// the devices database that is kept in step with it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "database/environment.h"
#include "database/patient.h"

namespace database {

/// What db_ProcessIndex does to a patient's row. The numbers are the diary's; those in between change no row.
namespace index_action {
inline constexpr std::int16_t refresh = 0;  ///< also 1 and 10: from the patient's own database
inline constexpr std::int16_t remove = 2;
inline constexpr std::int16_t write = 21;  ///< and above: from the patient record
}  // namespace index_action

/// Adds, refreshes or removes the patient's row, and keeps the patient's name on the devices of "meters.mdb" in the
/// data folder. `patient.index_id` is the patient's number; a refresh sets it to the row's. Returns the row's id; 0
/// where there is none. A patient database of an older layout is brought up to date by a refresh; one that is foreign
/// or does not open is left alone, and the row keeps what it held; where a disk fails, no row is touched. Never raises.
std::int32_t db_ProcessIndex(const Environment& environment, const Target& index, PatientRecord& patient,
                             std::int16_t action, std::string_view patient_database);

/// Told what is being done, for a status line.
using StatusCaption = std::function<void(const std::string& caption)>;

/// The file of a patient by number, beside the index database or, where it is not there, in the data folder; empty
/// where neither has it.
std::string patient_file(const Environment& environment, std::string_view index_path, std::int32_t patient_id);

/// Brings the index database, and where that calls for it every patient database that it lists, up to date, then
/// removes the rows whose patient file is in neither folder. False where the index database cannot be opened. Never
/// raises.
bool db_UpgradeIndexDatabase(const Environment& environment, std::string_view index_path, const StatusCaption& status);

}  // namespace database
