// Refreshes the patient index. One job compares a thousand patients with a hundred; their files are copies of one, as
// an administrator rolls them out, so they share password and salt. The other job compares the walk of an upgrade,
// which derives keys ahead, with the same refreshes one after the other; there, each file has a salt of its own.
#include <fmt/core.h>

#include <filesystem>
#include <memory>
#include <stdexcept>

#include "bench/jobs.h"
#include "bench/long_history.h"
#include "bench/patient_file.h"
#include "bench/straight.h"
#include "database/engine/embedded/file_keys.h"
#include "database/index/index_database.h"
#include "database/index/index_upgrade.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

/// What a refresh reads from a patient's database, except the patient.
constexpr const char* questions[] = {
    "SELECT * FROM db_info",
    "SELECT * FROM therapieplan ORDER BY vDate DESC",
    "SELECT count(vdate), min(vdate), max(vdate) FROM glucose WHERE vdate IS NOT NULL",
    "SELECT count(vdate), min(vdate), max(vdate) FROM insulin WHERE vdate IS NOT NULL",
    "SELECT count(vdate), min(vdate), max(vdate) FROM insulinpump WHERE vdate IS NOT NULL",
    "SELECT count(vdate), min(vdate), max(vdate) FROM pressure WHERE vdate IS NOT NULL",
    "SELECT count(vdate), min(vdate), max(vdate) FROM intakes WHERE vdate IS NOT NULL",
    "SELECT count(vdate), min(vdate), max(vdate) FROM activities WHERE vdate IS NOT NULL",
    "SELECT count(vdate), min(vdate), max(vdate) FROM medicaldata WHERE vdate IS NOT NULL",
    "SELECT count(vdate), min(vdate), max(vdate) FROM eventlog WHERE vdate IS NOT NULL",
    "SELECT count(vdate), min(vdate), max(vdate) FROM labvalues WHERE type>=10 AND vdate IS NOT NULL",
    "SELECT * FROM labvalues WHERE type=11 ORDER BY vdate DESC",
};

void read_rows(sqlite3* database, const char* sql) {
  const StraightStatement rows = prepare(database, sql);
  int result = SQLITE_ROW;
  while ((result = sqlite3_step(rows.get())) == SQLITE_ROW) {
  }
  check(database, result);
}

/// The patient's row in the index.
void write_row(sqlite3* index, sqlite3* patient, int id) {
  const StraightStatement from = prepare(patient, "SELECT name, firstname, birthday, typ FROM patdat");
  if (sqlite3_step(from.get()) != SQLITE_ROW) throw std::runtime_error("no patient");
  const StraightStatement into =
      prepare(index, "INSERT INTO \"index\"(name, firstname, dateofbirth, diabetestyp, id, flag) VALUES (?,?,?,?,?,0)");
  for (int i = 0; i < 4; ++i) check(index, sqlite3_bind_value(into.get(), i + 1, sqlite3_column_value(from.get(), i)));
  check(index, sqlite3_bind_int(into.get(), 5, id));
  check(index, sqlite3_step(into.get()));
}

/// The patient's name goes to the meters that are assigned to the patient.
void name_devices(sqlite3* devices, int id) {
  const StraightStatement names =
      prepare(devices, "UPDATE meters SET name='Müller', firstname='Jörg' WHERE assignedto=?");
  check(devices, sqlite3_bind_int(names.get(), 1, id));
  check(devices, sqlite3_step(names.get()));
}

/// An index database and the files of its patients in a folder of their own, which has a devices database as every
/// installation has one: every second patient has a meter.
class Practice {
 public:
  Practice(const fs::path& folder, int patients)
      : folder_(folder / ("practice" + std::to_string(patients))), patients_(patients) {}

  /// Makes the files once, and puts the index back into the state before any refresh.
  void prepare() {
    fs::create_directories(folder_);
    if (!fs::exists(file(patients_))) {
      create_patient_file(file(1));
      for (int id = 2; id <= patients_; ++id) fs::copy_file(file(1), file(id));
    }
    if (!fs::exists(devices())) create_devices();
    if (key_.empty()) key_ = derived_key(file(1).string(), database::default_password);
    fs::remove(index());
    const std::string name = windows_path(index());
    if (database::CreateIndexDatabase(environment(), name) != 1 ||
        !database::db_UpgradeIndexDatabase(environment(), name, {}).complete()) {
      throw std::runtime_error("no index database");
    }
  }

