// No infinity is computed, stored, summed or printed. Random expressions of extreme numbers are compared with the same
// calculation here, in which a step with an infinite result makes the whole an overflow.
#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <cmath>
#include <random>

#include "support/error.h"
#include "tests/jet_sql/sql_database.h"

namespace jet_sql_test {
namespace {

constexpr double extremes[] = {1.7e308, 9e307, -1.7e308, -1e308, 1e300, -1e300, 3.3e38, 1e200,    2.5e-300,   1e-308,
                               0.1,     -0.5,  2.0,      3.0,    -7.0,  1e15,   123456, 65536.25, 2147483647, 9.0e99};

std::string literal(double value) {
  std::array<char, 64> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value)).ptr;
  std::string digits(buffer.data(), end);
  if (digits.find_first_of(".e") == std::string::npos) digits += ".0";
  return value < 0 ? "(-" + digits + ")" : digits;
}

double number_of(const std::string& text) { return std::strtod(text.c_str(), nullptr); }

/// An expression and its result: a number, or the error that its first failing step raises.
struct Sum {
  std::string text;
  double value = 0;
  int error = 0;
};

class Overflow : public testing::Test {
 protected:
  Overflow() {
    database.run("CREATE TABLE n (id LONG, d DOUBLE)");
    for (std::size_t i = 0; i < std::size(extremes); ++i) {
      database.run("INSERT INTO n VALUES (" + std::to_string(i) + ", " + literal(extremes[i]) + ")");
    }
  }

  std::size_t any(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random); }

  Sum leaf() {
    const std::size_t row = any(std::size(extremes));
    if (any(2) == 0) return {literal(extremes[row]), extremes[row]};
    return {"(SELECT max(d) FROM n WHERE id = " + std::to_string(row) + ")", extremes[row]};
  }

  Sum sum_of(int depth) {
    if (depth == 0) return leaf();
    const Sum left = sum_of(depth - 1), right = sum_of(depth - 1);
    const char op = "+-*/"[any(4)];
    Sum sum{"(" + left.text + " " + op + " " + right.text + ")"};
    sum.error = left.error != 0 ? left.error : right.error;
    if (sum.error != 0) return sum;
    if (op == '/' && right.value == 0) {
      sum.error = 11;
    } else {
      sum.value = op == '+'   ? left.value + right.value
                  : op == '-' ? left.value - right.value
                  : op == '*' ? left.value * right.value
                              : left.value / right.value;
      if (!std::isfinite(sum.value)) sum.error = 6;
    }
    return sum;
  }

  std::mt19937 random{20241125};
  SqlDatabase database;
};

TEST_F(Overflow, OfAnyStepIsAnErrorAndNothingElseIs) {
  int overflows = 0;
  for (int round = 0; round < 3000; ++round) {
    const Sum sum = sum_of(1 + static_cast<int>(any(3)));
    overflows += sum.error == 6 ? 1 : 0;
    // If two steps fail, the engine may report either.
    const std::string shown = "SELECT " + sum.text + " AS x";
    if (sum.error != 0) {
      const int error = database.error(shown);
      ASSERT_TRUE(error == 6 || error == 11) << error << ": " << shown;
      ASSERT_NE(0, database.error("UPDATE n SET d = " + sum.text + " WHERE id = 0")) << sum.text;
    } else {
      ASSERT_EQ(sum.value, number_of(database.value(shown))) << shown;
    }
  }
  EXPECT_GT(overflows, 300);
  EXPECT_EQ("1.7e+308", database.value("SELECT d FROM n WHERE id = 0"));
}

TEST_F(Overflow, OfAggregatesIsAnErrorAndNothingElseIs) {
  int overflows = 0;
  for (int round = 0; round < 400; ++round) {
    const std::size_t first = any(std::size(extremes)), last = std::min(std::size(extremes) - 1, first + any(5));
    double total = 0;
    for (std::size_t i = first; i <= last; ++i) total += extremes[i];
    bool infinite = false;
    double step = 0;
    for (std::size_t i = first; i <= last; ++i) infinite = infinite || !std::isfinite(step += extremes[i]);
    const std::string rows = " FROM n WHERE id BETWEEN " + std::to_string(first) + " AND " + std::to_string(last);
    overflows += infinite ? 1 : 0;
    for (const char* function : {"sum", "avg"}) {
      const std::string statement = std::string("SELECT ") + function + "(d)" + rows;
      if (infinite) {
        ASSERT_EQ(6, database.error(statement)) << statement;
      } else {
        const double wanted = function[0] == 's' ? total : total / static_cast<double>(last - first + 1);
        ASSERT_NEAR(wanted, number_of(database.value(statement)), std::abs(wanted) * 1e-9 + 1e-300) << statement;
      }
    }
    const std::string spread =
        database.error("SELECT stdev(d)" + rows) == 0 ? database.value("SELECT stdev(d)" + rows) : "6";
    ASSERT_EQ(std::string::npos, spread.find_first_of("in")) << spread;
    if (first != last) {
      ASSERT_NE("Null", spread) << rows;
    }
  }
  EXPECT_GT(overflows, 5);
}

