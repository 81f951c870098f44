#include "database/table_procedures.h"

#include <memory>
#include <string>

#include "database/engine/value.h"
#include "database/lab_definitions.h"
#include "database/schema/schema.h"
#include "database/schema/table_builder.h"
#include "support/error.h"

namespace database {

void create_table(const Environment& environment, engine::Database& database, std::string_view name) {
  const schema::TableRow* row = schema::find_table(name);
  if (!row) return;
  if (row->name == schema::treatment_profile.name) {
    CreateTD_Behandlungsprofil(database);
  } else if (row->name == schema::normal_values.name) {
    CreateTD_Normwerte(database);
  } else {
    schema::create_table(database, *row);
  }
  if (row->name == "labdefs") add_lab_definitions(environment, database);
}

namespace {

bool create_field(engine::TableDef& table, const schema::DocumentationField& field) {
  return Field_Create(table, field.name, field.type, field.size, field.attributes, false, field.allow_zero_length,
                      field.default_value);
}

bool create_index(engine::TableDef& table, const schema::DocumentationIndex& index) {
  return Index_Create(table, index.name, index.field, index.field_type, 0, 0, index.primary, index.primary);
}

}  // namespace

bool Field_Create(engine::TableDef& table, std::string_view name, engine::DataType type, std::int32_t size,
                  std::int32_t attributes, bool required, bool allow_zero_length, std::string_view default_value) {
  support::Procedure procedure{"ddg!Field_Create"};
  return procedure.guarded([&] {
    std::shared_ptr<engine::Field> field;
    if (type == engine::DataType::Text) {
      field = table.create_field(name, type, size);
      field->set_allow_zero_length(allow_zero_length);
    } else {
      field = table.create_field(name, type);
    }
    field->set_attributes(attributes);
    field->set_required(required);
    if (type == engine::DataType::Boolean) {
      field->set_default_value(engine::to_bool(std::string(default_value)) ? "True" : "False");
    } else {
      field->set_default_value(default_value);
    }
    table.fields().append(field);
  });
}

bool Index_Create(engine::TableDef& table, std::string_view index_name, std::string_view field_name,
                  engine::DataType field_type, std::int32_t size, std::int32_t attributes, bool primary, bool unique) {
  support::Procedure procedure{"ddg!Index_Create"};
  return procedure.guarded([&] {
    const auto index = table.create_index(index_name);
    const auto field = index->create_field(field_name, field_type);
    if (size > 0) field->set_size(size);
    field->set_attributes(attributes);
    index->fields().append(field);
    index->set_primary(primary);
    index->set_unique(unique);
    table.indexes().append(index);
  });
}

void CreateTD_Behandlungsprofil(engine::Database& database) {
  support::Procedure procedure{"ddg!CreateTD_Behandlungsprofil"};
  procedure.guarded([&] {
    const schema::DocumentationTable& layout = schema::treatment_profile;
    const auto table = database.create_table_def(layout.name);
    for (const auto& index : layout.indexes) create_index(*table, index);
    for (const auto& field : layout.fields) create_field(*table, field);
    database.table_defs().append(table);
  });
}

void CreateTD_Normwerte(engine::Database& database) {
  support::Procedure procedure{"ddg!CreateTD_Normwerte"};
  const schema::DocumentationTable& layout = schema::normal_values;
  std::shared_ptr<engine::TableDef> table;
  procedure.step([&] { table = database.create_table_def(layout.name); });
  if (!table) return;
  for (const auto& field : layout.fields) create_field(*table, field);
  procedure.step([&] { database.table_defs().append(table); });
}

}  // namespace database
