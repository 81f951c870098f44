// Creating and opening whole databases.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "database/environment.h"
#include "database/patient.h"
#include "database/settings.h"

namespace database {

/// Password used where the setting is shorter than 3 characters.
inline constexpr std::string_view default_password = "brimol";

/// Creates a patient database with all its tables, the patient, the settings with their zones, and the version record.
/// All or nothing: the file appears under its name only when complete. 1 on success, 0 otherwise (the reason through
/// the skipped-statement listener, and in `failure` where given).
std::int16_t CreatePatientDatabase(const Environment& environment, std::string_view path, const PatientRecord& patient,
                                   const SettingsRecord& settings, support::RuntimeError* failure = nullptr);

/// Opens a patient database. Engine and database are null on failure, and for an empty path.
void OpenPatientDatabase(const Environment& environment, std::string_view path, bool read_only, bool newest_engine_only,
                         std::unique_ptr<engine::Engine>& engine, std::unique_ptr<engine::Database>& database,
                         support::RuntimeError* failure = nullptr);

/// Creates the patient index database, without password. 1 on success; an existing file is never touched.
std::int16_t CreateIndexDatabase(const Environment& environment, std::string_view path);

/// Creates, configures and appends one field; ends at the first error with false.
bool Field_Create(engine::TableDef& table, std::string_view name, engine::DataType type, std::int32_t size,
                  std::int32_t attributes, bool required, bool allow_zero_length, std::string_view default_value);

/// Creates, configures and appends a one-field index; ends at the first error with false.
bool Index_Create(engine::TableDef& table, std::string_view index_name, std::string_view field_name,
                  engine::DataType field_type, std::int32_t size, std::int32_t attributes, bool primary, bool unique);

}  // namespace database
