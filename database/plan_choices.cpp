#include "database/plan_choices.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace database {
namespace {

engine::Date midnight_of(engine::Date moment) { return {std::trunc(moment.days)}; }

/// Puts the choice in the place of the plan's items of this type. Items with the chosen name stay as they are, doses
/// and comments included.
void choose_text(std::vector<PlanItem>& items, std::int16_t type, const std::optional<std::string>& choice) {
  if (!choice) return;
  const std::string chosen = insulin_name(*choice);
  const auto of_type = [&](const PlanItem& item) { return item.ItemType == type; };
  const bool known = std::any_of(items.begin(), items.end(), [&](const PlanItem& item) {
    return of_type(item) && !chosen.empty() && insulin_name(item.desc) == chosen;
  });
  if (known) return;
  std::erase_if(items, of_type);
  if (!chosen.empty()) items.push_back({.desc = *choice, .ItemType = type});
}

void choose_number(std::vector<PlanItem>& items, std::int16_t type, const std::optional<double>& choice) {
  if (!choice) return;
  const bool known = std::any_of(items.begin(), items.end(), [&](const PlanItem& item) {
    return item.ItemType == type && item.ItemValue == *choice;
  });
  if (known) return;
  std::erase_if(items, [&](const PlanItem& item) { return item.ItemType == type; });
  items.push_back({.desc = "", .ItemType = type, .ItemValue = *choice});
}

std::vector<PlanItem> in_order(std::vector<PlanItem> items) {
  std::sort(items.begin(), items.end(), [](const PlanItem& left, const PlanItem& right) {
    const auto key = [](const PlanItem& item) {
      return std::tie(item.ItemType, item.TimeSlot, item.ItemValue, item.desc, item.Comment);
    };
    return key(left) < key(right);
  });
  return items;
}

}  // namespace

TherapyPlan first_plan(const PlanChoices& choices, engine::Date today) { return following_plan({}, choices, today); }

TherapyPlan following_plan(const TherapyPlan& newest, const PlanChoices& choices, engine::Date today) {
  TherapyPlan plan = newest;
  plan.id = midnight_of(newest.vDate) == midnight_of(today) ? newest.id : 0;
  plan.vDate = midnight_of(today);
  std::int16_t type = plan_item::bolus;
  for (const auto& insulin : choices.insulins) choose_text(plan.items, type++, insulin);
  type = plan_item::drug_first;
  for (const auto& drug : choices.drugs) choose_text(plan.items, type++, drug);
  type = plan_item::glucose_from;
  for (const auto& number : choices.targets) choose_number(plan.items, type++, number);
  std::stable_sort(plan.items.begin(), plan.items.end(),
                   [](const PlanItem& left, const PlanItem& right) { return left.ItemType < right.ItemType; });
  return plan;
}

bool same_content(const TherapyPlan& left, const TherapyPlan& right) {
  return in_order(left.items) == in_order(right.items);
}

}  // namespace database
