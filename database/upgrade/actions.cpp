// What the rows of the ladder do to the layout and, by one statement or one pass, to rows.
#include "database/upgrade/actions.h"

#include <memory>
#include <string>

#include "database/schema/table_builder.h"
#include "database/settings.h"
#include "database/table_procedures.h"
#include "database/zone_table.h"
#include "support/encoding.h"

namespace database::upgrade {
namespace {

/// Null where there is none; the error is then pending.
std::shared_ptr<engine::TableDef> find_table(Run& run, std::string_view name) {
  std::shared_ptr<engine::TableDef> table;
  run.procedure.step([&] { table = run.database.table_defs().item(name); });
  return table;
}

/// The existence test: the collection is walked, nothing fails.
bool table_exists(engine::Database& database, std::string_view name) {
  engine::TableDefs& tables = database.table_defs();
  for (std::int32_t i = 0; i < tables.count(); ++i) {
    if (support::equal_ignoring_case(tables.item(i)->name(), name)) return true;
  }
  return false;
}

}  // namespace

void create_table(Run& run, const Action&, std::string_view table) {
  database::create_table(run.environment, run.database, table);
}

void create_missing_table(Run& run, const Action&, std::string_view table) {
  bool exists = false;
  if (run.procedure.step([&] { exists = table_exists(run.database, table); }) && !exists) {
    database::create_table(run.environment, run.database, table);
  }
}

void delete_table(Run& run, const Action&, std::string_view table) {
  run.procedure.step([&] { run.database.table_defs().remove(table); });
}

void rename_table(Run& run, const Action& action, std::string_view table) {
  run.procedure.step([&] { run.database.table_defs().item(table)->set_name(action.text); });
}

void add_field(Run& run, const Action& action, std::string_view table) {
  const auto definition = find_table(run, table);
  if (!definition) return;
  if (action.names.empty()) schema::append_field(run.procedure, *definition, action.field);
  for (const std::string_view name : action.names) {
    schema::FieldRow field = action.field;
    field.name = name;
    schema::append_field(run.procedure, *definition, field);
  }
}

void add_missing_field(Run& run, const Action& action, std::string_view table) {
  const auto definition = find_table(run, table);
  bool exists = true;
  if (definition) run.procedure.step([&] { exists = schema::has_field(*definition, action.field.name); });
  if (!exists) schema::append_field(run.procedure, *definition, action.field);
}

void delete_field(Run& run, const Action& action, std::string_view table) {
  run.procedure.step([&] { run.database.table_defs().item(table)->fields().remove(action.text); });
}

void change_field(Run& run, const Action& action, std::string_view table) {
  run.procedure.step([&] {
    const auto field = run.database.table_defs().item(table)->fields().item(action.field.name);
    schema::set_properties(run.procedure, *field, action.field);
  });
}

void order_fields(Run& run, const Action& action, std::string_view table) {
  const auto definition = find_table(run, table);
  if (!definition) return;
  std::int16_t position = 0;
  for (const std::string_view name : action.names) {
    run.procedure.step([&] { definition->fields().item(name)->set_ordinal_position(position); });
    ++position;
  }
}

void allow_empty_texts(Run& run, const Action&, std::string_view table) {
  schema::allow_empty_texts(run.procedure, run.database, table);
}

void blank_marked_defaults(Run& run, const Action&, std::string_view table) {
  run.procedure.step([&] {
    const auto definition = run.database.table_defs().item(table);
    engine::Fields& fields = definition->fields();
    for (std::int32_t i = 0; i < fields.count(); ++i) {
      const auto field = fields.item(i);
      if (field->default_value() == "X") run.procedure.step([&] { field->set_default_value(" "); });
    }
  });
}

void execute(Run& run, const Action& action, std::string_view) {
  run.procedure.step([&] { run.database.execute(action.text); });
}

void number_insulins(Run& run, const Action&, std::string_view) {
  run.procedure.step([&] {
    const auto rows = run.database.open_recordset("SELECT * FROM PreferredInsulin ORDER BY iSortorder, manufacturer");
    for (std::int32_t number = 0; !rows->eof(); rows->move_next(), ++number) {
      run.procedure.step([&] {
        rows->edit();
        rows->set_value("bSelectable", true);
        rows->set_value("iSortOrder", number);
        rows->update();
      });
    }
  });
}

void add_zone_times(Run& run, const Action&, std::string_view table) {
  run.procedure.step([&] {
    std::string untouched;
    for (const ZoneRow& zone : zone_rows) {
      for (const std::string_view column : {zone.from_column, zone.until_column}) {
        untouched += (untouched.empty() ? "[" : " AND [") + std::string(column) + "] IS NULL";
      }
    }
    const auto row = run.database.open_recordset("SELECT * FROM [" + std::string(table) + "] WHERE " + untouched);
    if (row->eof()) return;
    ZoneTable zones;
    GetTimeZones(run.environment, run.database, zones, true);
    db_AddTimeZonesToPatient(run.environment, run.database, zones);
  });
}

}  // namespace database::upgrade
