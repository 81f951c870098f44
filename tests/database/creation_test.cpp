// Creation and opening of whole databases.
#include <algorithm>
#include <ctime>

#include "database/layout_json.h"
#include "database/schema/schema.h"
#include "database/version_record.h"
#include "tests/database/database_test.h"
#include "tests/database/refusing_database.h"

namespace database::testing {
namespace {

using Creation = DatabaseTest;

/// An engine whose new databases refuse one table.
class RefusingEngine : public engine::Engine {
 public:
  std::unique_ptr<engine::Database> create_database(std::string_view path, std::string_view locale,
                                                    std::int32_t version) override {
    return std::make_unique<RefusingDatabase>(real_->create_database(path, locale, version), [](std::string_view name) {
      if (name == "steps") throw support::RuntimeError(3010, "refused");
    });
  }
  std::unique_ptr<engine::Database> open_database(std::string_view path, bool exclusive, bool read_only,
                                                  std::string_view connect) override {
    return real_->open_database(path, exclusive, read_only, connect);
  }

 private:
  std::unique_ptr<engine::Engine> real_ = engine::open_engine("DAO.DBEngine.36");
};

std::unique_ptr<engine::Engine> no_engine(std::string_view) { throw support::RuntimeError(429, "no such class"); }

std::unique_ptr<engine::Engine> older_engine(std::string_view identifier) {
  return identifier == "DAO.DBEngine.35" ? engine::open_engine(identifier) : no_engine(identifier);
}

TEST_F(Creation, LaysOutTheTablesAsReviewed) {
  const Opened opened = open(patient_database());
  EXPECT_EQ(layout_json(*opened.database) + "\n", read_file(TEST_DATA_DIR "/schema/new_database.json"));
}

TEST_F(Creation, LeavesOutNoTableOfASubject) {
  for (const auto subject :
       {schema::measurement_tables, schema::patient_tables, schema::reference_tables, schema::plan_tables}) {
    for (const schema::TableRow& row : subject) {
      EXPECT_NE(schema::find_table(row.name), nullptr) << row.name << " has no place in the order of creation";
    }
  }
}

TEST_F(Creation, ShowsTheLayoutOfOneTable) {
  const Opened opened = open(patient_database());
  EXPECT_EQ(layout_json(*opened.database, "comments"),
            "{\"tables\":[\n{\"name\":\"Comments\",\"fields\":[\n"
            "{\"name\":\"desc\",\"type\":\"Text\",\"size\":50,\"attributes\":2,\"default\":\"\",\"required\":false,"
            "\"allow_zero_length\":true,\"ordinal\":0}\n],\"indexes\":[]}\n]}");
  EXPECT_THROW(layout_json(*opened.database, "nowhere"), support::RuntimeError);
}

TEST_F(Creation, DefinesFifteenLaboratoryValues) {
  texts.given[4960] = "&Gewi&cht";
  const std::string file = path("labs.das");
  ASSERT_EQ(CreatePatientDatabase(environment, file, sample_patient(), {}), 1);
  const std::vector<std::string> expected = {
      "1|iWeight|Text 5007|Gewicht|4|0|4|-1|-1|-1",
      "2|dBodyFat|Text 5006|BODYFAT|2|0|2|-1|-1|-1",
      "10|dHbA|HBA|HBA|2|0|2|5,1|7,3|-1",
      "11|dHbAc|HBA1c|HBA1C|2|0|2|4,1|6,2|-1",
      "12|iChol|Text 3516|CHOL|0|0|0|-1|200|180",
      "13|iAlbu|Text 3515|ALBU|3|0|3|-1|20|15",
      "14|iHDL|Text 3518|HDL|0|0|0|35|50|-1",
      "15|iLDL|Text 3517|LDL|0|0|0|-1|115|100",
      "16|iTri|Text 3519|TRIG|0|0|0|-1|200|170",
      "17|iCreatinin|Text 3520|KREA|0|0|0|0,6|1,3|-1",
      "18|dKetones|Text 3521|KETONE|1|0|0|-1|1,5|0,6",
      "19|GLUC_PP|Text 3526|GLUC_PP|0|0|0|120|180|170",
      "20|GLUC_NUE|Text 3525|GLUC_NUE|0|0|0|90|120|-1",
      "21|Quick|Text 3527|QUICK|2|0|2|11|28|-1",
      "22|INR|Text 3528|INR|2|0|2|2,5|4,5|-1",
  };
  EXPECT_EQ(rows(file,
                 "SELECT type, field, LongDesc, BDTKey, unit, units_allowed, displayunit, rangefrom, rangeuntil, "
                 "criticalThreshold FROM labdefs"),
            expected);
}

TEST_F(Creation, FillsFourTablesAndNoOther) {
  const std::map<std::string_view, std::string_view> filled = {
      {"labdefs", "15"}, {"patdat", "1"}, {"patdat_setup", "1"}, {"db_info", "1"}};
  const std::string file = patient_database();
  for (const schema::TableRow& table : schema::tables()) {
    const auto found = filled.find(table.name);
    EXPECT_EQ(rows(file, "SELECT count(*) FROM [" + std::string(table.name) + "]"),
              std::vector<std::string>{found == filled.end() ? "0" : std::string(found->second)})
        << table.name;
  }
  EXPECT_EQ(rows(file, "SELECT name, birthday, InsulinSince, OADSince FROM patdat"),
            std::vector<std::string>{"Müller-Lüdenscheidt|1951-02-28 00:00:00|2004|-1"});
  EXPECT_EQ(rows(file, "SELECT BB_From, UTZ4_Until FROM patdat_setup"),
            std::vector<std::string>{"1899-12-30 06:00:00|1899-12-30 05:59:00"});
}

TEST_F(Creation, LeavesEmptyNamesNull) {
  const std::string file = path("nameless.das");
  ASSERT_EQ(CreatePatientDatabase(environment, file, {}, {}), 1);
  EXPECT_EQ(rows(file, "SELECT id, name, street FROM patdat"), std::vector<std::string>{"0|Null|"});
}

TEST_F(Creation, StoresNothingOfADatabaseThatCannotBeCompleted) {
  struct Case {
    std::string_view what, file;
    int error;
    std::string patient_name = "Muster";
  };
  const Case cases[] = {
      {"a file of this name", "there.das", 3204},
      {"a folder of this name", "folder", 3204},
      {"no folder to put it in", "missing\\new.das", 3044},
      {"a name that its field cannot hold", "long.das", 3163, std::string(51, 'x')},
  };
  write_file(path("there.das"), "somebody's data");
  support::host_file_system().create_folder(path("folder"));
  const auto before = files();
  for (const Case& row : cases) {
    PatientRecord patient = sample_patient();
    patient.name = row.patient_name;
    EXPECT_EQ(creation_error(path(row.file), patient), row.error) << row.what;
    EXPECT_EQ(files(), before) << row.what;
  }
  EXPECT_EQ(read_file(path("there.das")), "somebody's data");
}

TEST_F(Creation, StoresNothingWhereOneTableIsMissing) {
  environment.open_engine = [](std::string_view) { return std::make_unique<RefusingEngine>(); };
  EXPECT_EQ(creation_error(path("new.das"), sample_patient()), 3010);
  EXPECT_TRUE(files().empty());
}

TEST_F(Creation, GivesWayToAFileThatComesUpMeanwhile) {
  environment.now = [this] {
    write_file(path("new.das"), "somebody's data");
    return engine::Date{};
  };
  EXPECT_EQ(creation_error(path("new.das"), sample_patient()), 3204);
  EXPECT_EQ(files(), std::vector<std::string>{"new.das"});
  EXPECT_EQ(read_file(path("new.das")), "somebody's data");
}

TEST_F(Creation, TakesTheMachinesClockWhereNoneIsGiven) {
  environment.now = {};
  const auto clock = [] {
    const std::time_t now = std::time(nullptr);
    char text[20] = "";
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", std::localtime(&now));
    return std::string(text);
  };
  const std::string before = clock(), present = engine::iso_text(environment.present()), after = clock();
  EXPECT_TRUE(before <= present && present <= after) << present;
}

TEST_F(Creation, ReducesDoubledBackslashesInThePath) {
  const std::string doubled = path("").substr(0, path("").size() - 1) + "\\\\twice.das";
  ASSERT_EQ(CreateIndexDatabase(environment, doubled), 1);
  EXPECT_EQ(files(), std::vector<std::string>{"twice.das"});
}

TEST_F(Creation, LaysOutTheIndexDatabaseWithoutPassword) {
  const std::string file = path("index.mdb");
  ASSERT_EQ(CreateIndexDatabase(environment, file), 1);
  const auto database = engine::open_engine("DAO.DBEngine.36")->open_database(file, false, true, "");
  std::string fields;
  const auto table = database->table_defs().item("index");
  for (std::int32_t i = 0; i < table->fields().count(); ++i) {
    const auto field = table->fields().item(i);
    fields += field->name() + " " + std::string(type_word(field->type())) + " " + std::to_string(field->size()) + " " +
              std::to_string(field->attributes()) + " '" + field->default_value() + "'\n";
  }
  EXPECT_EQ(fields,
            "ID Long 4 16 ''\nName Text 100 2 ''\nFirstName Text 100 2 ''\nDiabetesTyp Integer 2 2 '0'\n"
            "Therapy Integer 2 2 '0'\nDateOfBirth Date 8 1 '0'\nExternalID Text 100 2 ''\nHarbinoxID Long 4 2 ''\n");
  EXPECT_EQ(database->table_defs().count(), 1);

  const std::string before = read_file(file);
  EXPECT_EQ(CreateIndexDatabase(environment, file), 0);
  EXPECT_EQ(read_file(file), before);
}

TEST_F(Creation, TakesTheOlderEngineWhereTheNewerOneIsMissing) {
  struct Case {
    std::string_view what;
    decltype(Environment::open_engine) open_engine;
    bool creates, opens, opens_with_newest_only;
  };
  const Case cases[] = {
      {"both engines", engine::open_engine, true, true, true},
      {"the older engine alone", older_engine, true, true, false},
      {"no engine", no_engine, false, false, false},
      {"an engine that is null", [](std::string_view) { return std::unique_ptr<engine::Engine>(); }, false, false,
       false},
  };
  const std::string existing = patient_database();
  for (const Case& row : cases) {
    environment.open_engine = row.open_engine;
    EXPECT_EQ(CreateIndexDatabase(environment, path(row.what)), row.creates ? 1 : 0) << row.what;
    Opened opened;
    OpenPatientDatabase(environment, existing, false, false, opened.engine, opened.database);
    EXPECT_EQ(opened.database != nullptr, row.opens) << row.what;
    EXPECT_EQ(opened.engine != nullptr, row.opens) << row.what;
    OpenPatientDatabase(environment, existing, false, true, opened.engine, opened.database);
    EXPECT_EQ(opened.database != nullptr, row.opens_with_newest_only) << row.what;
  }
}

TEST_F(Creation, ReplacesPasswordsOfFewerThanThreeCharacters) {
  struct Case {
    std::string_view setting, effective;
  };
  const Case cases[] = {{"", "brimol"}, {"a", "brimol"}, {"äö", "brimol"}, {"äöü", "äöü"}, {"Brimol2", "Brimol2"}};
  for (const Case& row : cases) {
    environment.password = row.setting;
    const std::string file = path(row.setting);
    ASSERT_EQ(creation_error(file + ".das", {}), 0);
    const auto engine = engine::open_engine("DAO.DBEngine.36");
    const auto connect = "MS Access;pwd=" + std::string(row.effective);
    EXPECT_NO_THROW(engine->open_database(file + ".das", false, true, connect)) << row.setting;
    EXPECT_THROW(engine->open_database(file + ".das", false, true, connect + "x"), support::RuntimeError);
    EXPECT_EQ(rows(file + ".das", "SELECT Password FROM db_info"),
              std::vector<std::string>{std::string(row.effective) + " "});
  }
}

TEST_F(Creation, OpensNothingForAnEmptyPathOrAFileThatIsNone) {
  struct Case {
    std::string file;
    int error;
  };
  write_file(path("text.das"), std::string(5000, 'x'));
  const Case cases[] = {{"", 0}, {path("missing.das"), 3024}, {path("text.das"), 3343}};
  const auto before = files();
  for (const Case& row : cases) {
    Opened opened;
    const support::Outcome outcome = support::outcome_of(
        [&] { OpenPatientDatabase(environment, row.file, false, false, opened.engine, opened.database); });
    EXPECT_EQ(opened.database, nullptr) << row.file;
    EXPECT_EQ(opened.engine, nullptr) << row.file;
    EXPECT_EQ(outcome.last() ? outcome.last()->number() : 0, row.error) << row.file;
  }
  EXPECT_EQ(files(), before);
}

}  // namespace
}  // namespace database::testing
