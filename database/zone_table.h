// The 13 daytime zones as data: where each is stored in `patdat_setup` and in the settings file, its default times, and
// the language texts of its name.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "database/environment.h"
#include "database/settings.h"

namespace database {

struct ZoneRow {
  std::string_view from_column, until_column;
  std::string_view description_column;           ///< only for the user's zones
  std::string_view default_from, default_until;  ///< "hhmm"
  std::string_view from_key, until_key;
  long name_text = 0, name_addition_text = 0;  ///< numbers of language texts, the second one in brackets; 0: none
};

/// "FIxTime" is the spelling of the settings files.
inline constexpr std::array<ZoneRow, 13> zone_rows = {{
    {"BB_From", "BB_Until", "", "0600", "0859", "FixTimeFrom1", "FIxTimeUntil1", 802},
    {"AB_From", "AB_Until", "", "0900", "1129", "FixTimeFrom2", "FIxTimeUntil2", 803},
    {"BL_From", "BL_Until", "", "1130", "1159", "FixTimeFrom3", "FIxTimeUntil3", 804},
    {"AL_From", "AL_Until", "", "1200", "1359", "FixTimeFrom4", "FIxTimeUntil4", 805},
    {"BS_From", "BS_Until", "", "1400", "1459", "FixTimeFrom5", "FIxTimeUntil5", 818, 806},
    {"AS_From", "AS_Until", "", "1500", "1659", "FixTimeFrom6", "FIxTimeUntil6", 819, 806},
    {"BD_From", "BD_Until", "", "1700", "1829", "FixTimeFrom7", "FIxTimeUntil7", 816},
    {"AD_From", "AD_Until", "", "1830", "2159", "FixTimeFrom8", "FIxTimeUntil8", 817},
    {"BedTime_From", "BedTime_Until", "", "2200", "0559", "FixTimeFrom9", "FIxTimeUntil9", 807},
    {"UTZ1_From", "UTZ1_Until", "UTZ1_Desc", "0600", "1059", "TimeFrom1", "TimeUntil1"},
    {"UTZ2_From", "UTZ2_Until", "UTZ2_Desc", "1100", "1659", "TimeFrom2", "TimeUntil2"},
    {"UTZ3_From", "UTZ3_Until", "UTZ3_Desc", "1700", "2159", "TimeFrom3", "TimeUntil3"},
    {"UTZ4_From", "UTZ4_Until", "UTZ4_Desc", "2200", "0559", "TimeFrom4", "TimeUntil4"},
}};

/// The name of a meal's zone from the language texts; empty for the user's zones.
std::string zone_name(const Environment& environment, const ZoneRow& row);

/// A time of day from "hhmm"; nothing where the text is not four digits of a time of day.
std::optional<engine::Date> zone_time(std::string_view hhmm);

/// Reads the zones of the settings file, with built-in defaults; or, if `use_defaults` is false, those of the database.
/// Returns false and leaves `zones` untouched where the database has none.
bool GetTimeZones(const Environment& environment, const Target& target, ZoneTable& zones, bool use_defaults);

}  // namespace database
