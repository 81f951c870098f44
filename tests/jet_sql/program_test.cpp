// What compile() says about a statement, apart from the rows that it returns.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/jet_sql/sql_database.h"

namespace jet_sql_test {
namespace {

using engine::DataType;

class Programs : public testing::Test {
 protected:
  Programs() {
    database.run("CREATE TABLE t (id COUNTER, name TEXT(20), n LONG)");
    database.run("CREATE TABLE u (id LONG, rowid LONG)");
  }
  template <typename Program>
  Program compiled(std::string_view statement) {
    return std::get<Program>(jet_sql::compile(statement, database.catalogue()));
  }

  /// What a field with this default stores, as SQLite prints it, or "error N".
  std::string stored_default(DataType type, const char* expression);

  SqlDatabase database;
};

std::string Programs::stored_default(DataType type, const char* expression) {
  FieldDefinition field;
  field.type = type;
  field.size = type == DataType::Text ? 30 : 0;
  field.default_value = expression;
  sqlite3_stmt* prepared = nullptr;
  std::string stored;
  try {
    const std::string sql = "SELECT " + jet_sql::compile_default(field);
    EXPECT_EQ(SQLITE_OK, sqlite3_prepare_v2(database.connection(), sql.c_str(), -1, &prepared, nullptr)) << sql;
    const int result = sqlite3_step(prepared);
    if (result != SQLITE_ROW) throw jet_sql::error_of(database.connection(), result);
    const bool null = sqlite3_column_type(prepared, 0) == SQLITE_NULL;
    stored = null ? "NULL" : reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0));
  } catch (const support::RuntimeError& error) {
    stored = "error " + std::to_string(error.number());
  }
  sqlite3_finalize(prepared);
  return stored;
}

TEST_F(Programs, QueriesOverOneTableCanBeUpdatedRowByRow) {
  struct Row {
    const char* statement;
    const char* base_table;
    std::vector<std::string> base_fields;
  };
  const Row rows[] = {
      {"SELECT * FROM T WHERE n > 1 ORDER BY name", "t", {"id", "name", "n"}},
      {"SELECT n AS other, n + 1 AS more, x.name FROM t AS x", "t", {"n", "", "name"}},
      {"SELECT TOP 1 name FROM t ORDER BY n", "t", {"name"}},
      {"SELECT id FROM u", "u", {"id"}},
      {"SELECT id FROM t WHERE id IN (SELECT id FROM u)", "t", {"id"}},
      {"SELECT DISTINCT name FROM t", "", {""}},
      {"SELECT count(*) FROM t", "", {""}},
      {"SELECT n FROM t GROUP BY n", "", {""}},
      {"SELECT t.id FROM t, u", "", {""}},
      {"SELECT id FROM (SELECT id FROM t)", "", {""}},
      {"SELECT id FROM t UNION SELECT id FROM u", "", {""}},
      {"SELECT 1", "", {""}},
  };
  for (const Row& row : rows) {
    const auto query = compiled<jet_sql::Query>(row.statement);
    EXPECT_EQ(row.base_table, query.base_table) << row.statement;
    std::vector<std::string> fields;
    for (const jet_sql::ResultColumn& column : query.columns) fields.push_back(column.base_field);
    EXPECT_EQ(row.base_fields, fields) << row.statement;
  }
}

TEST_F(Programs, TheLastColumnOfAnUpdatableQueryIsTheRowNumber) {
  database.run("INSERT INTO u VALUES (5, 700)");
  database.run("INSERT INTO u VALUES (6, 800)");
  for (const char* statement : {"SELECT * FROM u WHERE id = 6", "SELECT TOP 1 rowid, id FROM u ORDER BY id DESC"}) {
    sqlite3_stmt* prepared = nullptr;
    const std::string sql = compiled<jet_sql::Query>(statement).sqlite_sql;
    ASSERT_EQ(SQLITE_OK, sqlite3_prepare_v2(database.connection(), sql.c_str(), -1, &prepared, nullptr));
    ASSERT_EQ(SQLITE_ROW, sqlite3_step(prepared));
    EXPECT_EQ(3, sqlite3_column_count(prepared));
    EXPECT_EQ(2, sqlite3_column_int(prepared, 2)) << statement;
    sqlite3_finalize(prepared);
  }
}

