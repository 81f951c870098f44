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

/// Takes each insulin from the first source that names it: the newest plan, the defaults table, the diary, the language
/// texts. Returns false and leaves `insulin` untouched where the database cannot be opened.
bool db_GetDefaultInsulin(const Environment& environment, const Target& target, DefaultInsulin& insulin);

/// Takes each of three drugs from the newest plan, else from the defaults table; empty where neither names one. Returns
/// false and leaves `drugs` untouched where the database cannot be opened.
bool db_GetDefaultOAD(const Environment& environment, const Target& target, std::array<std::string, 3>& drugs);

}  // namespace database
