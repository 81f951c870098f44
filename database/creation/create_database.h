// Creating whole databases.
#pragma once

#include <cstdint>
#include <string_view>

#include "database/environment.h"
#include "database/patient.h"
#include "database/settings.h"

namespace database {

/// Creates a patient database with all its tables, the patient, the settings with their zones, and the version record.
/// All or nothing: the file appears under its name only when complete. 1 on success, 0 otherwise; what ended it was
/// passed over.
std::int16_t CreatePatientDatabase(const Environment& environment, std::string_view path, const PatientRecord& patient,
                                   const SettingsRecord& settings);

/// The same with this password in place of the environment's; empty: a database without one. Raises what ends it.
void create_patient_database(const Environment& environment, std::string_view path, std::string_view password,
                             const PatientRecord& patient, const SettingsRecord& settings);

/// Creates the patient index database, without password. All or nothing, 1 or 0 as above; an existing file is never
/// touched.
std::int16_t CreateIndexDatabase(const Environment& environment, std::string_view path);

}  // namespace database