TEST_F(Programs, ColumnsHaveTypesAndSizes) {
  struct Row {
    const char* expression;
    DataType type;
    std::int32_t size;
  };
  constexpr Row rows[] = {
      {"name", DataType::Text, 20},
      {"name & 'xyz'", DataType::Text, 23},
      {"name & n", DataType::Text, 255},
      {"n", DataType::Long, 4},
      {"n = 1", DataType::Boolean, 1},
      {"n / 2", DataType::Double, 8},
      {"NULL", DataType::Text, 255},
      {"now()", DataType::Date, 8},
      {"ucase(name)", DataType::Text, 20},
      {"ucase(name & n & name)", DataType::Text, 255},

      {"5 * 5", DataType::Integer, 2},
      {"iif(n = 1, 1, 'a')", DataType::Text, 255},
      {"iif(n = 1, #1/1/2024#, 0)", DataType::Date, 8},
      {"iif(n = 1, 'ab', name)", DataType::Text, 20},
  };
  for (const Row& row : rows) {
    const auto query = compiled<jet_sql::Query>(std::string("SELECT ") + row.expression + " AS x FROM t");
    EXPECT_EQ(row.type, query.columns.front().type) << row.expression;
    EXPECT_EQ(row.size, query.columns.front().size) << row.expression;
  }
}

TEST_F(Programs, SelectIntoLeavesTheSelectAndNamesTheFile) {
  struct Row {
    const char* statement;
    const char* target;
    const char* select;
    const char* file;
  };
  constexpr Row rows[] = {
      {"SELECT * INTO [labdefs] FROM [labdefs] IN 'C:\\x y\\it''s.mdb'", "labdefs", "SELECT * FROM [labdefs] ",
       "C:\\x y\\it's.mdb"},
      {"SELECT a, b INTO x FROM y IN \"z\" WHERE a > 1;", "x", "SELECT a, b FROM y WHERE a > 1;", "z"},
      {"SELECT name INTO copy FROM t WHERE n = 1", "copy", "SELECT name FROM t WHERE n = 1", ""},
  };
  for (const Row& row : rows) {
    const auto into = compiled<jet_sql::SelectInto>(row.statement);
    EXPECT_EQ(row.target, into.target);
    EXPECT_EQ(row.select, into.select_text);
    EXPECT_EQ(row.file, into.external_file);
  }
}

TEST_F(Programs, CreateTableTellsEveryProperty) {
  const TableDefinition table =
      compiled<jet_sql::CreateTable>(
          "CREATE TABLE x (id COUNTER CONSTRAINT pk PRIMARY KEY, [a b] TEXT(7) NOT NULL UNIQUE, m MEMO "
          "DEFAULT 'none', b YESNO DEFAULT TRUE, s SINGLE DEFAULT -1.5, t CHAR, UNIQUE (b, s), "
          "CONSTRAINT both UNIQUE (m, t))")
          .table;
  struct Row {
    const char* name;
    DataType type;
    std::int32_t size;
    std::int32_t attributes;
    const char* default_value;
    bool required;
  };
  constexpr Row rows[] = {
      {"id", DataType::Long, 4, 17, "", false},     {"a b", DataType::Text, 7, 2, "", true},
      {"m", DataType::Memo, 0, 2, "'none'", false}, {"b", DataType::Boolean, 1, 1, "TRUE", false},
      {"s", DataType::Single, 4, 1, "-1.5", false}, {"t", DataType::Text, 255, 2, "", false},
  };
  ASSERT_EQ(std::size(rows), table.fields.size());
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const FieldDefinition& field = table.fields[i];
    EXPECT_EQ(rows[i].name, field.name);
    EXPECT_EQ(rows[i].type, field.type) << field.name;
    EXPECT_EQ(rows[i].size, field.size) << field.name;
    EXPECT_EQ(rows[i].attributes, field.attributes) << field.name;
    EXPECT_EQ(rows[i].default_value, field.default_value) << field.name;
    EXPECT_EQ(rows[i].required, field.required) << field.name;
    EXPECT_EQ(static_cast<std::int16_t>(i), field.ordinal_position) << field.name;
  }
  std::string indexes;
  for (const IndexDefinition& index : table.indexes) {
    indexes += index.name + (index.primary ? " primary" : "") + (index.unique ? " unique" : "") + ":";
    for (const std::string& field : index.fields) indexes += " " + field;
    indexes += "; ";
  }
  EXPECT_EQ("pk primary unique: id; a b unique: a b; b unique: b s; both unique: m t; ", indexes);
}

