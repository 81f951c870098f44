// Therapy plans: dated headers (`therapieplan`) with items (`therapieplan_details`), and what is read out of them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "database/environment.h"

namespace database {

/// Item types. Insulins 0 to 4 are the wizard's slots.
namespace plan_item {
inline constexpr std::int16_t bolus = 0, basal = 1, mixed = 2, rapid = 3, pump = 4;
inline constexpr std::int16_t glucose_from = 500, glucose_until = 501, hypoglycaemia = 502, hyperglycaemia = 503;
inline constexpr std::int16_t systolic_from = 504, systolic_until = 505, diastolic_from = 506, diastolic_until = 507;
inline constexpr std::int16_t weight = 508, bread_units = 509, carbohydrates = 510, protein = 511, fat = 512,
                              cholesterol = 513;
inline constexpr std::int16_t drug_first = 800, drug_last = 802;
}  // namespace plan_item

struct PlanItem {
  std::string desc;  ///< insulins: name|bolus share|basal share|flag
  std::int16_t ItemType = 0;
  double ItemValue = 0;
  std::int16_t TimeSlot = 0;
  std::string Comment;
};

struct TherapyPlan {
  std::int32_t id = 0;  ///< 0: new
  engine::Date vDate;
  std::string desc;
  std::int16_t Type = 0;
  std::string Comment;
  std::vector<PlanItem> items;
};

/// The three numbers of an insulin slot (0 to 4) without other information, with the bars: "|100|0|0".
std::string_view default_insulin_numbers(std::int16_t slot) noexcept;

/// Stores header and items, replacing the items of an existing id; a new plan's id is handed back. True when stored as a
/// whole; a failed save shows a message and leaves the database as it was.
bool db_SaveTherapyPlan(const Environment& environment, const Target& target, TherapyPlan& plan);

/// The plan with the id, or the newest one. False and `plan` untouched where there is none.
bool db_GetTherapyPlan(const Environment& environment, const Target& target, std::optional<std::int32_t> id,
                       TherapyPlan& plan);

struct DefaultInsulin {
  std::string bolus, basal, mix, rapid;
  std::int16_t bolus_percentage = 0;
};
/// From the newest plan, else the defaults table, else the diary, else the language texts.
bool db_GetDefaultInsulin(const Environment& environment, const Target& target, DefaultInsulin& insulin);

/// Three drugs, from the newest plan, else the defaults table; empty where there is none.
bool db_GetDefaultOAD(const Environment& environment, const Target& target, std::array<std::string, 3>& drugs);

}  // namespace database
