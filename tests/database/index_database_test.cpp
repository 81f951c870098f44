#include "database/index/index_database.h"

#include <fmt/core.h>

#include <filesystem>

#include "database/creation/create_database.h"
#include "database/index/index_upgrade.h"
#include "support/user_locale.h"
#include "tests/database/database_test.h"

namespace database {
namespace {

using Lines = std::vector<std::string>;

class IndexTest : public testing::DatabaseTest {
 public:
  IndexTest() : index(path("index.mdb")), devices(path("meters.mdb")) {
    environment.data_folder = folder;
    EXPECT_EQ(CreateIndexDatabase(environment, index), 1);
    add_upgraded_fields();
  }

  /// Upgrades the index.
  void add_upgraded_fields() { EXPECT_TRUE(db_UpgradeIndexDatabase(environment, index, {}).complete()); }

  void create_devices() {
    const auto engine = environment.open_engine("DAO.DBEngine.36");
    const auto database = engine->create_database(devices, engine::locale_general, engine::version_30);
    database->execute("CREATE TABLE meters (name TEXT(50), firstname TEXT(50), assignedto LONG)");
    const auto table = database->table_defs().item("meters");
    for (const char* field : {"name", "firstname"}) table->fields().item(field)->set_allow_zero_length(true);
    database->execute("INSERT INTO meters VALUES ('Alt', 'Anna', 7)");
    database->execute("INSERT INTO meters VALUES ('Neu', 'Nils', 8)");
    database->close();
  }

  PatientRecord record(std::int32_t id) const {
    PatientRecord patient = testing::sample_patient();
    patient.index_id = id;
    patient.external_id = "4711";
    patient.typ = 2;
    patient.therapy = 3;
    return patient;
  }