TEST_F(Programs, ChangesOfTheLayoutNameTableAndPart) {
  const auto index =
      compiled<jet_sql::CreateIndex>("CREATE UNIQUE INDEX [my index] ON t (name DESC, n ASC) WITH IGNORE NULL");
  EXPECT_EQ("my index", index.index.name);
  EXPECT_EQ((std::vector<std::string>{"name", "n"}), index.index.fields);
  EXPECT_TRUE(index.index.unique && index.index.ignore_nulls && !index.index.primary && !index.index.required);
  const auto primary = compiled<jet_sql::CreateIndex>("CREATE INDEX p ON t (id) WITH PRIMARY");
  EXPECT_TRUE(primary.index.primary && primary.index.unique && primary.index.required);
  EXPECT_TRUE(compiled<jet_sql::CreateIndex>("CREATE INDEX p ON t (id) WITH DISALLOW NULL").index.required);
  EXPECT_EQ("pk", compiled<jet_sql::CreateIndex>("ALTER TABLE t ADD CONSTRAINT pk PRIMARY KEY (id)").index.name);
  const auto added = compiled<jet_sql::AddField>("ALTER TABLE t ADD COLUMN extra TEXT(30) NOT NULL");
  EXPECT_EQ("extra", added.field.name);
  EXPECT_TRUE(added.field.required && added.field.size == 30);
  EXPECT_EQ(DataType::Date, compiled<jet_sql::AddField>("ALTER TABLE t ADD day DATE").field.type);
  EXPECT_EQ(DataType::Double, compiled<jet_sql::AlterField>("ALTER TABLE t ALTER COLUMN n DOUBLE").field.type);
  EXPECT_EQ("n", compiled<jet_sql::DropField>("ALTER TABLE t DROP COLUMN n").field);
  EXPECT_EQ("n", compiled<jet_sql::DropField>("ALTER TABLE t DROP n;").field);
  EXPECT_EQ("t", compiled<jet_sql::DropTable>("DROP TABLE [t]").table);
  database.run("CREATE INDEX i ON t (n)");
  EXPECT_EQ("i", compiled<jet_sql::DropIndex>("DROP INDEX i ON t").index);
  EXPECT_EQ("i", compiled<jet_sql::DropIndex>("ALTER TABLE t DROP CONSTRAINT i").index);
}

TEST_F(Programs, DefaultsAreExpressionsOfTheFieldsType) {
  struct Row {
    DataType type;
    const char* expression;
    const char* stored;
  };
  constexpr Row rows[] = {
      {DataType::Integer, "", "NULL"},
      {DataType::Integer, "0", "0"},
      {DataType::Integer, "-1", "-1"},
      {DataType::Integer, "\"0\"", "0"},
      {DataType::Integer, "=2+3", "5"},
      {DataType::Integer, "2.5", "2"},
      {DataType::Long, "\"\"", "NULL"},
      {DataType::Integer, "70000", "error 3421"},
      {DataType::Integer, "abc", "error 3061"},
      {DataType::Boolean, "True", "-1"},
      {DataType::Boolean, "Yes", "-1"},
      {DataType::Boolean, "No", "0"},
      {DataType::Boolean, "1", "-1"},
      {DataType::Date, "0", "0.0"},
      {DataType::Date, "#3/7/2024#", "45358.0"},
      {DataType::Text, "X", "X"},
      {DataType::Text, "\" \"", " "},
      {DataType::Text, " ", "NULL"},
      {DataType::Text, "\"\"", ""},
      {DataType::Text, "-1", "-1"},
      {DataType::Text, "two words", "two words"},
      {DataType::Text, "it's", "it's"},
      {DataType::Memo, "ucase(\"a\")", "A"},
      {DataType::Single, "0.1", "0.10000000149011612"},
      {DataType::Double, "1,5", "error 3075"},
  };
  for (const Row& row : rows) EXPECT_EQ(row.stored, stored_default(row.type, row.expression)) << row.expression;
  FieldDefinition now;
  now.type = DataType::Date;
  now.default_value = "Now";
  EXPECT_NE("NULL", jet_sql::compile_default(now));
}

