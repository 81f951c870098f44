#include <gtest/gtest.h>

#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/embedded/jet_sql/validation_rule.h"
#include "support/user_locale.h"
#include "tests/jet_sql/sql_database.h"

namespace jet_sql_test {
namespace {

using engine::DataType;

FieldDefinition field_with_rule(const std::string& name, DataType type, const std::string& rule) {
  FieldDefinition field = engine::embedded::new_field(name, type, 20);
  field.validation_rule = rule;
  return field;
}

/// The number of the error that storing the value in a field with the rule raises; -1 if the rule is not understood.
int stored(const std::string& rule, DataType type, const std::string& value) {
  support::set_user_locale(*support::user_locale_by_name("de"));
  TableDefinition table;
  table.name = "t";
  table.fields.push_back(field_with_rule("wert", type, rule));
  table.fields.push_back(engine::embedded::new_field("other", DataType::Long));
  if (!jet_sql::compile_rule(table.fields.front(), table)) return -1;
  SqlDatabase database;
  database.create(table);
  const int inserted = database.error("INSERT INTO t (wert) VALUES (" + value + ")");
  database.sqlite("INSERT INTO t (other) VALUES (1)");
  const int updated = database.error("UPDATE t SET wert = " + value + " WHERE other = 1");
  const std::string appended = database.run("INSERT INTO t (wert) SELECT " + value).rows.front();
  EXPECT_EQ(inserted, updated) << rule << " " << value;
  EXPECT_EQ(inserted == 0 ? "1" : "0", appended) << "an append leaves the row out: " << rule << " " << value;
  return inserted;
}

TEST(Rule, IsReadAsPeopleWriteIt) {
  struct Row {
    const char* rule;
    DataType type;
    const char* allowed;
    const char* refused;
  };
  for (const Row& row : {
           Row{">0", DataType::Long, "1", "0"},
           Row{"> 0 And < 100", DataType::Integer, "99", "100"},
           Row{">=1 And <=5 Or 9", DataType::Byte, "9", "6"},
           Row{"<>0", DataType::Long, "-1", "0"},
           Row{"Between 1 And 5", DataType::Double, "4.5", "5.5"},
           Row{"Not Between 1 And 5", DataType::Double, "5.5", "4.5"},
           Row{"Is Not Null", DataType::Long, "0", "NULL"},
           Row{"Is Null Or > 10", DataType::Long, "NULL", "10"},
           Row{"In (1, 2, 3)", DataType::Long, "2", "4"},
           Row{"Not In (1, 2)", DataType::Long, "3", "1"},
           Row{"5.6", DataType::Single, "5.6", "5.7"},
           Row{"\"M\" Or \"W\"", DataType::Text, "'w'", "'x'"},
           Row{"Not \"x\"", DataType::Text, "'m'", "'X'"},
           Row{"Like \"[A-Z]#*\"", DataType::Text, "'b7c'", "'7b'"},
           Row{"Len([wert]) > 2", DataType::Text, "'abc'", "'ab'"},
           Row{"StrComp(t.wert, UCase(wert), 0) = 0", DataType::Text, "'AB'", "'Ab'"},
           Row{"<=Date()", DataType::Date, "#1/1/2000#", "#1/1/9000#"},
           Row{"< Now", DataType::Date, "#1/1/2000#", "#1/1/9000#"},
           Row{">= #1/1/1900# And < #1/1/2100#", DataType::Date, "#3/7/2024#", "#1/1/1899#"},
           Row{"Yes", DataType::Boolean, "TRUE", "FALSE"},
           Row{"(> 1 And < 4) Or (> 10)", DataType::Long, "11", "5"},
           Row{"[wert] Mod 2 = 0", DataType::Long, "4", "3"},
       }) {
    EXPECT_EQ(stored(row.rule, row.type, row.allowed), 0) << row.rule;
    EXPECT_EQ(stored(row.rule, row.type, row.refused), 3317) << row.rule;
  }
}

TEST(Rule, ThatTheDialectDoesNotKnowIsNone) {
  for (const char* const rule : {"> other", "H Or M", "> 0 And", "something(wert)", "> 'a'", "Count(wert) > 1",
                                 "In (SELECT other FROM t)", ")"}) {
    EXPECT_EQ(stored(rule, DataType::Long, "1"), -1) << rule;
  }
}

TEST(Rule, WorksOutEachValueOnce) {
  TableDefinition table;
  table.name = "t";
  table.fields.push_back(engine::embedded::new_field("id", DataType::Long));
  table.fields.front().attributes |= engine::attribute_auto_increment;
  table.fields.push_back(field_with_rule("n", DataType::Long, "> 1 And < 9 And <> 5"));
  SqlDatabase database;
  database.create(table);
  database.create({.name = "source", .fields = {engine::embedded::new_field("n", DataType::Long)}});
  for (const char* const number : {"5", "2", "3", "10", "4"})
    database.run("INSERT INTO source VALUES (" + std::string(number) + ")");
  EXPECT_EQ(database.run("INSERT INTO t (n) SELECT n FROM source ORDER BY n").rows.front(), "3");
  EXPECT_EQ(database.run("SELECT n FROM t ORDER BY id").rows, (std::vector<std::string>{"2", "3", "4"}));
  EXPECT_EQ(database.run("INSERT INTO t (n) SELECT DISTINCT TOP 2 n FROM source ORDER BY n DESC").rows.front(), "0");
  EXPECT_EQ(database.run("UPDATE t, source SET t.n = source.n + 4 WHERE t.n = source.n AND source.n > 3").rows.front(),
            "1");
  EXPECT_EQ(database.error("UPDATE t SET n = n + 2 WHERE n = 3"), 3317);
}

}  // namespace
}  // namespace jet_sql_test
