#include "database/lab_definitions.h"

#include <fmt/core.h>

#include <memory>
#include <string_view>
#include <utility>

#include "database/columns.h"
#include "database/open_database.h"
#include "support/text.h"

namespace database {
namespace {

using support::Procedure;

/// A text of a row: the text itself, or the number of a language text.
struct RowText {
  constexpr RowText(const char* fixed) : text(fixed) {}           // NOLINT(google-explicit-constructor)
  constexpr RowText(long language) : text(), number(language) {}  // NOLINT(google-explicit-constructor)
  std::string_view text;
  long number = 0;
};

/// One measured value. A limit of -1 means no limit. Units are numbers of the diary's list of units.
struct DefinitionRow {
  std::int16_t type;
  std::string_view field;
  RowText description, exchange_key;
  std::int16_t unit, display_unit;
  double range_from, range_until, critical_threshold;
};

constexpr DefinitionRow definition_rows[] = {
    {1, "iWeight", 5007L, 4960L, 4, 4, -1, -1, -1},         {2, "dBodyFat", 5006L, "BODYFAT", 2, 2, -1, -1, -1},
    {10, "dHbA", "HBA", "HBA", 2, 2, 5.1, 7.3, -1},         {11, "dHbAc", "HBA1c", "HBA1C", 2, 2, 4.1, 6.2, -1},
    {12, "iChol", 3516L, "CHOL", 0, 0, -1, 200, 180},       {13, "iAlbu", 3515L, "ALBU", 3, 3, -1, 20, 15},
    {14, "iHDL", 3518L, "HDL", 0, 0, 35, 50, -1},           {15, "iLDL", 3517L, "LDL", 0, 0, -1, 115, 100},
    {16, "iTri", 3519L, "TRIG", 0, 0, -1, 200, 170},        {17, "iCreatinin", 3520L, "KREA", 0, 0, 0.6, 1.3, -1},
    {18, "dKetones", 3521L, "KETONE", 1, 0, -1, 1.5, 0.6},  {19, "GLUC_PP", 3526L, "GLUC_PP", 0, 0, 120, 180, 170},
    {20, "GLUC_NUE", 3525L, "GLUC_NUE", 0, 0, 90, 120, -1}, {21, "Quick", 3527L, "QUICK", 2, 2, 11, 28, -1},
    {22, "INR", 3528L, "INR", 2, 2, 2.5, 4.5, -1},
};

/// From this type on, a laboratory measures the values. The types before are the patient's own measurements.
constexpr std::int16_t first_laboratory_type = 10;

/// The row as the table of one laboratory holds it. INR has no unit; the number for that is 2 in `labdefs`, but 4 here.
/// The two names of HbA1c are exchanged. Existing files hold both forms, so both stay. The ranges are the same.
DefinitionRow as_of_laboratory(DefinitionRow row) {
  if (row.field == "INR") row.unit = row.display_unit = 4;
  if (row.field == "dHbAc") std::swap(row.description, row.exchange_key);
  return row;
}

/// A key is a caption's text without the mark of its access key.
std::string text_of(const Environment& environment, const RowText& row_text, bool is_key) {
  if (row_text.number == 0) return std::string(row_text.text);
  std::string text = environment.text(row_text.number);
  if (is_key) support::replace(text, "&", "");
  return text;
}

void add_definition(Procedure& procedure, engine::Recordset& rows, const Environment& environment,
                    const DefinitionRow& row) {
  const auto whole = [](std::int16_t number) { return engine::Value(std::int32_t{number}); };
  const std::pair<std::string_view, engine::Value> columns[] = {
      {"type", whole(row.type)},
      {"Field", std::string(row.field)},
      {"LongDesc", text_of(environment, row.description, false)},
      {"BDTKEY", text_of(environment, row.exchange_key, true)},
      {"Unit", whole(row.unit)},
      {"Units_allowed", whole(0)},
      {"DisplayUnit", whole(row.display_unit)},
      {"RangeFrom", row.range_from},
      {"RangeUntil", row.range_until},
      {"CriticalThreshold", row.critical_threshold},
  };
  if (!procedure.step([&] { rows.add_new(); })) return;
  for (const auto& column : columns) procedure.step([&] { rows.set_value(column.first, column.second); });
  procedure.step([&] { rows.update(); });
}

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

/// Reads the size of `LaborID`, and adds the field where that fails.
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

bool store_range(const Environment& environment, Procedure& procedure, engine::Database& database,
                 const DefinitionRow& row, std::int32_t laboratory_id) {
  std::unique_ptr<engine::Recordset> rows;
  procedure.step([&] {
    rows = database.open_recordset(
        fmt::format("SELECT * FROM Labordefinitionen where LaborID={}AND field='{}'", laboratory_id, row.field));
  });
  if (!rows || !procedure.step([&] { edit_or_add(*rows); })) return false;
  const std::pair<std::string_view, engine::Value> columns[] = {
      {"Field", std::string(row.field)},
      {"LongDesc", text_of(environment, row.description, false)},
      {"BDTKEY", text_of(environment, row.exchange_key, true)},
      {"Unit", std::int32_t{row.unit}},
      {"DisplayUnit", std::int32_t{row.display_unit}},
      {"RangeFrom", row.range_from},
      {"RangeUntil", row.range_until},
      {"CriticalThreshold", row.critical_threshold},
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

void add_lab_definitions(const Environment& environment, engine::Database& database) {
  Procedure procedure{"sql!CreateTD_labdefs"};
  std::unique_ptr<engine::Recordset> rows;
  procedure.step([&] { rows = database.open_recordset("labdefs"); });
  if (!rows) return;
  for (const DefinitionRow& row : definition_rows) add_definition(procedure, *rows, environment, row);
}

std::int16_t db_SetDefaultLabRanges(const Environment& environment, const Target& target, std::int32_t laboratory_id) {
  Procedure procedure{"sql!db_SetDefaultLabRanges"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Write};
  std::int16_t stored = 0;
  procedure.guarded([&] {
    engine::Transaction transaction{opened.database()};
    provide_laboratory_field(procedure, opened.database());
    std::int16_t count = 0;
    for (const DefinitionRow& row : definition_rows) {
      if (row.type < first_laboratory_type) continue;
      if (store_range(environment, procedure, opened.database(), as_of_laboratory(row), laboratory_id)) ++count;
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