TEST_F(Programs, ErrorsNeverShowAValue) {
  constexpr const char* secret_text = "Geheim";
  for (const std::string statement :
       {"INSERT INTO t (n) VALUES ('Geheim')", "SELECT 'Geheim' + 1", "SELECT 'Geheim' 'Geheim'",
        "UPDATE t SET name='O'Geheim'", "INSERT INTO t (name) VALUES ('Geheim Geheim Geheim Geheim')",
        "SELECT 'Geheim' LIKE '[Geheim'", "SELECT cdate('Geheim')", "SELECT id FROM t WHERE Geheim = 1",
        "UPDATE t SET name='O'Geheim's'", "SELECT id FROM t WHERE name IN ('O'Geheim's', 'x')"}) {
    try {
      database.run(statement);
      ADD_FAILURE() << statement << " succeeded";
    } catch (const support::RuntimeError& error) {
      EXPECT_EQ(std::string::npos, std::string_view(error.what()).find(secret_text)) << error.what();
      EXPECT_NE("", std::string_view(error.what()));
    }
  }
}

TEST_F(Programs, AnErrorOfSyntaxCountsLinesAndCharacters) {
  constexpr std::pair<const char*, const char*> rows[] = {
      {"SELECT id,\r\n  name\n FROM WHERE id = 1", "(line 3, column 7: 'WHERE')"},
      {"SELECT 'Ä\nÖ' 'b'", "(line 2, column 4: a text)"},
      {"\n\n", "(line 3, column 1: the end)"},
      {"SELECT n FROM t WHERE\tn = ~1", "(line 1, column 27: '~')"},
  };
  for (const auto& [statement, place] : rows) {
    try {
      database.run(statement);
      ADD_FAILURE() << statement << " succeeded";
    } catch (const support::RuntimeError& error) {
      EXPECT_NE(std::string::npos, std::string_view(error.what()).find(place)) << error.what();
    }
  }
}

TEST_F(Programs, ResultsOfSqliteMapToTheEnginesNumbers) {
  constexpr std::pair<int, int> rows[] = {
      {SQLITE_BUSY, 3045},     {SQLITE_LOCKED, 3211},     {SQLITE_READONLY, 3027}, {SQLITE_FULL, 3043},
      {SQLITE_IOERR, 3043},    {SQLITE_IOERR_READ, 3043}, {SQLITE_CORRUPT, 3343},  {SQLITE_NOTADB, 3343},
      {SQLITE_CANTOPEN, 3051}, {SQLITE_NOMEM, 7},         {SQLITE_TOOBIG, 14},     {SQLITE_CONSTRAINT, 3022},
      {SQLITE_INTERNAL, 51},
  };
  for (const auto& [result, number] : rows) {
    EXPECT_EQ(number, jet_sql::error_of(database.connection(), result).number()) << result;
  }
}

/// What SQLite reports of its plan.
std::string plan_of(const SqlDatabase& database, std::string_view statement) {
  const auto query = std::get<jet_sql::Query>(jet_sql::compile(statement, database.catalogue()));
  sqlite3_stmt* prepared = nullptr;
  sqlite3_prepare_v2(database.connection(), ("EXPLAIN QUERY PLAN " + query.sqlite_sql).c_str(), -1, &prepared, nullptr);
  std::string plan;
  while (sqlite3_step(prepared) == SQLITE_ROW) {
    plan += reinterpret_cast<const char*>(sqlite3_column_text(prepared, 3));
    plan += "; ";
  }
  sqlite3_finalize(prepared);
  return plan;
}

TEST_F(Programs, IndexesAreUsed) {
  database.run("CREATE TABLE g (id COUNTER, vdate DATETIME, type LONG, name TEXT(20), flag YESNO)");
  for (const char* field : {"vdate", "type", "name", "flag"}) {
    database.run(std::string("CREATE INDEX ") + field + " ON g (" + field + ")");
  }
  for (const char* statement :
       {"SELECT * FROM g WHERE vdate BETWEEN #3/7/2024# AND #3/1/2024#", "SELECT * FROM g WHERE type = 11",
        "SELECT * FROM g WHERE name = 'x'", "SELECT * FROM g WHERE flag = TRUE", "SELECT max(vdate) FROM g",
        "SELECT * FROM g WHERE type IN (1, 2)", "SELECT * FROM g WHERE vdate BETWEEN date() AND date() - 7",
        "SELECT * FROM g WHERE isnull(vdate) = 0 AND vdate > #1/1/2024#"}) {
    EXPECT_NE(std::string::npos, plan_of(database, statement).find("SEARCH")) << plan_of(database, statement);
  }
  EXPECT_EQ(std::string::npos, plan_of(database, "SELECT * FROM g ORDER BY name").find("TEMP B-TREE"));
}

}  // namespace
}  // namespace jet_sql_test
