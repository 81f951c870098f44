// Eight processes at work on one index database: no row is lost, none waits too long, nobody sees half a change.
#include <chrono>
#include <iostream>

#include "database/index_database.h"
#include "tests/database/database_test.h"
#include "tests/faults/processes.h"

namespace database::testing {
namespace {

constexpr int processes = 8;
constexpr int rounds = 50;

class IndexProcesses : public DatabaseTest {
 protected:
  IndexProcesses() {
    EXPECT_EQ(CreateIndexDatabase(environment, index), 1);
    for (int process = 0; process < processes; ++process) patient_database(patient_file(process));
    // Two rows whose numbers add up to 0.
    execute(index, {"INSERT INTO index (name) VALUES ('credit')", "INSERT INTO index (name) VALUES ('debit')",
                    "UPDATE index SET harbinoxid = 0"});
  }

  static std::string patient_file(int process) { return "p" + std::to_string(process) + ".das"; }

  /// One change of two rows.
  void move_one() const {
    const Opened opened = open(index);
    engine::Transaction transaction{*opened.database};
    opened.database->execute("UPDATE index SET harbinoxid = harbinoxid + 1 WHERE id = 1");
    opened.database->execute("UPDATE index SET harbinoxid = harbinoxid - 1 WHERE id = 2");
    transaction.commit();
  }

  bool balances() const { return rows(index, "SELECT SUM(harbinoxid) FROM index WHERE id < 3") == expected_sum; }

  /// A new row, refreshed from a patient database; a transfer; and a look at both sides of it.
  bool work(int process, int round) {
    PatientRecord patient;
    patient.name = "P" + std::to_string(process) + "-" + std::to_string(round);
    const std::int32_t id = db_ProcessIndex(environment, index, patient, index_action::write, "");
    patient.index_id = id;
    if (id == 0 || !balances()) return false;
    if (db_ProcessIndex(environment, index, patient, index_action::refresh, path(patient_file(process))) != id) {
      return false;
    }
    move_one();
    return balances();
  }

  std::string index = path("index.mdb");
  const std::vector<std::string> expected_sum{"0"};
};

TEST_F(IndexProcesses, LoseNoRowAndSeeNoHalfOfAChange) {
  using Clock = std::chrono::steady_clock;
  const auto begin = Clock::now();
  // A statement that is kept out for longer than the busy time fails, and its process with it.
  faults::run_together(processes, [&](int process) {
    for (int round = 0; round < rounds; ++round) {
      if (!work(process, round)) return 1;
    }
    return 0;
  });
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - begin).count();
  const std::string total = std::to_string(processes * rounds);
  EXPECT_EQ(rows(index, "SELECT COUNT(*) FROM index WHERE id > 2 AND name = 'Müller-Lüdenscheidt'"),
            std::vector<std::string>{total});
  EXPECT_EQ(rows(index, "SELECT harbinoxid FROM index WHERE id = 1"), std::vector<std::string>{total});
  std::cout << "    " << processes * rounds * 5 << " operations of " << processes << " processes in " << seconds
            << " s\n";
}

}  // namespace
}  // namespace database::testing
