// Therapy plans: dated headers (`therapieplan`) with items (`therapieplan_details`). Also the plan that the wizard
// makes from its pages.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/environment.h"

namespace database {

/// Types of items. Insulins 0 to 4 are the wizard's slots.
namespace plan_item {
inline constexpr std::int16_t bolus = 0, basal = 1, mixed = 2, rapid = 3, pump = 4;
inline constexpr std::int16_t glucose_from = 500, glucose_until = 501, hypoglycaemia = 502, hyperglycaemia = 503;
inline constexpr std::int16_t systolic_from = 504, systolic_until = 505, diastolic_from = 506, diastolic_until = 507;
inline constexpr std::int16_t weight = 508, bread_units = 509, carbohydrates = 510, protein = 511, fat = 512,
                              cholesterol = 513;
inline constexpr std::int16_t drug_first = 800, drug_last = 802;
}  // namespace plan_item

struct PlanItem {
  std::string desc;           ///< of an insulin: its text "name|bolus share|basal share|flag", with shares in percent
  std::int16_t ItemType = 0;  ///< one of plan_item
  double ItemValue = 0;       ///< glucose in mg/dl, pressure in mmHg, weight in kg, all others as in the settings
  std::int16_t TimeSlot = 0;
  std::string Comment = {};
  friend bool operator==(const PlanItem&, const PlanItem&) = default;
};

struct TherapyPlan {
  std::int32_t id = 0;  ///< 0: a new plan
  engine::Date vDate;   ///< the day from which the plan holds
  std::string desc;
  std::int16_t Type = 0;  ///< therapy, as in the patient record
  std::string Comment;
  std::vector<PlanItem> items;
};

/// Stores header and items; the items of an existing id are replaced. A new plan gets its id. Returns true when the
/// header and every item were stored. An item that cannot be stored is shown with its error and left out. Any other
/// failure shows a message and leaves database and plan as they were. Runs as one transaction of its own.
bool db_SaveTherapyPlan(const Environment& environment, const Target& target, TherapyPlan& plan);

/// Finds the plan with this id, or the newest plan. Returns false and leaves `plan` untouched where there is none.
bool db_GetTherapyPlan(const Environment& environment, const Target& target, std::optional<std::int32_t> id,
                       TherapyPlan& plan);

/// An insulin's text: its name and three numbers, either those of its slot or the given ones as whole numbers. A bar in
/// the name becomes a blank.
std::string insulin_text(std::string_view name, std::int16_t slot);
std::string insulin_text(std::string_view name, double bolus, double basal, double flag);

/// The name in an insulin's text: the part before the first bar.
std::string insulin_name(std::string_view text);

/// What the therapy pages show. A value that no page showed is not given; the following plan then keeps the old one. An
/// empty text is a field that was left empty.
struct PlanChoices {
  std::array<std::optional<std::string>, 5> insulins;  ///< insulin texts by slot
  std::array<std::optional<std::string>, 3> drugs;
  std::array<std::optional<double>, 8> targets;  ///< items 500 to 507: mg/dl, then mmHg
};

/// A new plan of this day from the choices.
TherapyPlan first_plan(const PlanChoices& choices, engine::Date today);

/// Continues the newest plan with the choices. Items that no page shows stay, and so do those of an insulin or drug
/// whose name is the same. A plan of today keeps its id and is replaced when it is saved; any other becomes a new plan.
TherapyPlan following_plan(const TherapyPlan& newest, const PlanChoices& choices, engine::Date today);

/// True where both plans hold the same items, in any order.
bool same_content(const TherapyPlan& left, const TherapyPlan& right);

}  // namespace database