  std::string index, devices;
};

TEST_F(IndexTest, WritesRefreshesAndRemovesAPatientsRow) {
  const std::string file = patient_database();
  PatientRecord patient = record(0);
  const std::int32_t id = db_ProcessIndex(environment, index, patient, index_action::write, "");
  ASSERT_GT(id, 0);
  const std::string columns = "SELECT name, firstname, dateofbirth, externalid, diabetestyp, therapy FROM index";
  EXPECT_EQ(rows(index, columns), Lines{patient.name + "|" + patient.firstname + "|1951-02-28 00:00:00|4711|2|3"});

  execute(file, {"UPDATE patdat SET name='Neumann', birthday=#3/1/1952#, typ=1"});
  patient.index_id = id;
  EXPECT_EQ(db_ProcessIndex(environment, index, patient, 10, file), id);
  EXPECT_EQ(rows(index, columns), Lines{"Neumann|" + patient.firstname + "|1952-03-01 00:00:00|4711|1|1"});
  EXPECT_EQ(patient.name, "Neumann");

  for (const std::int16_t unused : {std::int16_t{3}, std::int16_t{9}, std::int16_t{20}}) {
    EXPECT_EQ(db_ProcessIndex(environment, index, patient, unused, file), 0);
    EXPECT_EQ(rows(index, columns).size(), 1U) << unused;
  }
  EXPECT_EQ(db_ProcessIndex(environment, index, patient, index_action::remove, ""), 0);
  EXPECT_EQ(rows(index, columns), Lines{});
}

TEST_F(IndexTest, RefreshesFromAnOlderLayoutTheNewestPlanAndTheNumberElsewhere) {
  const std::string file = patient_database();
  execute(file, {"UPDATE db_info SET MinVersion=58", "ALTER TABLE patdat ADD COLUMN externalID LONG",
                 "UPDATE patdat SET externalID=4712", "INSERT INTO therapieplan (vdate, [type]) VALUES (#3/1/2024#, 3)",
                 "INSERT INTO therapieplan (vdate, [type]) VALUES (#3/9/2024#, 2)",
                 "INSERT INTO therapieplan (vdate, [type]) VALUES (#2/1/2024#, 4)"});
  PatientRecord patient = record(0);
  ASSERT_GT(db_ProcessIndex(environment, index, patient, index_action::refresh, file), 0);
  EXPECT_EQ(rows(index, "SELECT externalid, therapy FROM index"), Lines{"4712|2"});
  EXPECT_EQ(rows(file, "SELECT MinVersion FROM db_info"), Lines{"60"});
}

TEST_F(IndexTest, AddsARowForAPatientThatHasNone) {
  const std::string file = patient_database();
  PatientRecord patient;
  patient.index_id = 0;
  const std::int32_t id = db_ProcessIndex(environment, index, patient, index_action::refresh, file);
  EXPECT_GT(id, 0);
  EXPECT_EQ(patient.index_id, id);
  EXPECT_EQ(rows(index, "SELECT flag, date_range, last_hba1c, hba1c FROM index"),
            Lines{"0|Null|1899-12-30 00:00:00|Null"});
}

TEST_F(IndexTest, TellsSpanAndHbA1cOfTheDatabase) {
  const std::string file = patient_database();
  execute(file, {"INSERT INTO glucose (vdate, [value]) VALUES (#3/4/2024#, 100)",
                 "INSERT INTO insulin (vdate, bolusie) VALUES (#2/1/2024#, 4)",
                 "INSERT INTO labvalues (vdate, [value], [type]) VALUES (#1/5/2024#, 7.3, 11)",
                 "INSERT INTO memos (vdate, typ) VALUES (#1/1/2020#, 1)"});
  struct Case {
    const char* value;
    std::string_view shown;
  };
  for (const Case& row : {Case{"7.3", "7,3|>"}, Case{"6.2", "6,2"}, Case{"4", "4,0|<"}, Case{"-1", "-1,0"}}) {
    execute(file, {"UPDATE labvalues SET [value]=" + std::string(row.value)});
    PatientRecord patient = record(1);
    db_ProcessIndex(environment, index, patient, 1, file);
    EXPECT_EQ(rows(index, "SELECT flag, date_range, last_hba1c FROM index"),
              Lines{"3|05.01.2024 - 04.03.2024|2024-01-05 00:00:00"});
    EXPECT_EQ(rows(index, "SELECT hba1c FROM index"), Lines{std::string(row.shown)});
  }
}

TEST_F(IndexTest, KeepsDevicesInStep) {
  create_devices();
  const std::string all = "SELECT name, firstname, assignedto FROM meters ORDER BY assignedto";
  PatientRecord patient = record(7);
  patient.name = "Neu";
  patient.firstname = "Name";
  // Without a file, the names of the record are taken.
  db_ProcessIndex(environment, index, patient, index_action::refresh, path("none.das"));
  patient.index_id = 7;
  db_ProcessIndex(environment, index, patient, 0, path("none.das"));
  EXPECT_EQ(rows(devices, "SELECT count(*) FROM meters WHERE assignedto IN (7,8)"), Lines{"2"});
  patient = record(8);
  patient.name = "D'Arc";
  db_ProcessIndex(environment, index, patient, 0, path("none.das"));
  EXPECT_EQ(rows(devices, "SELECT name FROM meters WHERE assignedto=8"), Lines{"Neu"})
      << "a name with an apostrophe does not reach the devices";
  for (const std::int16_t releasing : {std::int16_t{2}, std::int16_t{21}}) {
    patient = record(releasing == 2 ? 7 : 8);
    db_ProcessIndex(environment, index, patient, releasing, "");
  }
  EXPECT_EQ(rows(devices, "SELECT count(*) FROM meters WHERE assignedto=0 AND name='' AND firstname=''"), Lines{"2"});
}

TEST_F(IndexTest, UpgradeAddsFieldsRefreshesPatientsAndRemovesRowsWithoutFile) {
  const std::string old = path("old\\index.mdb");
  ASSERT_TRUE(support::host_file_system().create_folder(path("old")));
  ASSERT_EQ(CreateIndexDatabase(environment, old), 1);
  // The table of the version comes first, as by name.
  execute(old, {"CREATE TABLE dbinfo (remark TEXT(10))", "SELECT * INTO kept FROM index", "DROP TABLE index",
                "SELECT * INTO index FROM kept", "DROP TABLE kept"});
  execute(old, {"INSERT INTO index (id, name) VALUES (42, 'Alt')", "INSERT INTO index (id, name) VALUES (43, 'Weg')",
                "INSERT INTO index (id, name) VALUES (44, 'Daneben')"});
  ASSERT_EQ(patient_database("old\\db4_000042.das"), path("old\\db4_000042.das"));
  patient_database("db4_000044.das");
  Lines captions;
  const IndexUpgradeWatch watch{.status = [&](const std::string& text) { captions.push_back(text); }};
  EXPECT_TRUE(db_UpgradeIndexDatabase(environment, old, watch).complete());
  const std::string name = testing::sample_patient().name;
  EXPECT_EQ(rows(old, "SELECT id, name, flag, status FROM index ORDER BY id"),
            (Lines{"42|" + name + "|0|0", "44|" + name + "|0|0"}));
  EXPECT_EQ(rows(old, "SELECT version FROM dbinfo"), Lines{"1"});
  EXPECT_EQ(captions,
            (Lines{"Aktualisiere Datenbank...33%", "Aktualisiere Datenbank...66%", "Aktualisiere Datenbank...100%",
                   "Bereinige Datenbank...33%", "Bereinige Datenbank...66%", "Bereinige Datenbank...100%"}));
  captions.clear();
  EXPECT_TRUE(db_UpgradeIndexDatabase(environment, old, watch).complete());
  EXPECT_EQ(captions, (Lines{"Bereinige Datenbank...50%", "Bereinige Datenbank...100%"})) << "nothing is due now";
  EXPECT_EQ(db_UpgradeIndexDatabase(environment, path("none.mdb"), {}).failure->number(), 3024);
}

/// An index that is not up to date yet, with patients whose databases have an older layout.
class IndexOfOldPatients : public IndexTest {
 public:
  IndexOfOldPatients() {
    support::host_file_system().create_folder(path("old"));
    EXPECT_EQ(CreateIndexDatabase(environment, old), 1);
    add_patient(1);
    for (const int id : {2, 3}) {
      std::filesystem::copy_file(host(file(1)), host(file(id)));
      execute(old, {"INSERT INTO index (id) VALUES (" + std::to_string(id) + ")"});
    }
  }
  void add_patient(int id) {
    patient_database("old\\" + fmt::format("db4_{:06}.das", id));
    execute(file(id), {"UPDATE db_info SET MinVersion=57"});
    execute(old, {"INSERT INTO index (id) VALUES (" + std::to_string(id) + ")"});
  }
  void wear_pump(int id) {
    for (int day = 1; day <= 10; ++day) {
      execute(file(id), {"INSERT INTO insulinpump (vdate, [type]) VALUES (#3/" + std::to_string(day) + "/2024#, 1)"});
    }
  }
  std::string file(int id) const { return path("old\\" + fmt::format("db4_{:06}.das", id)); }
  static std::string host(const std::string& name) { return support::host_file_system().host_path(name); }
  std::string layouts() const {
    std::string all;
    for (const int id : {1, 2, 3}) all += rows(file(id), "SELECT MinVersion FROM db_info")[0] + " ";
    return all;
  }
  Lines names() const { return rows(old, "SELECT id FROM index WHERE name<>'' ORDER BY id"); }

