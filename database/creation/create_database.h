// Creating whole databases.
#pragma once

#include <cstdint>
#include <string_view>

#include "database/environment.h"
#include "database/patient.h"
#include "database/settings.h"

namespace database {

/// Creates a patient database with all its tables, the patient, the settings with their zones, and the version record.
/// All or nothing: the file gets its name only when it is complete. Returns 1 on success, else 0; the error that ended
/// the creation is passed over.
std::int16_t CreatePatientDatabase(const Environment& environment, std::string_view path, const PatientRecord& patient,
                                   const SettingsRecord& settings);

/// Does the same with this password in place of the environment's. An empty one creates a database without a password.
/// Raises the error that ends the creation.
void create_patient_database(const Environment& environment, std::string_view path, std::string_view password,
                             const PatientRecord& patient, const SettingsRecord& settings);

/// Creates the patient index database, which has no password. All or nothing; returns 1 or 0 as above. Never touches a
/// file that exists.
std::int16_t CreateIndexDatabase(const Environment& environment, std::string_view path);

}  // namespace database
