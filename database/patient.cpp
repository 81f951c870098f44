#include "database/patient.h"

#include <fmt/core.h>

#include "database/columns.h"
#include "database/open_database.h"

namespace database {
namespace {

/// The columns are read in this order. Writing puts the id before them.
constexpr Column<PatientRecord> patient_columns[] = {
    {"firstname", &PatientRecord::firstname},
    {"name", &PatientRecord::name},
    {"street", &PatientRecord::street},
    {"zip", &PatientRecord::zip},
    {"city", &PatientRecord::city},
    {"phone", &PatientRecord::phone},
    {"fax", &PatientRecord::fax},
    {"therapy", &PatientRecord::therapy},
    {"birthday", &PatientRecord::birthday},
    {"gender", &PatientRecord::gender},
    {"email", &PatientRecord::email},
    {"a1", &PatientRecord::a1},
    {"a2", &PatientRecord::a2},
    {"a3", &PatientRecord::a3},
    {"typ", &PatientRecord::typ},
    {"height", &PatientRecord::height},
    {"number", &PatientRecord::number},
    {"insurance", &PatientRecord::insurance},
    {"insurancenumber", &PatientRecord::insurancenumber},
    {"DiabetesSince", &PatientRecord::DiabetesSince},
    {"OADSince", &PatientRecord::OADSince},
    {"InsulinSince", &PatientRecord::InsulinSince},
    {"CPeptid", &PatientRecord::CPeptid},
};

constexpr Column<PreferredInsulin> insulin_columns[] = {
    {"rapid", &PreferredInsulin::rapid},
    {"bolusie", &PreferredInsulin::bolusie},
    {"basalie", &PreferredInsulin::basalie},
    {"desc", &PreferredInsulin::desc},
    {"manufacturer", &PreferredInsulin::manufacturer},
};

}  // namespace

std::int16_t db_AddPatient(const Environment& environment, const Target& target, const PatientRecord& patient) {
  support::Procedure procedure{"sql!db_AddPatient"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Write};
  const auto rows = try_open_recordset(procedure, opened, fmt::format("SELECT * FROM patdat WHERE ID={}", patient.id));
  if (!rows || !procedure.step([&] { edit_or_add(*rows); })) return 0;
  procedure.step([&] { rows->set_value("id", std::int32_t{patient.id}); });
  write_columns<PatientRecord>(procedure, *rows, patient_columns, patient);
  return procedure.step([&] { rows->update(); }) ? 1 : 0;
}

bool db_GetPatient(const Environment& environment, const Target& target, std::int32_t patient_id,
                   PatientRecord& patient) {
  support::Procedure procedure{"sql!db_GetPatient"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Read};
  std::string query = "SELECT * FROM patdat";
  if (patient_id > 0) query += fmt::format(" WHERE pat_id = {}", patient_id);
  const auto row = try_open_row(procedure, opened, query);
  if (!row) return false;
  read_columns<PatientRecord>(procedure, *row, patient_columns, patient);
  // Some programs did not number their one patient 0. With the number, db_AddPatient finds this row again.
  procedure.step([&] { patient.id = engine::to_int16(row->value("id")); });
  return true;
}

std::string SQL_GetPreferredInsulin() {
  support::Procedure procedure{"sql!SQL_GetPreferredInsulin"};
  return "SELECT * FROM PreferredInsulin";
}

std::int32_t db_GetPreferredInsulin(const Environment& environment, const Target& target,
                                    std::vector<PreferredInsulin>& entries, std::int32_t patient_id) {
  support::Procedure procedure{"sql!db_GetPreferredInsulin"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Read};
  std::string query = SQL_GetPreferredInsulin();
  if (patient_id > 0) query += fmt::format(" AND pat_id = {}", patient_id);
  query += " ORDER BY iSortOrder,manufacturer";
  entries.clear();
  const auto rows = try_open_row(procedure, opened, query);
  for (bool more = rows != nullptr; more; more = next_row(procedure, *rows)) {
    read_columns<PreferredInsulin>(procedure, *rows, insulin_columns, entries.emplace_back());
  }
  return static_cast<std::int32_t>(entries.size());
}

}  // namespace database
