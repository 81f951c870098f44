// The procedures that write a database, interrupted at every point: the file holds what it held before, or what the
// procedure was meant to make of it.
#include "tests/faults/database_faults.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "database/jet_import/engine_source.h"
#include "database/jet_import/import.h"
#include "database/open_database.h"
#include "database/preferences.h"
#include "database/settings.h"
#include "database/therapy_plan.h"
#include "database/upgrade/file_upgrade.h"
#include "database/upgrade/ladder.h"
#include "database/version_record.h"

namespace database::testing {
namespace {

SettingsRecord other_settings() {
  SettingsRecord settings;
  settings.BGTargetMax = 160;
  settings.TargetWeight = 71.5F;
  return settings;
}

TEST_F(DatabaseFaults, ACreationLeavesAWholeDatabaseOrNone) {
  const std::string file = path("new.das");
  sweep_over_new_file("creation", file,
                      [&] { return CreatePatientDatabase(environment, file, sample_patient(), {}) == 1; });
}

TEST_F(DatabaseFaults, ACreationCleansUpAfterOneThatWasKilled) {
  const std::string file = path("new.das");
  const faults::Work work{
      [] {}, {}, [&] { return CreatePatientDatabase(environment, file, sample_patient(), {}) == 1; }, {}};
  ASSERT_EQ(faults::run_with_fault(faults::Fault::Killed, 40, work), Ended::Died);
  const std::vector<std::string> left_behind = files();
  ASSERT_EQ(left_behind.size(), 2U) << "the database and its journal";
  EXPECT_TRUE(faults::run_undisturbed(work));
  EXPECT_EQ(files().size(), 3U) << "what is young may be of a process that lives";
  std::filesystem::remove(host(file));
  const auto age = std::filesystem::file_time_type::clock::now() - std::chrono::minutes(11);
  for (const std::string& name : left_behind) std::filesystem::last_write_time(host(path(name)), age);
  EXPECT_TRUE(faults::run_undisturbed(work));
  EXPECT_EQ(files(), std::vector<std::string>{"new.das"});
}

TEST_F(DatabaseFaults, AnImportLeavesAWholeDatabaseOrNone) {
  const std::string source = path("source.mdb"), file = path("new.das");
  ASSERT_EQ(CreateIndexDatabase(environment, source), 1);
  execute(source, {"INSERT INTO index (name) VALUES ('Anna')", "CREATE TABLE visits (id LONG, day DATETIME)"});
  sweep_over_new_file("an import", file, [&] {
    try {
      Opened opened = open(source);
      const auto tables = jet_import::engine_source(std::move(opened.engine), std::move(opened.database));
      jet_import::import_database(environment, *tables, file, {});
      return true;
    } catch (const support::RuntimeError&) {
      return false;
    }
  });
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

TEST_F(DatabaseFaults, WhatIsReportedStoredSurvivesAPowerCut) {
  const std::string file = patient_database(), before = state(file);
  const faults::Work work{
      restoring(), {}, [&] { return db_SaveSettings(environment, file, other_settings()) == 1; }, {}};
  for (const faults::Fault cut : {faults::Fault::PowerCut, faults::Fault::TornPowerCut}) {
    ASSERT_EQ(faults::run_and_cut_power(cut, work), Ended::Succeeded);
    EXPECT_NE(state(file), before) << faults::name_of(cut);
  }
}

class PasswordFaults : public DatabaseFaults {
 protected:
  std::string file = path("test.das");

  std::unique_ptr<engine::Database> opened(const std::string& password) const {
    return environment.open_engine("DAO.DBEngine.36")->open_database(file, false, false, connect_text(password));
  }
  /// "old", "new", or a description of what is wrong.
  std::string which_opens(const std::string& content, const std::string& before, const std::string& after) const {
    for (const std::string& password : {before, after}) {
      try {
        if (faults::database_state(host(file), password) != content) return "not what was in it";
        const bool plain = read_file(file).starts_with("SQLite");
        return (plain ? before.empty() : password == before) ? "old" : "new";
      } catch (const support::RuntimeError&) {
        continue;
      }
    }
    return "neither";
  }
  void sweep_over_change(const std::string& before, const std::string& after) {
    for (const std::string& name : files()) std::filesystem::remove(host(path(name)));
    {
      const auto created =
          environment.open_engine("DAO.DBEngine.36")->create_database(file, engine::locale_general, engine::version_30);
      created->new_password("", before);
      created->execute("CREATE TABLE t (n LONG, text MEMO)");
      created->execute("INSERT INTO t (n, text) VALUES (1, '" + std::string(20000, 'x') + "')");
    }
    const std::string content = faults::database_state(host(file), before);
    const auto run = [&] {
      try {
        opened(before)->new_password(before, after);
        return true;
      } catch (const support::RuntimeError&) {
        return false;
      }
    };
    const auto check = [&](Ended ended) {
      const std::string found = which_opens(content, before, after);
      EXPECT_TRUE(found == "old" || found == "new") << found;
      if (ended == Ended::Died) return;
      // The file may have its new password if only the way back has failed.
      if (ended == Ended::Succeeded) {
        EXPECT_EQ(found, "new");
      }
      EXPECT_EQ(files().size(), 1U) << ::testing::PrintToString(files());
    };
    faults::sweep("a password change, \"" + before + "\" to \"" + after + '"', {restoring(), {}, run, check});
  }
};

TEST_F(PasswordFaults, TheOldOrTheNewPasswordOpensTheFile) {
  sweep_over_change("alt", "neu");
  sweep_over_change("", "neu");
  sweep_over_change("alt", "");
}

TEST_F(DatabaseFaults, AnUpgradesCopyIsWholeOrNotThere) {
  const std::string file = old_database(58), copy = path("4.58.4.58.das"), before = state(file);
  std::string after;
  const auto run = [&] {
    try {
      upgrade_file(environment, file);
      return true;
    } catch (const support::RuntimeError&) {
      return false;
    }
  };
  const auto check = [&](Ended ended) {
    const std::string found = state(file), saved = state(copy);
    if (after.empty()) after = found;
    EXPECT_TRUE(saved == before || saved == no_file) << "a part of a copy";
    EXPECT_TRUE(found == before || (found == after && saved == before)) << "upgraded without a copy, or in between";
    if (ended == Ended::Succeeded) {
      EXPECT_EQ(found, after);
    }
    if (ended != Ended::Died) {
      // A journal of a file that was opened exclusively is empty if it cannot be deleted.
      const auto left =
          std::ranges::count_if(files(), [](const std::string& name) { return !name.ends_with("-journal"); });
      EXPECT_EQ(left, saved == no_file ? 1 : 2) << ::testing::PrintToString(files());
    }
  };
  faults::sweep("an upgrade after a copy", {restoring(), {}, run, check});
}

TEST_F(DatabaseFaults, PreferencesAreExchangedOrNot) {
  const std::string file = patient_database(), lookup = patient_database("defs.mdb");
  execute(lookup, {"INSERT INTO preferredInsulin ([desc], bolusie, basalie, rapid) VALUES ('Lispro', 90, 0, -1)"});
  sweep_over_file("merging preferences", file, [&] { return db_MergePreferences(environment, file, lookup); });
}

}  // namespace
}  // namespace database::testing
