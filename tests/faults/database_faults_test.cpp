// The procedures that write a database, interrupted at every point: the file holds what it held before or what the
// procedure was to make of it.
#include <filesystem>

#include "database/index_database.h"
#include "database/lab_definitions.h"
#include "database/settings.h"
#include "database/therapy_plan.h"
#include "database/version_record.h"
#include "tests/faults/database_state.h"
#include "tests/faults/fault_sweep.h"
#include "tests/faults/fault_vfs.h"
#include "tests/upgrade/old_layout.h"

namespace database::testing {
namespace {

using faults::Ended;

class DatabaseFaults : public OldLayout {
 protected:
  DatabaseFaults() { faults::install_fault_vfs(); }

  std::string host(const std::string& windows_path) const {
    return support::host_file_system().host_path(windows_path);
  }
  std::string state(const std::string& file) const { return faults::database_state(host(file), environment.password); }

  /// `run` changes the file, at once: whatever interrupts it, the file holds the one state or the other, and the one
  /// that `run` says.
  void sweep_over_file(std::string_view name, const std::string& file, const std::function<bool()>& run) {
    const std::string content = read_file(file);
    const std::string before = state(file);
    EXPECT_TRUE(run());
    const std::string after = state(file);
    ASSERT_NE(before, after);
    const auto prepare = [&] {
      std::filesystem::remove(host(file) + "-journal");
      write_file(file, content);
    };
    const auto check = [&](Ended ended) {
      const bool untouched = !std::filesystem::exists(host(file) + "-journal") && read_file(file) == content;
      const std::string found = untouched ? before : state(file);
      if (ended != Ended::Failed && found == after) return;
      if (ended != Ended::Succeeded && found == before) return;
      ADD_FAILURE() << "ended " << static_cast<int>(ended)
                    << (found == before  ? " with the state before"
                        : found == after ? " with the state after"
                                         : " in between");
    };
    faults::sweep(name, {prepare, {}, run, check});
  }

  SettingsRecord other_settings() const {
    SettingsRecord settings;
    settings.BGTargetMax = 160;
    settings.TargetWeight = 71.5F;
    return settings;
  }
};

TEST_F(DatabaseFaults, ACreationLeavesAWholeDatabaseOrNone) {
  const std::string file = path("new.das");
  std::string after;
  const auto prepare = [&] {
    for (const std::string& name : files()) std::filesystem::remove(host(path(name)));
  };
  const auto run = [&] { return CreatePatientDatabase(environment, file, sample_patient(), {}) == 1; };
  const auto check = [&](Ended ended) {
    const std::string found = state(file);
    if (after.empty()) after = found;
    if (ended == Ended::Died) {
      EXPECT_TRUE(found == "(no file)" || found == after);
    } else {
      EXPECT_TRUE(found == (ended == Ended::Succeeded ? after : "(no file)"));
      EXPECT_EQ(files().size(), ended == Ended::Succeeded ? 1U : 0U);
    }
  };
  faults::sweep("creation", {prepare, {}, run, check});
}

TEST_F(DatabaseFaults, SettingsAreStoredOrNot) {
  const std::string file = patient_database();
  sweep_over_file("saving settings", file, [&] { return db_SaveSettings(environment, file, other_settings()) == 1; });
}

TEST_F(DatabaseFaults, APatientIsStoredOrNot) {
  const std::string file = patient_database();
  PatientRecord patient = sample_patient();
  patient.city = "Halle";
  sweep_over_file("saving a patient", file, [&] { return db_AddPatient(environment, file, patient) == 1; });
}

TEST_F(DatabaseFaults, APlanIsStoredWithAllItsItemsOrNot) {
  const std::string file = patient_database();
  TherapyPlan plan;
  plan.vDate = engine::date_from(2024, 5, 17);
  for (std::int16_t type = 500; type < 508; ++type) plan.items.push_back({"item", type, type / 10.0});
  sweep_over_file("saving a plan", file, [&] {
    TherapyPlan copy = plan;
    return db_SaveTherapyPlan(environment, file, copy);
  });
}

TEST_F(DatabaseFaults, AnUpgradeGoesToItsEndOrChangesNothing) {
  environment.message_box = [](std::string_view, std::uint32_t, std::string_view) { return 1; };
  const std::string file = old_database(53);
  sweep_over_file("an upgrade", file, [&] {
    VersionRecord record;
    return db_ReadDBInfo(environment, file, record) && db_WriteDBInfo(environment, file, record) == 1;
  });
}

TEST_F(DatabaseFaults, AnIndexRowIsStoredOrNot) {
  const std::string index = path("index.mdb"), file = patient_database();
  ASSERT_EQ(CreateIndexDatabase(environment, index), 1);
  sweep_over_file("refreshing the index", index, [&] {
    PatientRecord patient;
    return db_ProcessIndex(environment, index, patient, index_action::refresh, file) != 0;
  });
}

TEST_F(DatabaseFaults, PreferencesAreExchangedOrNot) {
  const std::string file = patient_database(), lookup = patient_database("defs.mdb");
  execute(lookup, {"INSERT INTO preferredInsulin ([desc], bolusie, basalie, rapid) VALUES ('Lispro', 90, 0, -1)"});
  sweep_over_file("merging preferences", file, [&] { return db_MergePreferences(environment, file, lookup); });
}

}  // namespace
}  // namespace database::testing
