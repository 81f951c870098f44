// Definitions of laboratory values (name, unit, range): those that a new database begins with (`labdefs`), the default
// ones of one laboratory (`Labordefinitionen`), and the look-up of one.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "database/environment.h"

namespace database {

/// Adds the 15 definitions of a new database to `labdefs`, which was appended just before; failing steps are
/// passed over. Descriptions come from the language texts.
void add_lab_definitions(const Environment& environment, engine::Database& database);

/// Writes the 13 default definitions of a laboratory, adding the field `LaborID` where the table lacks it; definitions
/// that the laboratory has are reset, not doubled. The number of definitions stored.
std::int16_t db_SetDefaultLabRanges(const Environment& environment, const Target& target, std::int32_t laboratory_id);

struct LabDefinition {
  std::string field;
  float rangefrom = 0, rangeuntil = 0;  ///< -1 is no limit
  float CriticalThreshold = 0;          ///< -1 is none
  bool Display = true;
  std::int16_t unit = -1, displayunit = -1, units_allowed = 0;  ///< numbers of the diary's unit list
  std::string BDTKEY, LongDesc, comments;
  std::int16_t type = -1;
  std::int32_t stored_values = 0;  ///< values of this type in `labvalues`
};

/// A definition by its field's name or by its type. A laboratory id above 0 asks for that laboratory's own, by name
/// only. False and `definition` untouched where there is none; columns that the table lacks keep their defaults.
bool db_GetLabDefinition(const Environment& environment, const Target& target,
                         const std::variant<std::string, std::int16_t>& name_or_type, std::int32_t laboratory_id,
                         LabDefinition& definition);

}  // namespace database
