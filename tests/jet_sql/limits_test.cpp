// Every text gives a program or an error, with little time and stack.
#include <gtest/gtest.h>

#include <chrono>

#include "tests/jet_sql/sql_database.h"

namespace jet_sql_test {
namespace {

std::string repeated(std::string_view text, int count) {
  std::string whole;
  for (int i = 0; i < count; ++i) whole += text;
  return whole;
}

/// first, first + separator + first …
std::string chained(std::string_view item, std::string_view separator, int count) {
  return std::string(item) + repeated(std::string(separator) + std::string(item), count - 1);
}

std::string nested_selects(int depth) {
  return repeated("SELECT * FROM (", depth - 1) + "SELECT 1 AS x" + repeated(")", depth - 1);
}

/// Every alias is the sum of the one before with itself.
std::string doubling_aliases(int count) {
  std::string items = "1 AS a0";
  for (int i = 1; i < count; ++i) {
    const std::string before = "a" + std::to_string(i - 1);
    items += ", " + before + "+" + before + " AS a" + std::to_string(i);
  }
  return items;
}

std::string tables(int count) {
  std::string list = "t AS t0";
  for (int i = 1; i < count; ++i) list += ", t AS t" + std::to_string(i);
  return list;
}

std::string numbers(int count) {
  std::string list = "1";
  for (int i = 2; i <= count; ++i) list += "," + std::to_string(i);
  return list;
}

struct Limit {
  std::string name;
  std::string statement;
  int error;
};

std::ostream& operator<<(std::ostream& stream, const Limit& limit) { return stream << limit.name; }

class Limits : public testing::TestWithParam<Limit> {};

TEST_P(Limits, AreKeptQuickly) {
  SqlDatabase database;
  database.run("CREATE TABLE t (id LONG, name TEXT(10))");
  database.run("INSERT INTO t VALUES (1, 'a')");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(GetParam().error, database.error(GetParam().statement));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

const Limit limit_cases[] = {
    {"ConditionsOfAUsualStatement", "SELECT id FROM t WHERE " + chained("id=1", " OR ", 140), 0},
    {"TooManyConditions", "SELECT id FROM t WHERE " + chained("id=1", " AND ", 100000), 3360},
    {"Parentheses", "SELECT " + repeated("(", 60) + "1" + repeated(")", 60), 0},
    {"TooManyParentheses", "SELECT " + repeated("(", 400000), 3360},
    {"Negations", "SELECT id FROM t WHERE " + repeated("NOT ", 60) + "id=1", 0},
    {"TooManyNegations", "SELECT id FROM t WHERE " + repeated("NOT ", 200000) + "id=1", 3360},
    {"TooManySigns", "SELECT " + repeated("- ", 400000) + "id FROM t", 3360},
    {"Concatenations", "SELECT " + chained("id & name", " & ", 70) + " AS x FROM t", 0},
    {"NestedCalls", "SELECT " + repeated("iif(id=1,1,nz(", 35) + "1" + repeated("))", 35) + " FROM t", 0},
    {"NestedBetweens", "SELECT " + repeated("(1 BETWEEN ", 40) + "1" + repeated(" AND id)", 40) + " FROM t", 3360},
    {"NestedSelects", nested_selects(30), 0},
    {"TooManyNestedSelects", nested_selects(20000), 3360},
    {"NestedSubselects", repeated("SELECT id FROM t WHERE id IN (", 25) + "1" + repeated(")", 25), 0},
    {"NestedJoins", "SELECT 1 FROM " + repeated("(", 100000) + "t", 3360},
    {"DoublingAliases", "SELECT " + doubling_aliases(12), 0},
    {"TooManyDoublingAliases", "SELECT " + doubling_aliases(100), 3360},
    {"GroupedDoublingAliases", "SELECT " + doubling_aliases(16) + ", count(*) FROM t GROUP BY a15, 1+a14", 0},
    {"AListOfManyNumbers", "DELETE * FROM t WHERE id IN (" + chained("123456", ",", 100000) + ")", 0},
    {"AVeryLongText", "INSERT INTO t (name) SELECT '" + repeated("x", 900000) + "'", 0},
    {"AStatementTooLong", "SELECT '" + repeated("x", 1100000) + "'", 3360},
    {"Fields", "SELECT " + chained("id", ",", 255) + " FROM t", 0},
    {"TooManyFields", "SELECT " + chained("id", ",", 100000) + " FROM t", 3190},
    {"Unions", chained("SELECT id FROM t", " UNION ", 100), 0},
    {"TooManyUnions", chained("SELECT 1", " UNION ", 50000), 3360},
    {"Tables", "SELECT count(*) FROM " + tables(32), 0},
    {"TooManyTables", "SELECT count(*) FROM " + tables(33), 3360},
    {"TablesInNestedSelects",
     "SELECT count(*) FROM (SELECT t0.id FROM " + tables(20) + ") AS a, (SELECT t0.id FROM " + tables(20) + ") AS b",
     3360},
    {"Headings", "TRANSFORM max(id) SELECT name FROM t GROUP BY name PIVOT id IN (" + numbers(254) + ")", 0},
    {"TooManyHeadings", "TRANSFORM max(id) SELECT name FROM t GROUP BY name PIVOT id IN (" + numbers(255) + ")", 3190},
    {"TooManyUnionsInside", repeated("(", 1000) + "SELECT 1" + repeated(") UNION SELECT 1", 1000), 3360},
    {"ATooLongName", "SELECT " + repeated("n", 500) + " FROM t", 3125},
    {"TextAndNulCharacter", std::string("SELECT 'a\0b'", 12), 3075},
    {"NoUtf8", "SELECT '\xC4'", 3075},
    {"BackTrackingPattern", "SELECT '" + repeated("a", 60000) + "' LIKE '" + repeated("*a", 200) + "b'", 0},
    {"ATooLongPattern", "SELECT 'a' LIKE '" + repeated("?", 2000) + "'", 93},
    {"ATextTooLargeToFill", "SELECT string(70000, 'x')", 6},
};

INSTANTIATE_TEST_SUITE_P(Of, Limits, testing::ValuesIn(limit_cases),
                         [](const auto& limit) { return limit.param.name; });

}  // namespace
}  // namespace jet_sql_test