  std::string old = path("old\\index.mdb");
};

TEST_F(IndexOfOldPatients, AreUpgradedAfterACopy) {
  Lines told;
  const IndexUpgradeWatch watch{.patient = [&](std::int32_t id, const std::string&, const IndexOutcome& outcome) {
    told.push_back(std::to_string(id) + " " + outcome.upgrade->layout + " " + outcome.upgrade->copy);
  }};
  EXPECT_TRUE(db_UpgradeIndexDatabase(environment, old, watch).complete());
  EXPECT_EQ(told, (Lines{"1 4.57 db4_000001.4.57.das", "2 4.57 db4_000002.4.57.das", "3 4.57 db4_000003.4.57.das"}));
  EXPECT_EQ(layouts(), "60 60 60 ");
  EXPECT_EQ(rows(path("old\\db4_000002.4.57.das"), "SELECT MinVersion FROM db_info"), Lines{"57"});
}

TEST_F(IndexOfOldPatients, WhoseQuestionNobodyAnswersStayAsTheyAreAndStayDue) {
  wear_pump(2);
  environment.message_box = {};
  std::string told;
  const IndexUpgradeWatch watch{.patient = [&](std::int32_t id, const std::string&, const IndexOutcome& outcome) {
    if (outcome.failure) told += std::to_string(id) + ":" + std::to_string(outcome.failure->number()) + " ";
  }};
  const IndexUpgrade first = db_UpgradeIndexDatabase(environment, old, watch);
  EXPECT_FALSE(first.complete());
  EXPECT_EQ(first.refreshed, 2U);
  EXPECT_EQ(told, "2:3059 ");
  EXPECT_EQ(layouts(), "60 57 60 ");
  EXPECT_EQ(names(), (Lines{"1", "3"}));
  EXPECT_FALSE(support::file_test(support::host_file_system(), path("old\\db4_000002.4.57.das")));
  environment.message_box = [](std::string_view, std::uint32_t, std::string_view) { return 1; };
  const IndexUpgrade second = db_UpgradeIndexDatabase(environment, old, watch);
  EXPECT_TRUE(second.complete());
  EXPECT_EQ(second.due, 1U);
  EXPECT_EQ(layouts(), "60 60 60 ");
  EXPECT_EQ(db_UpgradeIndexDatabase(environment, old, watch).due, 0U);
}

TEST_F(IndexOfOldPatients, CancelledBetweenTwoAreWholeAndGoneOnWith) {
  int asked = 0;
  const IndexUpgrade cancelled = db_UpgradeIndexDatabase(environment, old, {.cancelled = [&] { return ++asked == 2; }});
  EXPECT_TRUE(cancelled.cancelled);
  EXPECT_EQ(cancelled.refreshed, 1U);
  EXPECT_EQ(layouts(), "60 57 57 ");
  const IndexUpgrade rest = db_UpgradeIndexDatabase(environment, old, {});
  EXPECT_EQ(rest.due, 2U);
  EXPECT_TRUE(rest.complete());
  EXPECT_EQ(layouts(), "60 60 60 ");
  EXPECT_EQ(names().size(), 3U);
}

TEST_F(IndexTest, ANewRowNeverGetsTheNumberOfAPatientsFile) {
  const std::string file = patient_database("db4_000001.das");
  patient_database("db4_000003.das");
  PatientRecord patient = record(0);
  EXPECT_EQ(db_ProcessIndex(environment, index, patient, index_action::write, ""), 2);
  PatientRecord other;
  EXPECT_EQ(db_ProcessIndex(environment, index, other, index_action::refresh, file), 4);
  EXPECT_EQ(rows(index, "SELECT id, flag, hba1c FROM index ORDER BY id"), (Lines{"2|0|Null", "4|0|Null"}));
}

TEST_F(IndexTest, AFileThatCannotBeReadAddsNoRow) {
  write_file(path("damaged.das"), "no database");
  for (const auto& [name, number] :
       std::vector<std::pair<std::string, int>>{{"damaged.das", 3343}, {"none.das", 3024}, {"index.mdb", 3021}}) {
    PatientRecord patient;
    IndexOutcome outcome;
    EXPECT_EQ(db_ProcessIndex(environment, index, patient, index_action::refresh, path(name), &outcome), 0) << name;
    EXPECT_EQ(outcome.failure ? outcome.failure->number() : 0, number) << name;
  }
  EXPECT_EQ(rows(index, "SELECT id FROM index"), Lines{});
}

TEST_F(IndexTest, LeavesOutWithoutAWordWhatTheUpgradeOfTheIndexAdds) {
  const std::string plain = path("plain.mdb");
  ASSERT_EQ(CreateIndexDatabase(environment, plain), 1);
  const std::string file = patient_database();
  PatientRecord patient;
  const support::Outcome outcome = support::outcome_of(
      [&] { EXPECT_EQ(db_ProcessIndex(environment, plain, patient, index_action::refresh, file), 1); });
  EXPECT_FALSE(outcome.last());
}

}  // namespace
}  // namespace database
