// Field_Create and Index_Create, which end at their first error, and the tables that they build.
#include "database/table_procedures.h"
#include "tests/database/database_test.h"

namespace database::testing {
namespace {

using Documentation = DatabaseTest;

TEST_F(Documentation, CreatesFieldsWithTheirProperties) {
  struct Case {
    std::string_view name;
    engine::DataType type;
    std::string_view given_default, stored_default;
    bool allows_empty;
  };
  const Case cases[] = {
      {"text", engine::DataType::Text, "x", "x", true},
      {"number", engine::DataType::Long, "-1", "-1", false},
      {"yes", engine::DataType::Boolean, "true", "True", false},
      {"no", engine::DataType::Boolean, "0", "False", false},
  };
  const Opened opened = open(patient_database());
  const auto table = opened.database->create_table_def("fields");
  for (const Case& row : cases) {
    ASSERT_TRUE(Field_Create(*table, row.name, row.type, 7, engine::attribute_fixed, true, true, row.given_default));
    const auto field = table->fields().item(row.name);
    EXPECT_EQ(field->default_value(), row.stored_default) << row.name;
    EXPECT_EQ(field->allow_zero_length(), row.allows_empty) << row.name;
    EXPECT_EQ(field->size() == 7, row.type == engine::DataType::Text) << row.name;
    EXPECT_TRUE(field->required()) << row.name;
  }
}

TEST_F(Documentation, EndsAtTheFirstErrorAndRecordsTheLabel) {
  const Opened opened = open(patient_database());
  const auto table = opened.database->create_table_def("fields");
  ASSERT_TRUE(Field_Create(*table, "once", engine::DataType::Long, 0, 1, false, false, ""));
  EXPECT_FALSE(Field_Create(*table, "ONCE", engine::DataType::Long, 0, 1, false, false, ""));
  EXPECT_FALSE(Field_Create(*table, "flag", engine::DataType::Boolean, 0, 1, false, false, "maybe"));
  EXPECT_EQ(support::current_procedure_label(), "ddg!Field_Create");
  EXPECT_EQ(table->fields().count(), 1);

  ASSERT_TRUE(Index_Create(*table, "key", "once", engine::DataType::Long, 0, 0, true, true));
  EXPECT_FALSE(Index_Create(*table, "Key", "once", engine::DataType::Long, 0, 0, false, false));
  EXPECT_EQ(support::current_procedure_label(), "ddg!Index_Create");
  EXPECT_EQ(table->indexes().count(), 1);
  EXPECT_TRUE(table->indexes().item("key")->primary());
}

TEST_F(Documentation, NeverReplacesATable) {
  const std::string file = patient_database();
  execute(file, {"INSERT INTO Labordefinitionen (LaborID) VALUES (5)"});
  {
    const Opened opened = open(file);
    CreateTD_Normwerte(*opened.database);
    create_table(environment, *opened.database, "PATDAT");
    create_table(environment, *opened.database, "no such table");
  }
  EXPECT_EQ(rows(file, "SELECT LaborID FROM Labordefinitionen"), std::vector<std::string>{"5"});
  EXPECT_EQ(rows(file, "SELECT city FROM patdat"), std::vector<std::string>{"Leipzig"});
}

}  // namespace
}  // namespace database::testing
