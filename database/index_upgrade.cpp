#include <vector>

#include "database/index_database.h"
#include "database/opened_target.h"
#include "database/schema/table_builder.h"
#include "support/yield_to_input.h"

namespace database {
namespace {

using engine::DataType;
using support::Procedure;

constexpr float current_index_version = 1.0F;

struct IndexField {
  std::string_view name;
  DataType type;
  std::string_view default_value;
  /// Set to 0 in all rows; its absence means that the patient databases are of an older layout, too.
  bool marks_upgrade = false;
};

constexpr IndexField added_fields[] = {
    {"flag", DataType::Long, "0", true}, {"status", DataType::Long, "0", true}, {"last_open", DataType::Date, "0"},
    {"last_visit", DataType::Date, "0"}, {"last_import", DataType::Date, "0"},  {"last_telemed", DataType::Date, "0"},
    {"next_visit", DataType::Date, "0"}, {"last_hba1c", DataType::Date, "0"},   {"date_range", DataType::Text, ""},
    {"hba1c", DataType::Text, ""},       {"therapy", DataType::Integer, "0"},
};

constexpr IndexField version_field{"version", DataType::Single, "0"};

/// False also where the table is missing.
bool has_field(Procedure& procedure, engine::Database& database, std::string_view table, std::string_view field) {
  bool found = false;
  procedure.step([&] { found = schema::has_field(*database.table_defs().item(table), field); });
  return found;
}

void add_field(Procedure& procedure, engine::Database& database, std::string_view table, const IndexField& row) {
  procedure.step([&] {
    const auto definition = database.table_defs().item(table);
    const auto field = definition->create_field(row.name, row.type);
    field->set_allow_zero_length(true);
    field->set_default_value(row.default_value);
    definition->fields().append(field);
  });
}

/// True where the patient databases are due.
bool add_index_fields(Procedure& procedure, engine::Database& index) {
  bool due = false;
  for (const IndexField& row : added_fields) {
    if (has_field(procedure, index, "index", row.name)) continue;
    add_field(procedure, index, "index", row);
    if (!row.marks_upgrade) continue;
    due = true;
    procedure.step([&] { index.execute("UPDATE index set " + std::string(row.name) + "=0"); });
  }
  return due;
}

std::vector<std::int32_t> patient_ids(Procedure& procedure, const OpenedTarget& index) {
  std::vector<std::int32_t> ids;
  const auto rows = try_open_row(procedure, index, "SELECT id FROM index");
  for (bool more = rows != nullptr; more; more = next_row(procedure, *rows)) {
    procedure.step([&] { ids.push_back(engine::to_int32(rows->value("id"))); });
  }
  return ids;
}

/// The rows of a walk, each told of with the percentage done.
template <typename Row>
void walk(const std::vector<std::int32_t>& ids, const StatusCaption& status, std::string_view caption, Row&& row) {
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (status) status(std::string(caption) + std::to_string((i + 1) * 100 / ids.size()) + "%");
    row(ids[i]);
    support::YieldToInput();
  }
}

void write_version(Procedure& procedure, engine::Database& index) {
  std::unique_ptr<engine::Recordset> row;
  if (!procedure.step([&] { row = index.open_recordset("dbinfo"); })) return;
  procedure.step([&] { row->eof() ? row->add_new() : row->edit(); });
  procedure.step([&] { row->set_value("version", current_index_version); });
  procedure.step([&] { row->update(); });
}

void remove_rows_without_file(const Environment& environment, Procedure& procedure, const OpenedTarget& index,
                              std::string_view index_path, const StatusCaption& status) {
  std::string missing;
  walk(patient_ids(procedure, index), status, "Bereinige Datenbank...", [&](std::int32_t id) {
    if (!patient_file(environment, index_path, id).empty()) return;
    missing += (missing.empty() ? "" : ",") + std::to_string(id);
  });
  if (missing.empty()) return;
  procedure.step([&] { index.database().execute("DELETE * FROM INDEX WHERE id IN (" + missing + ")"); });
}

}  // namespace

bool db_UpgradeIndexDatabase(const Environment& environment, std::string_view index_path, const StatusCaption& status) {
  Procedure procedure{"sql!db_UpgradeIndexDatabase"};
  const OpenedTarget index(environment, index_path, OpenedTarget::Access::Write);
  if (!index.get()) return false;
  if (!has_field(procedure, *index.get(), "dbinfo", "version")) {
    add_field(procedure, *index.get(), "dbinfo", version_field);
  }
  if (add_index_fields(procedure, *index.get())) {
    walk(patient_ids(procedure, index), status, "Aktualisiere Datenbank...", [&](std::int32_t id) {
      PatientRecord patient;
      patient.index_id = id;
      const std::string file = patient_file(environment, index_path, id);
      if (!file.empty()) db_ProcessIndex(environment, *index.get(), patient, index_action::refresh, file);
    });
    write_version(procedure, *index.get());
  }
  remove_rows_without_file(environment, procedure, index, index_path, status);
  return true;
}

}  // namespace database
