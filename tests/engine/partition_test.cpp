// For every condition, the rows where it holds, where its opposite holds and where it is Null are together all rows,
// each of them once, in every clause that takes a condition.
#include <algorithm>
#include <map>

#include "tests/engine/model/predicates.h"
#include "tests/engine/model/property_run.h"
#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

/// Rows as texts, in order, so that two lists can be compared.
using Rows = std::vector<std::string>;

Rows sorted(Rows rows) {
  std::ranges::sort(rows);
  return rows;
}

std::string cell(const Recordset& rows, std::int32_t position) {
  const Value value = rows.value(position);
  return is_null(value) ? "-" : to_text(value);
}

/// The three conditions that divide the rows among themselves.
std::vector<std::string> parts_of(const std::string& condition) {
  return {condition, "NOT " + condition, condition + " IS NULL"};
}

class Partition : public EngineTest {
 protected:
  Partition() : database_(create()) {
    for (const char* const sql :
         {"CREATE TABLE p (id COUNTER, i SHORT, l LONG, s SINGLE, d DOUBLE, t DATETIME, x TEXT(8), b YESNO, mark LONG)",
          "CREATE TABLE q (n COUNTER, k LONG, s SINGLE, x TEXT(8))",
          "INSERT INTO p (i,l,s,d,t,x,b) VALUES (1, 100, 0.1, 0.1, #1/1/2024#, 'a', True)",
          "INSERT INTO p (i,l,s,d,t,x,b) VALUES (-3, Null, 0.7, 2.5, #3/1/2024 12:30:00#, 'B', False)",
          "INSERT INTO p (i,l,s,d,t,x,b) VALUES (Null, 0, 2.5, Null, Null, 'ab', True)",
          "INSERT INTO p (i,l,s,d,t,x,b) VALUES (2, 3, Null, 0.7, #12/31/2023#, Null, False)",
          "INSERT INTO q (k,s,x) VALUES (1, 0.1, 'a')", "INSERT INTO q (k,s,x) VALUES (2, 0.7, 'ä')",
          "INSERT INTO q (k,s,x) VALUES (Null, Null, 'B')", "INSERT INTO q (k,s,x) VALUES (7, 2.5, Null)"}) {
      database_->execute(sql);
    }
    const auto p = database_->table_defs().item("p");
    p->fields().item("x")->set_allow_zero_length(true);
    const auto late = p->create_field("late", DataType::Long);
    late->set_required(true);
    p->fields().append(late);
    database_->execute("INSERT INTO p (i,l,s,d,t,x,b,late) VALUES (0, -1, 100, 100, #2/29/2024#, '', No, 3)");
  }

  Database& database() { return *database_; }

  Rows rows_of(const std::string& select) {
    Rows all;
    const auto rows = database_->open_forward_only(select);
    for (; !rows->eof(); rows->move_next()) all.push_back(cell(*rows, 0) + " " + cell(*rows, 1));
    return sorted(all);
  }

  /// `select` is a statement up to its condition; `all` returns every row.
  void expect_parts(const std::string& all, const std::string& select, const std::string& condition) {
    Rows parts;
    for (const std::string& part : parts_of(condition))
      std::ranges::copy(rows_of(select + part), std::back_inserter(parts));
    EXPECT_EQ(sorted(parts), rows_of(all)) << select << condition;
  }

  void queries(const std::string& condition, bool joined) {
    const std::string columns = joined ? "SELECT p.id, q.n FROM " : "SELECT p.id, p.id FROM ";
    const std::vector<std::string> sources =
        joined ? std::vector<std::string>{"p, q", "p LEFT JOIN q ON p.i = q.k", "p RIGHT JOIN q ON p.s = q.s",
                                          "(p INNER JOIN q ON p.x < q.x)"}
               : std::vector<std::string>{"p", "(SELECT * FROM p) AS p",
                                          "(SELECT * FROM p UNION ALL SELECT * FROM p) AS p"};
    for (const std::string& source : sources) {
      expect_parts(columns + source, columns + source + " WHERE ", condition);
    }
    if (joined) return expect_parts(columns + "p, q", columns + "p INNER JOIN q ON ", condition);
    const std::string grouped = columns + "p GROUP BY p.id, p.i, p.l, p.s, p.d, p.t, p.x, p.b, p.late";
    expect_parts(grouped, grouped + " HAVING ", condition);
    values(condition);
    changes(condition);
  }

  /// The condition as a value, and IIf, must say about each row what WHERE says.
  void values(const std::string& condition) {
    Rows expected;
    const char* const names[] = {"True", "False", "-"};
    for (int part = 0; part < 3; ++part) {
      const std::string text = parts_of(condition)[static_cast<std::size_t>(part)];
      for (const std::string& id : column(*database_, "SELECT p.id FROM p WHERE " + text, "id")) {
        expected.push_back(id + " " + names[part]);
      }
    }
    EXPECT_EQ(rows_of("SELECT p.id, " + condition + " AS v FROM p"), sorted(expected)) << condition;
    EXPECT_EQ(rows_of("SELECT p.id, IIf(" + condition + ", 'True', IIf(NOT " + condition + ", 'False', IIf(" +
                      condition + " IS NULL, Null, 'none'))) AS v FROM p"),
              sorted(expected))
        << condition;
  }

  void changes(const std::string& condition) {
    const Transaction undone{*database_};
    const auto rows = static_cast<std::int32_t>(rows_of("SELECT id, id FROM p").size());
    for (const char* const change : {"UPDATE p SET mark = Nz(mark) + 1 WHERE ", "DELETE FROM p WHERE "}) {
      std::int32_t changed = 0;
      for (const std::string& part : parts_of(condition)) {
        const auto found = rows_of("SELECT p.id, p.id FROM p WHERE " + part);
        database_->execute(change + part);
        EXPECT_EQ(database_->records_affected(), static_cast<std::int32_t>(found.size())) << change << part;
        changed += database_->records_affected();
      }
      EXPECT_EQ(changed, rows) << change << condition;
      EXPECT_EQ(rows_of("SELECT id, mark FROM p WHERE mark <> 1 OR mark IS NULL"), Rows{}) << change << condition;
    }
    EXPECT_EQ(rows_of("SELECT id, id FROM p"), Rows{}) << condition;
  }

  /// False if the condition has no value for some row: an overflow, or types that cannot be compared.
  bool check(unsigned seed) {
    const bool joined = seed % 3 == 0;
    const std::string condition = model::Predicates(seed, joined).condition(3);
    try {
      queries(condition, joined);
      return true;
    } catch (const support::RuntimeError& error) {
      const int number = error.number();
      EXPECT_TRUE(number == 3464 || number == 6 || number == 3360 || number == 94) << number << ": " << condition;
      return false;
    }
  }

 private:
  std::unique_ptr<Database> database_;
};

TEST_F(Partition, OfAllRowsByAnyCondition) {
  unsigned checked = 0;
  const unsigned tried = try_seeds(3, [&](unsigned seed) {
    checked += check(seed) ? 1 : 0;
    EXPECT_FALSE(HasFailure()) << "PROPERTY_SEED=" << seed;
    return !HasFailure();
  });
  EXPECT_GT(checked, tried / 2) << "of " << tried;
  RecordProperty("conditions", static_cast<int>(checked));
}

}  // namespace
}  // namespace engine::test
