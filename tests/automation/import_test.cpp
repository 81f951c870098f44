#include <gmock/gmock.h>

#include <sstream>

#include "apps/patientdb/patientdb.h"
#include "database/creation/create_database.h"
#include "database/engine/choice/engine_choice.h"
#include "database/layout_json.h"
#include "tests/automation/registration.h"
#include "tests/automation/server_library.h"
#include "tests/engine/test_database.h"

namespace automation_test {
namespace {

using testing::HasSubstr;

class AutomationImport : public engine::test::EngineTest {
 protected:
  void make_patient(const char* name) {
    database::Environment environment;
    database::PatientRecord patient;
    patient.name = "Müller";
    ASSERT_EQ(database::CreatePatientDatabase(environment, path(name), patient, {}), 1);
  }
  std::string import(std::string source, std::string target) {
    std::ostringstream out, err;
    console::Console console{out, err, [](std::string_view) { return std::optional<std::string>(); }, ""};
    patientdb::run({"import", path(source), path(target)}, console);
    return err.str() + out.str();
  }
};

TEST_F(AutomationImport, BringsAWholePatientDatabaseIntoOneOfOurs) {
  const std::string connect = "MS Access;pwd=" + std::string(database::default_password);
  const Registration registration({newer_engine});
  make_patient("jet.das");
  const long before = living_objects();
  EXPECT_THAT(import("jet.das", "ours.das"), HasSubstr("ours.das created"));
  EXPECT_EQ(living_objects(), before);

  const auto automation = engine::open_automation_engine(newer_engine);
  const auto jet = automation->open_database(path("jet.das"), false, true, connect);
  const auto embedded = engine::open_embedded_engine(newer_engine);
  const auto ours = embedded->open_database(path("ours.das"), false, true, connect);
  EXPECT_EQ(database::layout_json(*ours), database::layout_json(*jet));
  int rows = 0;
  for (std::int32_t i = 0; i < jet->table_defs().count(); ++i) {
    const std::string table = jet->table_defs().item(i)->name();
    const auto expected = jet->open_recordset(table), copied = ours->open_recordset(table);
    for (; !expected->eof(); expected->move_next(), copied->move_next(), ++rows) {
      for (std::int32_t field = 0; field < expected->field_count(); ++field)
        EXPECT_EQ(copied->value(field), expected->value(field)) << table << "." << expected->field_name(field);
    }
    EXPECT_TRUE(copied->eof()) << table;
  }
  EXPECT_GT(rows, 15) << "the laboratory definitions alone are as many";
}

TEST_F(AutomationImport, NamesTheEngineThatIsMissing) {
  {
    const Registration registration({newer_engine});
    make_patient("jet.das");
  }
  EXPECT_THAT(import("jet.das", "ours.das"), testing::AllOf(HasSubstr("error 3343: "), HasSubstr(newer_engine)));
}

}  // namespace
}  // namespace automation_test
