// The patient's settings (`patdat_setup`): therapy targets and the 13 daytime zones.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "database/environment.h"

namespace database {

struct Zone {
  engine::Date from, until;  ///< times of day; if until is before from, the zone crosses midnight
  std::string description;
};

/// Nine zones of meals and four zones of the user, in a fixed order.
using ZoneTable = std::array<Zone, 13>;

struct SettingsRecord {
  std::int16_t BGTargetMax = 0, BGTargetMin = 0;        ///< mg/dl
  std::int16_t BPTargetSysMax = 0, BPTargetSysMin = 0;  ///< mmHg
  std::int16_t BPTargetDiaMax = 0, BPTargetDiaMin = 0;  ///< mmHg
  std::int16_t BGHyper = 0, BGHypo = 0;                 ///< mg/dl
  float TargetWeight = 0;                               ///< g
  // Largest amounts a day, in the diary's units for food; -1: no limit.
  double BUPerDayMax = -1;        ///< bread units
  std::int16_t KHPerDayMax = -1;  ///< carbohydrates
  double KCalPerDayMax = -1;      ///< kcal
  std::int16_t FatPerDayMax = -1;
  double CholPerDayMax = -1;
  std::int16_t ProtPerDayMax = -1;
  ZoneTable zones;
};

/// Reads the row, then the targets that the newest therapy plan overrides. Returns true when a row was read. What could
/// not be read stays as the record held it.
bool db_GetSettings(const Environment& environment, const Target& target, SettingsRecord& settings,
                    std::int32_t patient_id = 0);

/// Stores the row, or adds it where there is none. Returns 1 when stored, else 0.
std::int16_t db_SaveSettings(const Environment& environment, const Target& target, const SettingsRecord& settings,
                             std::int32_t patient_id = 0);

/// Writes the zone times, without descriptions, into the existing row. Returns 1 when stored, else 0.
std::int16_t db_AddTimeZonesToPatient(const Environment& environment, const Target& target, const ZoneTable& zones,
                                      std::int32_t patient_id = 0);

}  // namespace database
