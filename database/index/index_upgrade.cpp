#include "database/index/index_upgrade.h"

#include <fmt/core.h>

#include <optional>
#include <vector>

#include "database/open_database.h"
#include "database/schema/table_builder.h"
#include "support/encoding.h"
#include "support/yield_to_input.h"

namespace database {
namespace {

using engine::DataType;
using support::Procedure;

constexpr float current_index_version = 1.0F;

/// The ids of the patients whose databases are due and not processed yet. The table exists from the change of the
/// index's layout until all patients are done. A patient whose upgrade was interrupted or failed is found here the next
/// time.
constexpr std::string_view pending_table = "upgrade_pending";

struct IndexField {
  std::string_view name;
  DataType type;
  std::string_view default_value;
  /// The field is set to 0 in all rows. If it is missing, the patient databases have an older layout, too.
  bool marks_upgrade = false;
};

constexpr IndexField added_fields[] = {
    {"flag", DataType::Long, "0", true}, {"status", DataType::Long, "0", true}, {"last_open", DataType::Date, "0"},
    {"last_visit", DataType::Date, "0"}, {"last_import", DataType::Date, "0"},  {"last_telemed", DataType::Date, "0"},
    {"next_visit", DataType::Date, "0"}, {"last_hba1c", DataType::Date, "0"},   {"date_range", DataType::Text, ""},
    {"hba1c", DataType::Text, ""},       {"therapy", DataType::Integer, "0"},
};

constexpr IndexField version_field{"version", DataType::Single, "0"};

bool has_table(engine::Database& index, std::string_view name) {
  engine::TableDefs& tables = index.table_defs();
  for (std::int32_t i = 0; i < tables.count(); ++i) {
    if (support::equal_ignoring_case(tables.item(i)->name(), name)) return true;
  }
  return false;
}

bool lacks(engine::Database& index, std::string_view table, const IndexField& row) {
  return !schema::has_field(*index.table_defs().item(table), row.name);
}

void add_field(engine::Database& index, std::string_view table, const IndexField& row) {
  const auto definition = index.table_defs().item(table);
  const auto field = definition->create_field(row.name, row.type);
  field->set_allow_zero_length(true);
  field->set_default_value(row.default_value);
  definition->fields().append(field);
}

void write_version(engine::Database& index) {
  if (!has_table(index, "dbinfo")) return;
  const auto row = index.open_recordset("dbinfo");
  row->eof() ? row->add_new() : row->edit();
  row->set_value("version", current_index_version);
  row->update();
}

void mark_all_patients(engine::Database& index) {
  const std::string name{pending_table};
  index.execute(has_table(index, name) ? "DELETE * FROM " + name : "CREATE TABLE " + name + " (id LONG)");
  index.execute("INSERT INTO " + name + " (id) SELECT id FROM index");
}

/// Adds the fields, the version and the list of patients that are due: all of it, or nothing and an error.
void change_layout(engine::Database& index, const std::vector<const IndexField*>& missing, bool version_missing) {
  engine::Transaction transaction{index};
  if (version_missing) add_field(index, "dbinfo", version_field);
  bool due = false;
  for (const IndexField* field : missing) {
    add_field(index, "index", *field);
    if (!field->marks_upgrade) continue;
    due = true;
    index.execute("UPDATE index set " + std::string(field->name) + "=0");
  }
  if (due) {
    mark_all_patients(index);
    write_version(index);
  }
  transaction.commit();
}

void bring_layout_up_to_date(engine::Database& index) {
  std::vector<const IndexField*> missing;
  for (const IndexField& row : added_fields) {
    if (lacks(index, "index", row)) missing.push_back(&row);
  }
  const bool version_missing = has_table(index, "dbinfo") && lacks(index, "dbinfo", version_field);
  if (!missing.empty() || version_missing) change_layout(index, missing, version_missing);
}

std::vector<std::int32_t> patient_ids(engine::Database& index, const std::string& condition) {
  std::vector<std::int32_t> ids;
  const auto rows = index.open_forward_only("SELECT id FROM index" + condition);
  for (; !rows->eof(); rows->move_next()) ids.push_back(engine::to_int32(rows->value(0)));
  return ids;
}

/// Upgrades the patients that are due, one after the other.
class PatientWalk {
 public:
  PatientWalk(const Environment& environment, engine::Database& index, std::string_view index_path,
              const IndexUpgradeWatch& watch, IndexUpgrade& upgrade)
      : environment_(environment), index_(index), index_path_(index_path), watch_(watch), upgrade_(upgrade) {}

  void run();

