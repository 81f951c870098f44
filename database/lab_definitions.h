// Definitions of laboratory values (name, unit, range): those of a new database (`labdefs`), the default ones of one
// laboratory (`Labordefinitionen`), and how to look one up.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "database/environment.h"

namespace database {

/// Adds the 15 definitions of a new database to `labdefs`, a table that was just appended. Failing steps are passed
/// over. Descriptions come from the language texts.
void add_lab_definitions(const Environment& environment, engine::Database& database);

/// Writes the 13 default definitions of a laboratory. Adds the field `LaborID` where the table lacks it. Definitions
/// that the laboratory has already are reset, not doubled. Returns the number of definitions stored.
std::int16_t db_SetDefaultLabRanges(const Environment& environment, const Target& target, std::int32_t laboratory_id);

struct LabDefinition {
  std::string field;
  float rangefrom = 0, rangeuntil = 0;  ///< -1: no limit
  float CriticalThreshold = 0;          ///< -1: none
  bool Display = true;
  std::int16_t unit = -1, displayunit = -1, units_allowed = 0;  ///< numbers of the diary's list of units
  std::string BDTKEY, LongDesc, comments;
  std::int16_t type = -1;
  std::int32_t stored_values = 0;  ///< number of values of this type in `labvalues`
};

/// Finds a definition by its field's name or by its type. With a laboratory id above 0, finds that laboratory's own
/// definition, by name only. Returns false and leaves `definition` untouched where there is none. Columns that the
/// table lacks keep their defaults.
bool db_GetLabDefinition(const Environment& environment, const Target& target,
                         const std::variant<std::string, std::int16_t>& name_or_type, std::int32_t laboratory_id,
                         LabDefinition& definition);

}  // namespace database
