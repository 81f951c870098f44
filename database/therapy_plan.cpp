#include "database/therapy_plan.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <tuple>

#include "database/columns.h"
#include "database/open_database.h"
#include "support/user_locale.h"

namespace database {
namespace {

constexpr long text_plan_not_saved = 4880;
constexpr long text_saving_item = 4881;
constexpr std::uint32_t style_plain = 0;
constexpr std::uint32_t style_exclamation = 48;

constexpr Column<TherapyPlan> header_columns[] = {
    {"vdate", &TherapyPlan::vDate},
    {"desc", &TherapyPlan::desc},
    {"type", &TherapyPlan::Type},
    {"comment", &TherapyPlan::Comment},
};

constexpr Column<PlanItem> item_columns[] = {
    {"desc", &PlanItem::desc},         {"itemvalue", &PlanItem::ItemValue}, {"comment", &PlanItem::Comment},
    {"timeslot", &PlanItem::TimeSlot}, {"itemtype", &PlanItem::ItemType},
};

/// Every column must be stored; the first one that cannot be stored ends this.
template <typename Record>
void store_columns(engine::Recordset& row, std::span<const Column<Record>> columns, const Record& record) {
  for (const auto& column : columns) row.set_value(column.name, column_value(record, column));
}

std::int32_t store_header(engine::Database& database, const TherapyPlan& plan) {
  std::int32_t id = plan.id;
  std::unique_ptr<engine::Recordset> row;
  if (id != 0) {
    row = database.open_recordset(fmt::format("SELECT * FROM therapieplan WHERE id={}", id));
    row->move_last();
    row->edit();
  } else {
    row = database.open_recordset("therapieplan");
    row->add_new();
    id = engine::to_int32(row->value("id"));
  }
  store_columns<TherapyPlan>(*row, header_columns, plan);
  row->update();
  return id;
}

void store_item(engine::Recordset& rows, const PlanItem& item, std::int32_t plan_id) {
  rows.add_new();
  store_columns<PlanItem>(rows, item_columns, item);
  rows.set_value("lid", plan_id);
  rows.update();
}

/// Returns the number of items that could not be stored. Each was shown to the user.
std::size_t store_items(const Environment& environment, support::Procedure& procedure, engine::Recordset& rows,
                        const std::vector<PlanItem>& items, std::int32_t plan_id) {
  std::size_t failed = 0;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (environment.progress) {
      environment.progress->set_value(static_cast<std::int32_t>(i + 1));
      environment.progress->set_caption(environment.text(text_saving_item) + "\r\n" + items[i].desc);
    }
    if (procedure.step([&] { store_item(rows, items[i], plan_id); })) continue;
    ++failed;
    environment.show_message(procedure.error().what(), style_plain);
  }
  return failed;
}

std::string header_query(std::optional<std::int32_t> id) {
  return id ? fmt::format("SELECT * FROM therapieplan WHERE id={}", *id)
            : "SELECT * FROM therapieplan ORDER BY vdate DESC";
}

constexpr std::string_view slot_numbers[] = {"|100|0|0", "|0|100|0", "|100|0|-1", "|100|0|0", "|100|0|0"};

std::string whole_number(double value) {
  return std::to_string(static_cast<long long>(support::round_half_even(std::clamp(value, -1e9, 1e9))));
}

std::string without_bars(std::string_view name) {
  std::string text{name};
  std::replace(text.begin(), text.end(), '|', ' ');
  return text;
}

/// The three numbers of an insulin slot for which nothing else is known, with their bars; empty where there is no such
/// slot.
std::string_view default_numbers(std::int16_t slot) {
  return slot >= plan_item::bolus && slot <= plan_item::pump ? slot_numbers[slot] : std::string_view{};
}

}  // namespace

bool db_SaveTherapyPlan(const Environment& environment, const Target& target, TherapyPlan& plan) {
  support::Procedure procedure{"sql!db_SaveTherapyPlan"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Write};
  std::int32_t id = 0;
  std::size_t failed_items = 0;
  const bool stored = procedure.guarded([&] {
    engine::Database& database = opened.database();
    engine::Transaction transaction{database};
    id = store_header(database, plan);
    const auto details = database.open_recordset("therapieplan_details");
    if (!details->updatable())
      throw support::RuntimeError(support::error_number::read_only, "the plan's items cannot be changed");
    database.execute(fmt::format("DELETE * FROM therapieplan_details WHERE lID={}", id));
    failed_items = store_items(environment, procedure, *details, plan.items, id);
    details->close();
    transaction.commit();
  });
  if (!stored) {
    if (environment.beep) environment.beep();
    environment.show_message(environment.text(text_plan_not_saved), style_exclamation);
    return false;
  }
  plan.id = id;
  return failed_items == 0;
}

bool db_GetTherapyPlan(const Environment& environment, const Target& target, std::optional<std::int32_t> id,
                       TherapyPlan& plan) {
  support::Procedure procedure{"sql!db_GetTherapyPlan"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Read};
  TherapyPlan found;
  const auto header = try_open_row(procedure, opened, header_query(id));
  if (!header || !procedure.step([&] { found.id = engine::to_int32(header->value("id")); })) return false;
  read_columns<TherapyPlan>(procedure, *header, header_columns, found);
  const auto details =
      try_open_row(procedure, opened, fmt::format("select * from therapieplan_details where lid={}", found.id));
  for (bool more = details != nullptr; more; more = next_row(procedure, *details)) {
    read_columns<PlanItem>(procedure, *details, item_columns, found.items.emplace_back());
  }
  plan = std::move(found);
  return true;
}

std::string insulin_text(std::string_view name, std::int16_t slot) {
  return without_bars(name).append(default_numbers(slot));
}

std::string insulin_text(std::string_view name, double bolus, double basal, double flag) {
  return without_bars(name) + "|" + whole_number(bolus) + "|" + whole_number(basal) + "|" + whole_number(flag);
}

std::string insulin_name(std::string_view text) { return std::string(text.substr(0, text.find('|'))); }

namespace {

engine::Date midnight_of(engine::Date moment) { return {std::trunc(moment.days)}; }

/// Replaces the plan's items of this type by the choice. Items with the chosen name stay as they are, with their doses
/// and comments.
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