TEST_F(Overflow, OfKnownCasesIsError6) {
  for (const char* statement : {"SELECT 1e308 * 10",
                                "SELECT 1e308 + 1e308",
                                "SELECT -1e308 - 1e308",
                                "SELECT 1e308 / 1e-10",
                                "SELECT 10 ^ 400",
                                "SELECT exp(800)",
                                "SELECT 1e400",
                                "SELECT csng(1e39)",
                                "SELECT '1e308' * 10",
                                "SELECT iif(d > 0, d, 'x') + d FROM n",
                                "SELECT sum(d * 2) FROM n",
                                "SELECT d * 10 AS x FROM n WHERE id = 0 UNION SELECT 1",
                                "SELECT max(d * 10) FROM n",
                                "TRANSFORM sum(d) SELECT 1 AS x FROM n GROUP BY 1 PIVOT 'a'",
                                "SELECT ccur(1e300)",
                                "SELECT hex(1e300)",
                                "SELECT partition(3e9, 0, 9, 1)",
                                "SELECT id FROM n WHERE d * 10 > 1 AND id = 0",
                                "SELECT val('1e400')",
                                "SELECT -2147483648 \\ -1",
                                "SELECT id FROM n WHERE -2147483648 \\ (id - 2) = 1",
                                "SELECT datediff('s', #1/1/1900#, #1/1/2024#)",
                                "SELECT datediff('s', #1/1/2024#, #1/1/1900#)",
                                "SELECT clng(3e9)",
                                "SELECT cint(32768)",
                                "SELECT 3e9 MOD 2",
                                "SELECT #1/1/2000# + 5000000",
                                "SELECT #1/1/2000# * 1 + #1/1/2000# + 1e300",
                                "SELECT cdate(3000000)",
                                "SELECT #12/31/9999# + 1",
                                "SELECT year(#12/31/9999# + 1)",
                                "SELECT #1/1/100# - 1",
                                "SELECT cstr(#12/31/9999# + 1)",
                                "SELECT iif(1 = 1, 3000000, #1/1/2000#)",
                                "SELECT int(#1/1/100 12:00#)",
                                "SELECT #1/1/2000# AS x UNION SELECT 3000000",
                                "SELECT max(x + 1) FROM (SELECT #12/31/9999# AS x)",
                                "SELECT x FROM (SELECT #12/31/9999# + 1 AS x)",
                                "SELECT DISTINCT #12/31/9999# + 1 AS x",
                                "SELECT TOP 1 #12/31/9999# + id AS x FROM n WHERE id = 1 ORDER BY id"}) {
    EXPECT_EQ(6, database.error(statement)) << statement;
  }
  for (const char* statement : {"UPDATE n SET id = 3e9", "UPDATE n SET id = id * 2147483647 WHERE id = 3"}) {
    EXPECT_EQ(3421, database.error(statement)) << statement;
  }
}

TEST_F(Overflow, IsNoneWhereTheNumberIsOne) {
  constexpr std::pair<const char*, const char*> rows[] = {
      {"SELECT sum(b * b) FROM big", "18446744056529682432"},
      {"SELECT sum(b) FROM big", "8589934588"},
      {"SELECT avg(b * b) FROM big", "4611686014132420608"},
      {"SELECT b * b FROM big WHERE id = 1", "4611686014132420608"},
      {"SELECT b * b - b * b + 1 FROM big WHERE id = 1", "1"},
      {"SELECT -2147483648 \\ 1", "-2147483648"},
      {"SELECT -2147483648 MOD -1", "0"},
      {"SELECT datediff('s', #1/1/2000#, #1/1/2024#)", "757382400"},
      {"SELECT round(1e300, 20)", "1e+300"},
      {"SELECT #12/31/9999# + 1 - 1", "9999-12-31 00:00:00"},
      {"SELECT #12/31/9999 23:59:59#", "9999-12-31 23:59:59"},
  };
  database.run("CREATE TABLE big (id LONG, b LONG)");
  for (int i = 1; i <= 4; ++i) database.run("INSERT INTO big VALUES (" + std::to_string(i) + ", 2147483647)");
  for (const auto& [statement, value] : rows) EXPECT_EQ(value, database.value(statement)) << statement;
}

}  // namespace
}  // namespace jet_sql_test
