#include "database/schema/schema.h"

#include <array>
#include <memory>
#include <string>

#include "database/schema/subjects.h"
#include "support/encoding.h"
#include "support/error.h"

namespace database::schema {
namespace {

constexpr std::string_view creation_order[] = {
    "db_info",
    "activities",
    "glucose",
    "pressure",
    "import",
    "insulin",
    "intakes",
    "detailed_intakes",
    "medicaldata",
    "patdat",
    "patdat_doctor",
    "patdat_labs",
    "patdat_setup",
    "Memos",
    "EventProt",
    "eventlog",
    "sysevents",
    "insulinpump",
    "PumpConfiguration",
    "ip",
    "labdefs",
    "steps",
    "labvalues",
    "templates",
    "template_activities",
    "template_insulin",
    "template_intakes",
    "template_detailed_intakes",
    "template_medicaldata",
    "Behandlungsprofil",
    "Labordefinitionen",
    "day_info",
    "healthpass",
    "preferredInsulin",
    "preferredMedicals",
    "Comments",
    "CustomEvents",
    "reminder",
    "defaultinsulin",
    "defaultoad",
    "callback",
    "therapieplan",
    "therapieplan_details",
};

constexpr std::string_view data_table_names[] = {
    "glucose", "pressure", "insulin", "intakes", "medicaldata", "activities", "eventlog", "labvalues", "insulinpump",
};

TableRow row_of_subject(std::string_view name) {
  for (const auto subject : {measurement_tables(), patient_tables(), reference_tables(), plan_tables()}) {
    for (const TableRow& row : subject) {
      if (row.name == name) return row;
    }
  }
  return {name, {}, {}};
}

std::array<TableRow, std::size(creation_order)> rows_in_creation_order() {
  std::array<TableRow, std::size(creation_order)> rows;
  for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = row_of_subject(creation_order[i]);
  return rows;
}

/// Hands a given property to its setter, as a step of its own.
template <typename Given, typename Object, typename Setter>
void set_given(support::Procedure& procedure, const std::optional<Given>& property, Object& object, Setter setter) {
  if (property) procedure.step([&] { (object.*setter)(*property); });
}

void append_index(support::Procedure& procedure, engine::TableDef& table, const IndexRow& row) {
  std::shared_ptr<engine::Index> index;
  procedure.step([&] { index = table.create_index(row.name); });
  if (!index) return;
  constexpr void (engine::Index::*flags[])(bool) = {&engine::Index::set_clustered, &engine::Index::set_primary,
                                                    &engine::Index::set_unique, &engine::Index::set_required,
                                                    &engine::Index::set_ignore_nulls};
  for (const auto set_flag : flags) procedure.step([&] { ((*index).*set_flag)(false); });
  std::shared_ptr<engine::Field> field;
  procedure.step([&] { field = index->create_field(row.field); });
  if (field) {
    procedure.step([&] { field->set_attributes(0); });
    procedure.step([&] { index->fields().append(field); });
  }
  procedure.step([&] { table.indexes().append(index); });
}

}  // namespace

std::span<const TableRow> tables() {
  static const auto rows = rows_in_creation_order();
  return rows;
}

const TableRow* find_table(std::string_view name) {
  for (const TableRow& row : tables()) {
    if (support::equal_ignoring_case(row.name, name)) return &row;
  }
  return nullptr;
}

std::span<const std::string_view> data_tables() { return data_table_names; }

void set_properties(support::Procedure& procedure, engine::Field& field, const FieldRow& row) {
  set_given(procedure, row.attributes, field, &engine::Field::set_attributes);
  set_given(procedure, row.default_value, field, &engine::Field::set_default_value);
  set_given(procedure, row.required, field, &engine::Field::set_required);
  set_given(procedure, row.allow_zero_length, field, &engine::Field::set_allow_zero_length);
  set_given(procedure, row.ordinal, field, &engine::Field::set_ordinal_position);
}

void append_field(support::Procedure& procedure, engine::TableDef& table, const FieldRow& row) {
  std::shared_ptr<engine::Field> field;
  procedure.step([&] {
    field = row.size > 0 ? table.create_field(row.name, row.type, row.size) : table.create_field(row.name, row.type);
  });
  if (!field) return;
  set_properties(procedure, *field, row);
  procedure.step([&] { field->set_validation_rule(""); });
  procedure.step([&] { field->set_validation_text(""); });
  procedure.step([&] { table.fields().append(field); });
}

void create_table(engine::Database& database, const TableRow& row) {
  support::Procedure procedure{"sql!CreateTD_" + std::string(row.name)};
  std::shared_ptr<engine::TableDef> table;
  procedure.step([&] { table = database.create_table_def(row.name); });
  if (!table) return;
  procedure.step([&] { table->set_attributes(0); });
  procedure.step([&] { table->set_connect(""); });
  procedure.step([&] { table->set_source_table_name(""); });
  procedure.step([&] { table->set_validation_rule(""); });
  procedure.step([&] { table->set_validation_text(""); });
  for (const FieldRow& field : row.fields) append_field(procedure, *table, field);
  for (const IndexRow& index : row.indexes) append_index(procedure, *table, index);
  procedure.step([&] { database.table_defs().append(table); });
}

}  // namespace database::schema
