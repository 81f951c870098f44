// The actions of the ladder's rows. They change the layout and, by one statement or one pass, rows.
#include "database/upgrade/actions.h"

#include <fmt/core.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "database/pump_days.h"
#include "database/schema/table_builder.h"
#include "database/settings.h"
#include "database/table_procedures.h"
#include "database/zone_table.h"
#include "support/encoding.h"

namespace database::upgrade {

namespace {

/// Null where there is none. The error is then pending.
std::shared_ptr<engine::TableDef> find_table(Run& run, std::string_view name) {
  std::shared_ptr<engine::TableDef> table;
  run.procedure.step([&] { table = run.database.table_defs().item(name); });
  return table;
}

/// Tests whether the table exists by walking the collection, so that nothing fails.
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

// Step 42: the import list gets a new name and takes no empty texts.
namespace {

constexpr std::string_view old_table = "imports", new_table = "import";

struct CommonField {
  std::string name;
  /// The new table takes no empty text, so Null is stored in its place.
  bool blank_is_null = false;
  bool numbered = false;
};

std::vector<CommonField> common_fields(engine::Database& database) {
  const auto from = database.table_defs().item(old_table), to = database.table_defs().item(new_table);
  std::vector<CommonField> common;
  for (std::int32_t i = 0; i < from->fields().count(); ++i) {
    const auto field = from->fields().item(i);
    if (!schema::has_field(*to, field->name())) continue;
    const auto target = to->fields().item(field->name());
    common.push_back({field->name(),
                      engine::is_text(field->type()) && engine::is_text(target->type()) &&
                          !target->allow_zero_length() && !target->required(),
                      (target->attributes() & engine::attribute_auto_increment) != 0});
  }
  return common;
}

bool has_blanks(engine::Database& database, const std::vector<CommonField>& fields) {
  std::string condition;
  for (const CommonField& field : fields) {
    if (field.blank_is_null) condition += (condition.empty() ? "[" : " OR [") + field.name + "]=''";
  }
  return !condition.empty() && !database.open_recordset("SELECT * FROM imports WHERE " + condition)->eof();
}

std::string copy_statement(const std::vector<CommonField>& fields) {
  std::string names, values;
  for (const CommonField& field : fields) {
    const std::string name = "[" + field.name + "]", comma = names.empty() ? "" : ",";
    names += comma + name;
    values += comma + (field.blank_is_null ? "iif(" + name + "='',Null," + name + ")" : name);
  }
  return "INSERT INTO import (" + names + ") SELECT " + values + " FROM imports";
}

/// The number of rows that were copied; nothing where the statement failed as a whole.
std::optional<std::int32_t> copy_rows(Run& run, const std::vector<CommonField>& fields) {
  const auto executed = [&](const std::string& statement) {
    return run.procedure.step([&] { run.database.execute(statement); });
  };
  const bool blanks = has_blanks(run.database, fields);
  bool copied = !blanks && executed("INSERT INTO import SELECT * FROM imports");
  if (!copied && (blanks || run.procedure.error().number() == support::error_number::insert_unknown_field)) {
    copied = executed(copy_statement(fields));
  }
  if (!copied) return std::nullopt;
  return run.database.records_affected();
}

/// Adds the row under another number, to see why it fails. It must not stay: entries name imports by their numbers.
void try_row(engine::Database& database, const engine::Recordset& row, const std::vector<CommonField>& fields) {
  const auto target = database.open_recordset(new_table);
  target->add_new();
  const std::int32_t number = engine::to_int32(target->value("id"));
  for (const CommonField& field : fields) {
    if (field.numbered) continue;
    engine::Value value = row.value(field.name);
    if (field.blank_is_null && value == engine::Value("")) value = engine::Null{};
    target->set_value(field.name, value);
  }
  target->update();
  database.execute(fmt::format("DELETE * FROM import WHERE id={}", number));
}

/// Why the first missing row was not copied; empty where that is unknown.
std::string reason(Run& run, const std::vector<CommonField>& fields) {
  std::string text;
  run.procedure.step([&] {
    const auto rows = run.database.open_recordset("SELECT * FROM imports WHERE id NOT IN (SELECT id FROM import)");
    if (rows->eof() || run.procedure.step([&] { try_row(run.database, *rows, fields); })) return;
    text = run.procedure.error().what();
  });
  return text;
}

}  // namespace

void move_imports(Run& run, const Action&, std::string_view table) {
  run.procedure.guarded([&] {
    const std::int32_t rows = run.database.open_recordset(table)->record_count();
    const std::vector<CommonField> fields = common_fields(run.database);
    const std::int32_t arrived = copy_rows(run, fields).value_or(0);
    if (arrived == rows) return run.database.table_defs().remove(table);
    const RowsLeft left{std::string(table), rows - arrived, rows, reason(run, fields)};
    if (run.environment.rows_left) run.environment.rows_left(left);
    throw support::RuntimeError(support::error_number::internal_error, sentence(left));
  });
}

// Pump data in the form of newer layouts: durations in seconds, and a summary of each day.
namespace {

constexpr std::uint32_t ok_cancel = 1, stop_icon = 16;
constexpr int button_ok = 1;
constexpr long progress_text = 2011;
/// From this many days on, the user is asked.
constexpr std::int32_t many_days = 10;

constexpr std::string_view question =
    "Zur künftig schnelleren Berechnung der Pumpenstatistik müssen die gesamten Daten nun einmalig konvertiert "
    "werden\r\n"
    "Dieser Vorgang kann sehr lange dauern und sollte nicht abgebrochen werden !\r\n"
    "Bitte klicken Sie auf OK, wenn die Konvertierung jetzt erfolgen kann; ansonsten klicken Sie auf ABBRUCH";

std::int32_t count_days(engine::Database& database) {
  const auto days = database.open_recordset("SELECT vdate from insulinpump Group by vdate");
  if (!days->eof()) days->move_last();
  return days->record_count();
}

/// Raises 3059 where nobody can be asked: after an answer of "no" the question is never asked again.
bool may_convert(const Environment& environment, std::int32_t days) {
  if (days < many_days) return true;
  if (!environment.message_box) {
    throw support::RuntimeError(support::error_number::cancelled,
                                "The question about the pump data finds nobody to answer it.");
  }
  return environment.message_box(question, ok_cancel | stop_icon, "Achtung") == button_ok;
}

/// Starts the progress and finishes it, if there is one.
class ShownProgress {
 public:
  ShownProgress(const Environment& environment, std::int32_t days) : progress_(environment.progress) {
    if (progress_) progress_->start(environment.text(progress_text), days);
  }
  ~ShownProgress() {
    if (progress_) progress_->finish();
  }
  ShownProgress(const ShownProgress&) = delete;
  ShownProgress& operator=(const ShownProgress&) = delete;
  void at(std::int32_t day) {
    if (progress_) progress_->set_value(day);
  }

