// The therapy plan in force as one text, for the diary's overview.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "database/environment.h"

namespace database {

struct PlanSummary {
  std::int32_t id = 0;  ///< plan number
  engine::Date date;    ///< the day from which the plan holds
  std::int32_t insulin_items = 0, diet_items = 0, correction_items = 0;
  double basal_rates[3] = {};  ///< for basal rates 1 to 3: the sum of the plan's items, in units of insulin
  /// In mg/dl; 0 where the plan has none.
  double glucose_from = 0, glucose_until = 0, hypoglycaemia = 0, hyperglycaemia = 0;
  /// Texts of the insulin slots 0 to 4. A slot that the plan leaves out has its numbers but no name.
  std::array<std::string, 5> insulins;
  /// Basal rate 1 divided by the target weight of the patient's settings, in units per kilogram; nothing where there is
  /// no such weight.
  std::optional<double> basal_per_kilogram;
};

/// Finds the plan in force on a day, or the newest plan. Returns false and leaves `summary` untouched where there is
/// none.
bool db_GetPlanSummary(const Environment& environment, const Target& target, std::optional<engine::Date> day,
                       PlanSummary& summary);

/// Returns the three counts joined by "|", then each value by the picture "0.0" in the user's locale, then the basal
/// rate per kilogram by "0.00" where there is one, and the insulins:
/// "2|0|0|400=0,9|401=0,0|402=0,0|500=80,0|501=140,0|502=60,0|503=180,0|400/kg=0,01|0=Name|100|0|0|1=||100|2=…".
std::string plan_summary_text(const PlanSummary& summary);

/// The union from which a plan's figures are read: one row for each plan and kind of item.
std::string plan_summary_query();

}  // namespace database
