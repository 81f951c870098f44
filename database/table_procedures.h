// The table procedures: creates each of the 43 tables of a patient database by its name. Also the module "ddg", which
// builds the two tables of the structured documentation of diabetes care.
#pragma once

#include <cstdint>
#include <string_view>

#include "database/engine/engine.h"
#include "database/environment.h"

namespace database {

/// Runs the table procedure of one of the 43 tables: creates its layout, and for `labdefs` also its rows. Failing steps
/// are passed over. Any other name does nothing.
void create_table(const Environment& environment, engine::Database& database, std::string_view name);

/// Creates, configures and appends one field. Ends at the first error and then returns false. The size and
/// `allow_zero_length` count only for Text. The default of a Yes/No field is read as "True" or "False".
bool Field_Create(engine::TableDef& table, std::string_view name, engine::DataType type, std::int32_t size,
                  std::int32_t attributes, bool required, bool allow_zero_length, std::string_view default_value);

/// Creates, configures and appends an index of one field. Ends at the first error and then returns false. A size of 0
/// is not set.
bool Index_Create(engine::TableDef& table, std::string_view index_name, std::string_view field_name,
                  engine::DataType field_type, std::int32_t size, std::int32_t attributes, bool primary, bool unique);

/// Builds `Behandlungsprofil`, its indexes before its fields. Ends at its first error; then nothing is appended.
void CreateTD_Behandlungsprofil(engine::Database& database);

/// Builds `Labordefinitionen`. A field that fails is left out.
void CreateTD_Normwerte(engine::Database& database);

}  // namespace database