 private:
  Progress* progress_;
};

void write_days(Run& run, ShownProgress& progress) {
  std::vector<PumpDay> days;
  std::unique_ptr<engine::Recordset> ip;
  run.procedure.step([&] { days = pump_days(run.database); });
  run.procedure.step([&] { ip = run.database.open_recordset("ip"); });
  if (!ip) return;
  std::int32_t number = 0;
  for (const PumpDay& day : days) {
    end_if_interrupted(run.environment.progress);
    run.procedure.step([&] { append_pump_day(*ip, day); });
    progress.at(++number);
  }
}

}  // namespace

void convert_pump_data(Run& run, const Action&, std::string_view) {
  support::Procedure& procedure = run.procedure;
  std::int32_t days = 0;
  procedure.step([&] { days = count_days(run.database); });
  run.passed_over = !may_convert(run.environment, days);
  if (run.passed_over) return;
  ShownProgress progress{run.environment, days};
  procedure.step([&] { run.database.execute("Delete * from ip"); });
  procedure.step([&] { run.database.execute("UPDATE INSULINPUMP set [desc]=str(val(desc)*60) WHERE desc<>''"); });
  write_days(run, progress);
  run.pump_data_converted = true;
}

void create_after_conversion(Run& run, const Action&, std::string_view table) {
  run.passed_over = !run.pump_data_converted;
  if (!run.passed_over) database::create_table(run.environment, run.database, table);
}

}  // namespace database::upgrade
