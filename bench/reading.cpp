// Opens a patient database and reads patient and settings. The key was derived before.
#include <stdexcept>

#include "bench/jobs.h"
#include "bench/patient_file.h"
#include "bench/straight.h"
#include "database/open_database.h"
#include "database/settings.h"

namespace bench {
namespace {

void read_ours(const std::string& path) {
  const database::Environment environment;
  std::unique_ptr<engine::Engine> engine;
  std::unique_ptr<engine::Database> database;
  database::OpenPatientDatabase(environment, path, true, false, engine, database);
  database::PatientRecord patient;
  database::SettingsRecord settings;
  if (!database || !database::db_GetPatient(environment, *database, 0, patient) ||
      !database::db_GetSettings(environment, *database, settings) || patient.name != sample_patient().name) {
    throw std::runtime_error("patient and settings were not read");
  }
  std::unique_ptr<engine::Recordset> none;
  database::db_cleanup(engine, database, none);
}

/// All columns of the first row, as texts; none if there is no row.
std::vector<std::string> first_row(sqlite3* database, std::string_view sql) {
  const StraightStatement statement = prepare(database, sql);
  std::vector<std::string> values;
  if (sqlite3_step(statement.get()) != SQLITE_ROW) return values;
  for (int i = 0; i < sqlite3_column_count(statement.get()); ++i) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), i));
    values.emplace_back(text == nullptr ? "" : text);
  }
  return values;
}

void read_straight(const std::string& path, const std::string& key) {
  const StraightDatabase database = open_straight(path, key);
  const bool patient = !first_row(database.get(), "SELECT * FROM patdat").empty();
  const bool settings = !first_row(database.get(), "SELECT * FROM patdat_setup").empty();
  first_row(database.get(), "SELECT * FROM therapieplan ORDER BY vDate DESC");
  if (!patient || !settings) throw std::runtime_error("patient and settings were not read");
}

}  // namespace

Job reading_job(const std::filesystem::path& folder) {
  const std::filesystem::path file = folder / "read.das";
  create_patient_file(file);
  const std::string path = windows_path(file);
  const std::string key = derived_key(file.string(), database::default_password);
  return {.name = "open a database, read patient and settings",
          .limit = 1.2,
          .ours = [path] { read_ours(path); },
          .straight = [host_path = file.string(), key] { read_straight(host_path, key); },
          .rounds = 400};
}

}  // namespace bench