  void refresh() const {
    const database::Environment surroundings = environment();
    const std::string name = windows_path(index());
    for (int id = 1; id <= patients_; ++id) {
      database::PatientRecord patient;
      patient.index_id = id;
      if (database::db_ProcessIndex(surroundings, name, patient, database::index_action::refresh,
                                    windows_path(file(id))) == 0) {
        throw std::runtime_error("not refreshed: " + std::to_string(id));
      }
    }
  }

  void refresh_straight() const {
    for (int id = 1; id <= patients_; ++id) {
      const StraightDatabase patient = open_straight(file(id).string(), key_);
      for (const char* question : questions) read_rows(patient.get(), question);
      const StraightDatabase list = open_straight(index().string(), "");
      write_row(list.get(), patient.get(), id);
      const StraightDatabase meters = open_straight(devices().string(), "");
      name_devices(meters.get(), id);
    }
  }

 private:
  database::Environment environment() const {
    database::Environment environment = willing_environment();
    environment.password = database::default_password;
    environment.data_folder = windows_path(folder_);
    return environment;
  }
  void create_devices() const {
    const auto engine = environment().open_engine("DAO.DBEngine.36");
    const auto database = engine->create_database(windows_path(devices()), engine::locale_general, engine::version_30);
    database->execute("CREATE TABLE meters (assignedto LONG, name TEXT(100), firstname TEXT(100))");
    database->execute("CREATE INDEX assignedto ON meters (assignedto)");
    for (int id = 2; id <= patients_; id += 2) {
      database->execute(fmt::format("INSERT INTO meters (assignedto) VALUES ({})", id));
    }
  }
  fs::path index() const { return folder_ / "index.mdb"; }
  fs::path devices() const { return folder_ / "meters.mdb"; }
  fs::path file(int id) const { return folder_ / fmt::format("db4_{:06}.das", id); }

  fs::path folder_;
  int patients_;
  std::string key_;
};

Job refresh_of(const fs::path& folder, int patients) {
  const auto practice = std::make_shared<Practice>(folder, patients);
  return {"refresh the index", growth_limit, [=] { practice->refresh(); }, [=] { practice->refresh_straight(); },
          [=] { practice->prepare(); }};
}

/// Patients whose files have salts of their own, in an index that needs its upgrade.
class OwnSalts {
 public:
  explicit OwnSalts(const fs::path& folder) : folder_(folder / "salts") {}

  void prepare() const {
    fs::create_directories(folder_);
    for (int id = 1; id <= patients; ++id) {
      if (!fs::exists(file(id))) create_patient_file(file(id));
    }
    fs::remove(folder_ / "index.mdb");
    if (database::CreateIndexDatabase(environment(), index()) != 1) throw std::runtime_error("no index database");
    const auto engine = environment().open_engine("DAO.DBEngine.36");
    const auto database = engine->open_database(index(), false, false, "");
    for (int id = 1; id <= patients; ++id) {
      database->execute("INSERT INTO index (id) VALUES (" + std::to_string(id) + ")");
    }
    engine::embedded::forget_known_keys();
  }

  void walk() const {
    const auto upgrade = database::db_UpgradeIndexDatabase(environment(), index(), {});
    if (!upgrade.complete() || upgrade.refreshed != patients) throw std::runtime_error("not all refreshed");
  }

  void one_after_the_other() const {
    for (int id = 1; id <= patients; ++id) {
      database::PatientRecord patient;
      patient.index_id = id;
      if (database::db_ProcessIndex(environment(), index(), patient, database::index_action::refresh,
                                    windows_path(file(id))) != id) {
        throw std::runtime_error("not refreshed: " + std::to_string(id));
      }
    }
  }

 private:
  static constexpr int patients = 16;
  database::Environment environment() const {
    database::Environment environment = willing_environment();
    environment.password = database::default_password;
    environment.data_folder = windows_path(folder_);
    return environment;
  }
  std::string index() const { return windows_path(folder_ / "index.mdb"); }
  fs::path file(int id) const { return folder_ / fmt::format("db4_{:06}.das", id); }

  fs::path folder_;
};

}  // namespace

GrowthJob index_growth_job(const fs::path& folder) {
  return {"refresh the index, 1,000 patients beside 100", refresh_of(folder, 1000), refresh_of(folder, 100)};
}

Job index_ahead_job(const fs::path& folder) {
  const auto patients = std::make_shared<OwnSalts>(folder);
  return {"upgrade an index, beside one by one (2 cores)", 0.6, [=] { patients->walk(); },
          [=] { patients->one_after_the_other(); }, [=] { patients->prepare(); }};
}

}  // namespace bench
