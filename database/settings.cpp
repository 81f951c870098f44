#include "database/settings.h"

#include <fmt/core.h>

#include "database/columns.h"
#include "database/open_database.h"
#include "database/therapy_plan.h"
#include "database/zone_table.h"

namespace database {
namespace {

/// The columns are written in this order.
constexpr Column<SettingsRecord> target_columns[] = {
    {"BGTargetMax", &SettingsRecord::BGTargetMax},
    {"BGTargetMin", &SettingsRecord::BGTargetMin},
    {"BGHyper", &SettingsRecord::BGHyper},
    {"BGHypo", &SettingsRecord::BGHypo},
    {"BPTargetDiaMax", &SettingsRecord::BPTargetDiaMax},
    {"BPTargetDiaMin", &SettingsRecord::BPTargetDiaMin},
    {"BPTargetSysMax", &SettingsRecord::BPTargetSysMax},
    {"BPTargetSysMin", &SettingsRecord::BPTargetSysMin},
    {"TargetWeight", &SettingsRecord::TargetWeight},
    {"BUPerDayMax", &SettingsRecord::BUPerDayMax},
    {"CholPerDayMax", &SettingsRecord::CholPerDayMax},
    {"KHPerDayMax", &SettingsRecord::KHPerDayMax},
    {"KCalPerDayMax", &SettingsRecord::KCalPerDayMax},
    {"FatPerDayMax", &SettingsRecord::FatPerDayMax},
    {"ProtPerDayMax", &SettingsRecord::ProtPerDayMax},
};

/// The target that an item of the newest therapy plan overrides. A plan's weight is a thousandth of the record's.
struct Override {
  std::int16_t item_type;
  Column<SettingsRecord> target;
  double factor = 1;
};

constexpr Override plan_overrides[] = {
    {plan_item::glucose_until, {"", &SettingsRecord::BGTargetMax}},
    {plan_item::glucose_from, {"", &SettingsRecord::BGTargetMin}},
    {plan_item::systolic_until, {"", &SettingsRecord::BPTargetSysMax}},
    {plan_item::systolic_from, {"", &SettingsRecord::BPTargetSysMin}},
    {plan_item::diastolic_until, {"", &SettingsRecord::BPTargetDiaMax}},
    {plan_item::diastolic_from, {"", &SettingsRecord::BPTargetDiaMin}},
    {plan_item::hyperglycaemia, {"", &SettingsRecord::BGHyper}},
    {plan_item::hypoglycaemia, {"", &SettingsRecord::BGHypo}},
    {plan_item::weight, {"", &SettingsRecord::TargetWeight}, 1000},
    {plan_item::bread_units, {"", &SettingsRecord::BUPerDayMax}},
    {plan_item::carbohydrates, {"", &SettingsRecord::KHPerDayMax}},
    {plan_item::protein, {"", &SettingsRecord::ProtPerDayMax}},
    {plan_item::fat, {"", &SettingsRecord::FatPerDayMax}},
    {plan_item::cholesterol, {"", &SettingsRecord::CholPerDayMax}},
};

std::string with_patient(std::string query, std::int32_t patient_id) {
  if (patient_id > 0) query += fmt::format(" WHERE pat_id = {}", patient_id);
  return query;
}

void read_zone(support::Procedure& procedure, const Environment& environment, const engine::Recordset& row,
               const ZoneRow& layout, Zone& zone) {
  procedure.step([&] { zone.from = engine::to_date(row.value(layout.from_column)); });
  procedure.step([&] { zone.until = engine::to_date(row.value(layout.until_column)); });
  if (layout.description_column.empty()) {
    zone.description = zone_name(environment, layout);
    return;
  }
  procedure.step([&] { zone.description = engine::to_text(row.value(layout.description_column)); });
  if (zone.from == engine::Date{} && zone.until == engine::Date{}) {
    zone.from = zone_time(layout.default_from).value();
    zone.until = zone_time(layout.default_until).value();
  }
}

void apply_plan(support::Procedure& procedure, const TherapyPlan& plan, SettingsRecord& settings) {
  for (const PlanItem& item : plan.items) {
    for (const Override& row : plan_overrides) {
      if (row.item_type != item.ItemType) continue;
      procedure.step([&] { assign_column(settings, row.target, item.ItemValue * row.factor); });
    }
  }
}

void write_zone_times(support::Procedure& procedure, engine::Recordset& row, const ZoneTable& zones) {
  for (std::size_t i = 0; i < zones.size(); ++i) {
    procedure.step([&] { row.set_value(zone_rows[i].from_column, zones[i].from); });
    procedure.step([&] { row.set_value(zone_rows[i].until_column, zones[i].until); });
  }
}

}  // namespace

bool db_GetSettings(const Environment& environment, const Target& target, SettingsRecord& settings,
                    std::int32_t patient_id) {
  support::Procedure procedure{"sql!db_GetSettings"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Read};
  if (!opened.get()) return false;
  auto row = try_open_row(procedure, opened, with_patient("SELECT * FROM [patdat_setup]", patient_id));
  const bool found = row != nullptr;
  if (found) {
    read_columns<SettingsRecord>(procedure, *row, target_columns, settings);
    for (std::size_t i = 0; i < zone_rows.size(); ++i) {
      read_zone(procedure, environment, *row, zone_rows[i], settings.zones[i]);
    }
  }
  row.reset();
  TherapyPlan plan;
  if (db_GetTherapyPlan(environment, *opened.get(), std::nullopt, plan)) apply_plan(procedure, plan, settings);
  return found;
}

std::int16_t db_SaveSettings(const Environment& environment, const Target& target, const SettingsRecord& settings,
                             std::int32_t patient_id) {
  support::Procedure procedure{"sql!db_SaveSettings"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Write};
  const auto row = try_open_recordset(procedure, opened, with_patient("SELECT * FROM patdat_setup", patient_id));
  if (!row || !procedure.step([&] { edit_or_add(*row); })) return 0;
  write_columns<SettingsRecord>(procedure, *row, target_columns, settings);
  write_zone_times(procedure, *row, settings.zones);
  for (std::size_t i = 0; i < zone_rows.size(); ++i) {
    if (zone_rows[i].description_column.empty()) continue;
    procedure.step([&] { row->set_value(zone_rows[i].description_column, settings.zones[i].description); });
  }
  return procedure.step([&] { row->update(); }) ? 1 : 0;
}

std::int16_t db_AddTimeZonesToPatient(const Environment& environment, const Target& target, const ZoneTable& zones,
                                      std::int32_t patient_id) {
  support::Procedure procedure{"sql!db_AddTimeZonesToPatient"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Write};
  const auto row = try_open_recordset(procedure, opened, with_patient("SELECT * FROM [patdat_setup]", patient_id));
  const auto edit_last = [&] {
    row->move_last();
    row->edit();
  };
  if (!row || !procedure.step(edit_last)) return 0;
  write_zone_times(procedure, *row, zones);
  return procedure.step([&] { row->update(); }) ? 1 : 0;
}

}  // namespace database
