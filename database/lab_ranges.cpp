#include "database/lab_ranges.h"

#include <fmt/core.h>

#include "database/columns.h"
#include "database/opened_target.h"

namespace database {
namespace {

using support::Procedure;

/// A row of the defaults; a description of 0 is the fixed text.
struct RangeRow {
  std::string_view condition;
  std::string_view field;
  std::string_view fixed_description;
  long description;
  std::string_view exchange_key;
  std::int32_t unit, display_unit;
  double from, until, critical;
};

constexpr RangeRow default_ranges[] = {
    {"AND field='dHBA'", "dHbA", "HBA", 0, "HBA", 2, 2, 5.1, 7.3, -1},
    {"AND field='dHBAc'", "dHbAc", "HBA1C", 0, "HBA1c", 2, 2, 4.1, 6.2, -1},
    {"AND field='iChol'", "iChol", "", 3516, "CHOL", 0, 0, -1, 200, 180},
    {"AND field='iAlbu'", "iAlbu", "", 3515, "ALBU", 3, 3, -1, 20, 15},
    {"AND field='iHDL'", "iHDL", "", 3518, "HDL", 0, 0, 35, 50, -1},
    {"AND field='iLDL'", "iLDL", "", 3517, "LDL", 0, 0, -1, 115, 100},
    {"AND field='iTri'", "iTri", "", 3519, "TRIG", 0, 0, -1, 200, 170},
    {"AND field='iCreatinin'", "iCreatinin", "", 3520, "KREA", 0, 0, 0.6, 1.3, -1},
    {"AND field='dKetones'", "dKetones", "", 3521, "KETONE", 1, 0, -1, 1.5, 0.6},
    {"AND field='GLUC_PP'", "GLUC_PP", "", 3526, "GLUC_PP", 0, 0, 120, 180, 170},
    {"AND field='GLUC_NUE'", "GLUC_NUE", "", 3525, "GLUC_NUE", 0, 0, 90, 120, -1},
    {"AND field='Quick'", "Quick", "", 3527, "QUICK", 2, 2, 11, 28, -1},
    {"AND field='INR'", "INR", "", 3528, "INR", 4, 4, 2.5, 4.5, -1},
};

constexpr Column<LabDefinition> definition_columns[] = {
    {"field", &LabDefinition::field},
    {"rangefrom", &LabDefinition::rangefrom},
    {"rangeuntil", &LabDefinition::rangeuntil},
    {"CriticalThreshold", &LabDefinition::CriticalThreshold},
    {"Display", &LabDefinition::Display},
    {"unit", &LabDefinition::unit},
    {"displayunit", &LabDefinition::displayunit},
    {"units_allowed", &LabDefinition::units_allowed},
    {"BDTKEY", &LabDefinition::BDTKEY},
    {"LongDesc", &LabDefinition::LongDesc},
    {"comments", &LabDefinition::comments},
    {"type", &LabDefinition::type},
};

/// Asks the size of `LaborID`, and adds the field where that fails.
void provide_laboratory_field(Procedure& procedure, engine::Database& database) {
  std::shared_ptr<engine::TableDef> table;
  procedure.step([&] { table = database.table_defs().item("Labordefinitionen"); });
  if (!table || procedure.step([&] { table->fields().item("LaborID")->size(); })) return;
  procedure.step([&] {
    const auto field = table->create_field("LaborID", engine::DataType::Long);
    field->set_attributes(engine::attribute_fixed);
    field->set_default_value("0");
    field->set_required(false);
    table->fields().append(field);
  });
}

bool store_range(const Environment& environment, Procedure& procedure, engine::Database& database, const RangeRow& row,
                 std::int32_t laboratory_id) {
  std::unique_ptr<engine::Recordset> rows;
  procedure.step([&] {
    rows = database.open_recordset(
        fmt::format("SELECT * FROM Labordefinitionen where LaborID={}{}", laboratory_id, row.condition));
  });
  if (!rows || !procedure.step([&] { edit_or_add(*rows); })) return false;
  const std::string description =
      row.description == 0 ? std::string(row.fixed_description) : environment.text(row.description);
  const std::pair<std::string_view, engine::Value> columns[] = {
      {"Field", std::string(row.field)},
      {"LongDesc", description},
      {"BDTKEY", std::string(row.exchange_key)},
      {"Unit", row.unit},
      {"DisplayUnit", row.display_unit},
      {"RangeFrom", row.from},
      {"RangeUntil", row.until},
      {"CriticalThreshold", row.critical},
      {"LaborID", laboratory_id},
  };
  for (const auto& column : columns) procedure.step([&] { rows->set_value(column.first, column.second); });
  return procedure.step([&] { rows->update(); });
}

std::string definition_query(const std::variant<std::string, std::int16_t>& name_or_type, std::int32_t laboratory_id) {
  if (const auto* type = std::get_if<std::int16_t>(&name_or_type)) {
    return fmt::format("SELECT * FROM labdefs WHERE type= {}", *type);
  }
  const auto& name = std::get<std::string>(name_or_type);
  if (laboratory_id <= 0) return "SELECT * FROM labdefs WHERE field='" + name + "' ";
  return fmt::format("SELECT * FROM LABORDEFINITIONEN WHERE field='{}' AND LaborID={}", name, laboratory_id);
}

}  // namespace

std::int16_t db_SetDefaultLabRanges(const Environment& environment, const Target& target, std::int32_t laboratory_id) {
  Procedure procedure{"sql!db_SetDefaultLabRanges"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Write};
  std::int16_t stored = 0;
  procedure.guarded([&] {
    engine::Transaction transaction{opened.database()};
    provide_laboratory_field(procedure, opened.database());
    std::int16_t count = 0;
    for (const RangeRow& row : default_ranges) {
      if (store_range(environment, procedure, opened.database(), row, laboratory_id)) ++count;
    }
    transaction.commit();
    stored = count;
  });
  return stored;
}

bool db_GetLabDefinition(const Environment& environment, const Target& target,
                         const std::variant<std::string, std::int16_t>& name_or_type, std::int32_t laboratory_id,
                         LabDefinition& definition) {
  Procedure procedure{"sql!db_GetLabDefinition"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Read};
  const auto row = try_open_row(procedure, opened, definition_query(name_or_type, laboratory_id));
  if (!row) return false;
  LabDefinition found;
  read_columns<LabDefinition>(procedure, *row, definition_columns, found);
  const auto count = try_open_row(procedure, opened,
                                  fmt::format("SELECT count(value) as icnt FROM labvalues WHERE type= {}", found.type));
  if (count) procedure.step([&] { found.stored_values = engine::to_int32(count->value("icnt")); });
  definition = found;
  return true;
}

}  // namespace database
