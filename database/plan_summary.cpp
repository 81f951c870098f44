#include "database/plan_summary.h"

#include <fmt/core.h>

#include <string_view>
#include <utility>

#include "database/engine/format/format.h"
#include "database/open_database.h"
#include "database/query_filter.h"
#include "database/settings.h"
#include "database/therapy_plan.h"

namespace database {
namespace {

using support::Procedure;

constexpr std::string_view counted_parts[] = {
    "SELECT lid, 0 as bzfrom, 0 as bzuntil, 0 as bzhypo, 0 as bzhyper, COUNT(itemtype) as lPlan, 0 as dietplan,"
    "0 as korrektplan, 0 as baserate1, 0 as baserate2, 0 as baserate3 from therapieplan_details WHERE itemtype "
    "BETWEEN 0 and 5 GROUP BY lID",
    " SELECT lid, 0 as bzfrom, 0 as bzuntil, 0 as bzhypo, 0 as bzhyper, 0 as lPlan, COUNT(itemtype) as dietplan,"
    "0 as korrektplan, 0 as baserate1, 0 as baserate2, 0 as baserate3 from therapieplan_details WHERE itemtype "
    "BETWEEN 10 and 100 GROUP BY lID",
    " SELECT lid, 0 as bzfrom, 0 as bzuntil, 0 as bzhypo, 0 as bzhyper, 0 as lPlan, 0 as dietplan, COUNT(itemtype) as "
    "korrektplan, 0 as baserate1, 0 as baserate2, 0 as baserate3 from therapieplan_details WHERE itemtype BETWEEN 200 "
    "and 299 GROUP BY lID",
};

constexpr std::string_view names[] = {"bzfrom",   "bzuntil",     "bzhypo",    "bzhyper",   "lPlan",
                                      "dietplan", "korrektplan", "baserate1", "baserate2", "baserate3"};

/// An expression that is the value in rows of one item type, and 0 in all others.
struct ValuePart {
  std::string_view name;
  std::string_view value;
  std::string_view condition;
};

constexpr ValuePart value_parts[] = {
    {"baserate1", "sum(itemvalue)", "itemtype =400 GROUP BY lID"},
    {"baserate2", "sum(itemvalue)", "itemtype =401 GROUP BY lID"},
    {"baserate3", "sum(itemvalue)", "itemtype =402 GROUP BY lID"},
    {"bzfrom", "[itemvalue]", "itemtype =500"},
    {"bzuntil", "[itemvalue]", "itemtype =501"},
    {"bzhypo", "[itemvalue]", "itemtype =502"},
    {"bzhyper", "[itemvalue]", "itemtype =503"},
};

std::string value_query(const ValuePart& part) {
  std::string text = " SELECT lid";
  for (const std::string_view name : names) {
    text += ", " + std::string(name == part.name ? part.value : "0") + " as " + std::string(name);
  }
  return text + " from therapieplan_details WHERE " + std::string(part.condition);
}

struct Figure {
  std::string_view name;
  double& value;
};

/// Adds one row of the union to the figures. In each row one figure is not 0.
void add_row(Procedure& procedure, const engine::Recordset& row, PlanSummary& summary) {
  const auto read = [&](std::string_view name) {
    double value = 0;
    procedure.step([&] { value = engine::to_double(row.value(name)); });
    return value;
  };
  summary.insulin_items += static_cast<std::int32_t>(read("lPlan"));
  summary.diet_items += static_cast<std::int32_t>(read("dietplan"));
  summary.correction_items += static_cast<std::int32_t>(read("korrektplan"));
  const Figure figures[] = {{"baserate1", summary.basal_rates[0]}, {"baserate2", summary.basal_rates[1]},
                            {"baserate3", summary.basal_rates[2]}, {"bzfrom", summary.glucose_from},
                            {"bzuntil", summary.glucose_until},    {"bzhypo", summary.hypoglycaemia},
                            {"bzhyper", summary.hyperglycaemia}};
  for (const Figure& figure : figures) {
    if (const double value = read(figure.name); value != 0) figure.value = value;
  }
}

/// By slot: the numbers of a slot that the plan leaves out. For basal insulin the first number is empty here.
constexpr std::string_view insulin_defaults[] = {"|100|0|0", "||100", "|100|0|-1", "|100|0|0", "|100|0|0"};

void read_insulins(const Environment& environment, const Target& target, PlanSummary& summary) {
  TherapyPlan plan;
  db_GetTherapyPlan(environment, target, summary.id, plan);
  for (const PlanItem& item : plan.items) {
    if (item.ItemType < plan_item::bolus || item.ItemType > plan_item::pump || item.desc.empty()) continue;
    summary.insulins[static_cast<std::size_t>(item.ItemType)] = item.desc;
  }
  for (std::size_t slot = 0; slot < summary.insulins.size(); ++slot) {
    if (summary.insulins[slot].empty()) summary.insulins[slot] = insulin_defaults[slot];
  }
}

void divide_by_weight(const Environment& environment, const Target& target, PlanSummary& summary) {
  constexpr double grams = 1000;
  SettingsRecord settings;
  db_GetSettings(environment, target, settings);
  const auto weight = static_cast<double>(settings.TargetWeight);
  // A smaller number cannot be a weight in grams: nobody weighs less than a kilogram.
  if (weight >= grams) summary.basal_per_kilogram = summary.basal_rates[0] / (weight / grams);
}

}  // namespace

std::string plan_summary_query() {
  std::string text;
  for (const std::string_view part : counted_parts) text += (text.empty() ? "" : " UNION ") + std::string(part);
  for (const ValuePart& part : value_parts) text += " UNION " + value_query(part);
  return text + ";";
}

bool db_GetPlanSummary(const Environment& environment, const Target& target, std::optional<engine::Date> day,
                       PlanSummary& summary) {
  Procedure procedure{"sql!db_GetPlanSummary"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Read};
  const std::string condition = day ? "WHERE vdate <= " + date_literal(*day) + " " : "";
  const auto plan = try_open_row(procedure, opened, "SELECT * from therapieplan " + condition + "ORDER by vdate DESC");
  PlanSummary found;
  if (!plan || !procedure.step([&] { found.id = engine::to_int32(plan->value("id")); })) return false;
  procedure.step([&] { found.date = engine::to_date(plan->value("vdate")); });
  const auto rows = try_open_row(procedure, opened, plan_summary_query());
  for (bool more = rows != nullptr; more; more = next_row(procedure, *rows)) {
    procedure.step([&] {
      if (engine::to_int32(rows->value("lid")) == found.id) add_row(procedure, *rows, found);
    });
  }
  read_insulins(environment, *opened.get(), found);
  divide_by_weight(environment, *opened.get(), found);
  summary = found;
  return true;
}

std::string plan_summary_text(const PlanSummary& summary) {
  std::string text = fmt::format("{}|{}|{}", summary.insulin_items, summary.diet_items, summary.correction_items);
  const std::pair<int, double> values[] = {{400, summary.basal_rates[0]}, {401, summary.basal_rates[1]},
                                           {402, summary.basal_rates[2]}, {500, summary.glucose_from},
                                           {501, summary.glucose_until},  {502, summary.hypoglycaemia},
                                           {503, summary.hyperglycaemia}};
  for (const auto& [type, value] : values) {
    text += fmt::format("|{}={}", type, engine::format(value, "0.0"));
  }
  if (summary.basal_per_kilogram) text += "|400/kg=" + engine::format(*summary.basal_per_kilogram, "0.00");
  for (std::size_t slot = 0; slot < summary.insulins.size(); ++slot) {
    text += fmt::format("|{}={}", slot, summary.insulins[slot]);
  }
  return text;
}

}  // namespace database
