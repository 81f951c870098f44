// The patient's usual insulins and drugs, from the first source that names them.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "database/environment.h"

namespace database {

/// Names or insulin texts (therapy_plan.h), as their source has them.
struct DefaultInsulin {
  std::string bolus, basal, mix, rapid;
  std::int16_t bolus_percentage = 0;  ///< of the mixture, 0 to 100
};

/// From the newest plan, else the defaults table, else the diary, else the language texts, each insulin for itself.
/// False and `insulin` untouched where the database cannot be opened.
bool db_GetDefaultInsulin(const Environment& environment, const Target& target, DefaultInsulin& insulin);

/// Three drugs, from the newest plan, else the defaults table, each for itself; empty where there is none. False and
/// `drugs` untouched where the database cannot be opened.
bool db_GetDefaultOAD(const Environment& environment, const Target& target, std::array<std::string, 3>& drugs);

}  // namespace database
