// The table procedures: each of the 43 tables of a patient database by its name; and module "ddg", which builds the two
// tables of the structured documentation of diabetes care.
#pragma once

#include <cstdint>
#include <string_view>

#include "database/engine/engine.h"
#include "database/environment.h"

namespace database {

/// Runs the table procedure of one of the 43 tables: its layout, and for `labdefs` its rows. Failing steps are
/// passed over; a name that is none of them does nothing.
void create_table(const Environment& environment, engine::Database& database, std::string_view name);

/// Creates, configures and appends one field; ends at the first error with false. The size counts for Text only, and so
/// does `allow_zero_length`; the default of a Yes/No field is read as "True" or "False".
bool Field_Create(engine::TableDef& table, std::string_view name, engine::DataType type, std::int32_t size,
                  std::int32_t attributes, bool required, bool allow_zero_length, std::string_view default_value);

/// Creates, configures and appends a one-field index; ends at the first error with false. A size of 0 is not given.
bool Index_Create(engine::TableDef& table, std::string_view index_name, std::string_view field_name,
                  engine::DataType field_type, std::int32_t size, std::int32_t attributes, bool primary, bool unique);

/// Builds `Behandlungsprofil`, its indexes before its fields; ends at its first error, with nothing appended.
void CreateTD_Behandlungsprofil(engine::Database& database);

/// Builds `Labordefinitionen`; a failing field is left out.
void CreateTD_Normwerte(engine::Database& database);

}  // namespace database
