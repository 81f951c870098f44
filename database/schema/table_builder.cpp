#include "database/schema/table_builder.h"

#include <memory>
#include <optional>
#include <string>

#include "support/encoding.h"

namespace database::schema {
namespace {

/// Passes a property that is given to its setter, as a step of its own.
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

void allow_empty_texts(support::Procedure& procedure, engine::Database& database, std::string_view table) {
  procedure.step([&] {
    const auto definition = database.table_defs().item(table);
    engine::Fields& fields = definition->fields();
    for (std::int32_t i = 0; i < fields.count(); ++i) {
      const auto field = fields.item(i);
      if (field->type() != engine::DataType::Text) continue;
      procedure.step([&] { field->set_allow_zero_length(true); });
    }
  });
}

bool has_field(engine::TableDef& table, std::string_view name) {
  for (std::int32_t i = 0; i < table.fields().count(); ++i) {
    if (support::equal_ignoring_case(table.fields().item(i)->name(), name)) return true;
  }
  return false;
}

}  // namespace database::schema
