// The patient record, the preferred insulins, and what is copied from the lookup database.
#include "database/patient.h"

#include "database/preferences.h"
#include "tests/database/database_test.h"
#include "tests/database/refusing_database.h"

namespace database::testing {
namespace {

using Patient = DatabaseTest;

std::string shown(const PatientRecord& patient) {
  std::string text;
  for (const auto* field : {&patient.firstname, &patient.name, &patient.street, &patient.zip, &patient.city,
                            &patient.phone, &patient.fax, &patient.email, &patient.a1, &patient.a2, &patient.a3,
                            &patient.number, &patient.insurance, &patient.insurancenumber}) {
    text += *field + "|";
  }
  for (const int number :
       {int{patient.therapy}, int{patient.gender}, int{patient.typ}, int{patient.height}, int{patient.DiabetesSince},
        int{patient.OADSince}, int{patient.InsulinSince}, int{patient.CPeptid}}) {
    text += std::to_string(number) + "|";
  }
  return text + (patient.birthday ? engine::iso_text(*patient.birthday) : "Null");
}
/// The columns that shown() shows.
constexpr std::string_view patient_columns =
    "SELECT firstname, name, street, zip, city, phone, fax, email, a1, a2, a3, number, insurance, insurancenumber, "
    "therapy, gender, typ, height, DiabetesSince, OADSince, InsulinSince, CPeptid, birthday FROM patdat";

TEST_F(Patient, StandsInItsColumnsAndIsReadBack) {
  const std::string file = patient_database();
  PatientRecord changed = sample_patient();
  changed.city = "Görlitz";
  changed.a3 = "dritte";
  changed.typ = 3;
  changed.OADSince = 2001;
  changed.CPeptid = 5;
  changed.birthday.reset();
  for (const PatientRecord& stored : {sample_patient(), changed}) {
    ASSERT_EQ(db_AddPatient(environment, file, stored), 1);
    EXPECT_EQ(rows(file, patient_columns), std::vector<std::string>{shown(stored)});
    PatientRecord read;
    ASSERT_TRUE(db_GetPatient(environment, file, 0, read));
    EXPECT_EQ(shown(read), shown(stored));
  }
}

TEST_F(Patient, OverwritesTheRowOfTheSameIdAndAddsOthers) {
  const std::string file = patient_database();
  const Opened opened = open(file);
  PatientRecord patient = sample_patient();
  for (const std::int16_t id : {std::int16_t{0}, std::int16_t{7}, std::int16_t{7}}) {
    patient.id = id;
    patient.city = "Stadt " + std::to_string(id);
    EXPECT_EQ(db_AddPatient(environment, *opened.database, patient), 1);
  }
  EXPECT_EQ(rows(file, "SELECT id, city FROM patdat ORDER BY id"),
            (std::vector<std::string>{"0|Stadt 0", "7|Stadt 7"}));
}

TEST_F(Patient, TellsThatARowWasRefused) {
  const std::string file = patient_database();
  execute(file, {"INSERT INTO patdat (id, city) VALUES (7, 'Leipziger')", "CREATE UNIQUE INDEX one ON patdat (city)"});
  PatientRecord patient = sample_patient();
  patient.city = "Leipziger";
  EXPECT_EQ(db_AddPatient(environment, file, patient), 0);
  EXPECT_EQ(rows(file, "SELECT city FROM patdat ORDER BY id"), (std::vector<std::string>{"Leipzig", "Leipziger"}));
}

TEST_F(Patient, PassesOverTheColumnsThatCannotBeStored) {
  const std::string file = patient_database();
  PatientRecord patient = sample_patient();
  patient.firstname = "";                          // its field allows no empty text
  patient.insurancenumber = std::string(21, '9');  // one character more than its field holds
  patient.city = "Zwickau";
  ASSERT_EQ(db_AddPatient(environment, file, patient), 1);
  EXPECT_EQ(rows(file, "SELECT firstname, insurancenumber, city FROM patdat"),
            std::vector<std::string>{"Käthe|X123|Zwickau"});
}

TEST_F(Patient, KeepsWhatCannotBeRead) {
  const std::string file = patient_database();
  execute(file, {"UPDATE patdat SET city = Null, height = Null"});
  PatientRecord read;
  read.city = "before";
  read.height = 5;
  ASSERT_TRUE(db_GetPatient(environment, file, 0, read));
  EXPECT_EQ(read.city, "before");
  EXPECT_EQ(read.height, 5);
  EXPECT_EQ(read.street, "Am Wall 3");

  for (const std::int32_t unknown_column_id : {1, 4711}) {
    EXPECT_FALSE(db_GetPatient(environment, file, unknown_column_id, read));
  }
  EXPECT_FALSE(db_GetPatient(environment, path("missing.das"), 0, read));
  EXPECT_EQ(db_AddPatient(environment, path("missing.das"), read), 0);
  EXPECT_EQ(read.street, "Am Wall 3");
}

TEST_F(Patient, ListsPreferredInsulinsByPositionAndManufacturer) {
  const std::string file = patient_database();
  std::vector<PreferredInsulin> insulins(3);
  EXPECT_EQ(db_GetPreferredInsulin(environment, file, insulins), 0);
  EXPECT_TRUE(insulins.empty());

  const std::string insert =
      "INSERT INTO PreferredInsulin ([desc], manufacturer, BolusIE, BasalIE, Rapid, iSortOrder) ";
  execute(file, {insert + "VALUES ('third', 'A', 0, 100, 0, 2)", insert + "VALUES ('second', 'b', 30, 70, 0, 1)",
                 insert + "VALUES ('first', 'A', 100, 0, -1, 1)"});
  ASSERT_EQ(db_GetPreferredInsulin(environment, file, insulins), 3);
  std::string shown_list;
  for (const auto& insulin : insulins) {
    shown_list += insulin.desc + " " + insulin.manufacturer + " " + std::to_string(int(insulin.bolusie)) + "/" +
                  std::to_string(int(insulin.basalie)) + (insulin.rapid ? " rapid; " : "; ");
  }
  EXPECT_EQ(shown_list, "first A 100/0 rapid; second b 30/70; third A 0/100; ");
  EXPECT_EQ(db_GetPreferredInsulin(environment, file, insulins, 1), 0);
}

TEST_F(Patient, TakesThePreferencesOfTheLookupDatabase) {
  struct Case {
    std::string_view name;
    std::vector<std::string_view> statements;
    bool complete;
    std::string_view insulins;
  };
  const Case cases[] = {
      {"defs.mdb",
       {"CREATE TABLE labdefs (type SHORT)", "CREATE TABLE preferredInsulin ([desc] TEXT(50))",
        "CREATE TABLE preferredMedicals ([desc] TEXT(50))", "INSERT INTO preferredInsulin VALUES ('Actrapid')"},
       true,
       "Actrapid"},
      {"O'Neil.mdb", {"CREATE TABLE labdefs (type SHORT)"}, false, "(no table)"},
  };
  for (const Case& row : cases) {
    const std::string file = patient_database();
    const std::string lookup = path(row.name);
    auto engine = engine::open_engine("DAO.DBEngine.36");
    auto database = engine->create_database(lookup, engine::locale_general, engine::version_30);
    for (const auto statement : row.statements) database->execute(statement);
    database->close();
    EXPECT_EQ(db_MergePreferences(environment, file, lookup), row.complete) << row.name;
    EXPECT_EQ(rows(file, "SELECT count(*) FROM labdefs"), std::vector<std::string>{"0"}) << row.name;
    std::string insulins = "(no table)";
    try {
      insulins = rows(file, "SELECT [desc] FROM preferredInsulin").at(0);
    } catch (const support::RuntimeError& error) {
      EXPECT_EQ(error.number(), 3078);
    }
    EXPECT_EQ(insulins, row.insulins) << row.name;
  }
}

TEST_F(Patient, NoFailureDuringTheExchangeCostsPreferences) {
  const std::string file = patient_database(), lookup = patient_database("defs.mdb");
  // A full disk, a table that somebody holds, a lookup database that is missing or damaged, and other failures.
  const int failures[] = {3043, 3218, 3024, 3049, 3031, 51};
  for (int failing = 1; failing <= 6; ++failing) {
    int statement = 0;
    const int failure = failures[failing - 1];
    RefusingDatabase database(std::move(open(file).database), [&](std::string_view) {
      if (++statement == failing) throw support::RuntimeError(failure, "failed");
    });
    EXPECT_FALSE(db_MergePreferences(environment, database, lookup)) << failing;
    EXPECT_EQ(statement, failing) << "nothing more is tried";
    database.close();
    EXPECT_EQ(rows(file, "SELECT COUNT(*) FROM labdefs"), std::vector<std::string>{"15"}) << failing;
    for (const std::string table : {"preferredInsulin", "preferredMedicals"})
      EXPECT_EQ(rows(file, "SELECT COUNT(*) FROM " + table), std::vector<std::string>{"0"}) << failing;
  }
}

TEST_F(Patient, PreferencesAreNotLostToALookupDatabaseThatCannotBeRead) {
  const std::string file = patient_database();
  write_file(path("torn.mdb"), "no database at all");
  for (const auto* name : {"missing.mdb", "torn.mdb"}) {
    EXPECT_FALSE(db_MergePreferences(environment, file, path(name))) << name;
    EXPECT_EQ(rows(file, "SELECT COUNT(*) FROM labdefs"), std::vector<std::string>{"15"}) << name;
  }
}

}  // namespace
}  // namespace database::testing