 private:
  std::string file_of(std::int32_t id) const { return patient_file(environment_, index_path_, id); }
  void announce(engine::OpeningsAhead& ahead, const std::vector<std::int32_t>& ids);
  void refresh(std::int32_t id);

  const Environment& environment_;
  engine::Database& index_;
  std::string index_path_;
  const IndexUpgradeWatch& watch_;
  IndexUpgrade& upgrade_;
  std::size_t announced_ = 0;
};

void tell_percentage(const IndexUpgradeWatch& watch, std::string_view caption, std::size_t done, std::size_t all) {
  const std::size_t percentage = done * 100 / all;
  if (watch.status) watch.status(fmt::format("{}{}%", caption, percentage));
  if (watch.percentage) watch.percentage(static_cast<std::int32_t>(percentage));
}

void PatientWalk::run() {
  const std::string pending{pending_table};
  // If the index cannot be written, this statement also ends the walk before it has touched a patient's file.
  index_.execute("DELETE * FROM " + pending + " WHERE id NOT IN (SELECT id FROM index)");
  const std::vector<std::int32_t> ids = patient_ids(index_, " WHERE id IN (SELECT id FROM " + pending + ")");
  upgrade_.due = ids.size();
  const auto engine = create_engine(environment_, false);
  const auto ahead = engine->openings_ahead(connect_text(environment_.patient_password()));
  for (std::size_t i = 0; i < ids.size(); ++i) {
    upgrade_.cancelled = watch_.cancelled && watch_.cancelled();
    if (upgrade_.cancelled) return;
    tell_percentage(watch_, "Aktualisiere Datenbank...", i + 1, ids.size());
    if (ahead) announce(*ahead, ids);
    refresh(ids[i]);
    if (ahead) ahead->pass();
    support::YieldToInput();
  }
  if (upgrade_.failed == 0) index_.table_defs().remove(pending);
}

void PatientWalk::announce(engine::OpeningsAhead& ahead, const std::vector<std::int32_t>& ids) {
  for (; announced_ < ids.size() && ahead.has_room(); ++announced_) ahead.announce(file_of(ids[announced_]));
}

void PatientWalk::refresh(std::int32_t id) {
  PatientRecord patient;
  patient.index_id = id;
  const std::string file = file_of(id);
  IndexOutcome outcome;
  if (!file.empty()) db_ProcessIndex(environment_, index_, patient, index_action::refresh, file, &outcome);
  if (watch_.patient && (outcome.failure || outcome.upgrade)) watch_.patient(id, file, outcome);
  if (outcome.failure) {
    ++upgrade_.failed;
    return;
  }
  ++upgrade_.refreshed;
  index_.execute(fmt::format("DELETE * FROM {} WHERE id={}", pending_table, id));
}

void remove_rows_without_file(const Environment& environment, engine::Database& index, std::string_view index_path,
                              const IndexUpgradeWatch& watch, IndexUpgrade& upgrade) {
  std::string missing;
  const std::vector<std::int32_t> ids = patient_ids(index, "");
  for (std::size_t i = 0; i < ids.size(); ++i) {
    tell_percentage(watch, "Bereinige Datenbank...", i + 1, ids.size());
    support::YieldToInput();
    if (!patient_file(environment, index_path, ids[i]).empty()) continue;
    missing += fmt::format("{}{}", missing.empty() ? "" : ",", ids[i]);
    ++upgrade.removed;
  }
  if (!missing.empty()) index.execute("DELETE * FROM INDEX WHERE id IN (" + missing + ")");
}

}  // namespace

IndexUpgrade db_UpgradeIndexDatabase(const Environment& environment, std::string_view index_path,
                                     const IndexUpgradeWatch& watch) {
  Procedure procedure{"sql!db_UpgradeIndexDatabase"};
  IndexUpgrade upgrade;
  OpenPatient open;
  const bool changed = procedure.guarded([&] {
    open = open_patient_database(environment, index_path, false);
    bring_layout_up_to_date(*open.database);
  });
  if (changed) {
    engine::Database& index = *open.database;
    procedure.guarded([&] {
      if (has_table(index, pending_table)) PatientWalk{environment, index, index_path, watch, upgrade}.run();
    });
    if (!upgrade.cancelled) {
      procedure.guarded([&] { remove_rows_without_file(environment, index, index_path, watch, upgrade); });
    }
  }
  if (procedure.pending()) upgrade.failure = procedure.error();
  std::unique_ptr<engine::Recordset> none;
  db_cleanup(open.engine, open.database, none);
  return upgrade;
}

}  // namespace database
