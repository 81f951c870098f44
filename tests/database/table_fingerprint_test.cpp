// Fingerprints differ for tables with different content, and only for those.
#include "database/keeping/table_fingerprint.h"

#include "tests/database/database_test.h"

namespace database::testing {
namespace {

using keeping::differing_tables;
using keeping::fingerprint_of_table;
using keeping::fingerprints;
using keeping::TableFingerprint;

class Fingerprints : public DatabaseTest {
 protected:
  TableFingerprint of(std::initializer_list<std::string_view> statements) {
    const std::string file = path("f" + std::to_string(++count_) + ".mdb");
    const auto engine = create_engine(environment, false);
    const auto database = engine->create_database(file, engine::locale_general, engine::version_30);
    for (const std::string_view statement : statements) database->execute(statement);
    return fingerprint_of_table(*database, "t");
  }
  int count_ = 0;
};

constexpr std::string_view table = "CREATE TABLE t (n LONG, s MEMO, x DOUBLE, f SINGLE, d DATETIME, b YESNO)";
constexpr std::string_view first = "INSERT INTO t VALUES (1, 'Grüße', 0.1, 5.6, #2/29/2024 7:05:00#, True)";
constexpr std::string_view second = "INSERT INTO t (n) VALUES (2)";

TEST_F(Fingerprints, AreTheSameHoweverTheRowsCameToBe) {
  const TableFingerprint model = of({table, first, second});
  EXPECT_EQ(model.rows, 2);
  EXPECT_EQ(of({table, second, first}), model) << "another order";
  EXPECT_EQ(of({table, second, "CREATE INDEX i ON t (n)", "INSERT INTO t (n) VALUES (9)", first,
                "DELETE * FROM t WHERE n=9"}),
            model)
      << "another history";
  EXPECT_EQ(of({"CREATE TABLE T (N LONG, S MEMO, X DOUBLE, F SINGLE, D DATETIME, B YESNO)", first, second}).checksum,
            model.checksum)
      << "names are compared without regard to case";
}

TEST_F(Fingerprints, DifferByASingleValueTypeRowOrName) {
  const TableFingerprint model = of({table, first, second});
  for (const std::string_view change :
       {"UPDATE t SET n=3 WHERE n=2", "UPDATE t SET s='Grüsse' WHERE n=1", "UPDATE t SET s='Grüße ' WHERE n=1",
        "UPDATE t SET x=0.10000000000000001+0.0000000000000001 WHERE n=1", "UPDATE t SET f=5.5 WHERE n=1",
        "UPDATE t SET d=#2/29/2024 7:05:01# WHERE n=1", "UPDATE t SET b=False WHERE n=1", "UPDATE t SET x=0 WHERE n=2",
        "DELETE * FROM t WHERE n=2", "INSERT INTO t (n) VALUES (2)", "UPDATE t SET n=2 WHERE n=1"}) {
    EXPECT_NE(of({table, first, second, change}).checksum, model.checksum) << change;
  }
  // Two equal rows must not cancel each other out, and values must not be exchangeable.
  EXPECT_NE(of({table, first, first}).checksum, of({table, second, second}).checksum);
  EXPECT_NE(of({"CREATE TABLE t (a LONG, b LONG)", "INSERT INTO t VALUES (1, 2)"}).checksum,
            of({"CREATE TABLE t (a LONG, b LONG)", "INSERT INTO t VALUES (2, 1)"}).checksum);
  EXPECT_NE(of({"CREATE TABLE t (a LONG)", "INSERT INTO t VALUES (1)"}).checksum,
            of({"CREATE TABLE t (a DOUBLE)", "INSERT INTO t VALUES (1)"}).checksum);
  EXPECT_NE(of({"CREATE TABLE t (a LONG)"}).checksum, of({"CREATE TABLE t (c LONG)"}).checksum);
}

TEST_F(Fingerprints, NameTheTablesThatDiffer) {
  const std::string left = patient_database("left.das"), right = path("right.das");
  write_file(right, read_file(left));
  execute(right, {"DELETE * FROM patdat", "DROP TABLE memos", "CREATE TABLE more (n LONG)"});
  const Opened one = open(left), other = open(right);
  EXPECT_EQ(differing_tables(fingerprints(*one.database), fingerprints(*other.database)),
            (std::vector<std::string>{"patdat", "Memos", "more"}));
}

}  // namespace
}  // namespace database::testing
