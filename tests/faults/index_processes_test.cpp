// Eight processes work on one index database: no row is lost, nobody waits too long, nobody sees half a change.
#include <fmt/core.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <iostream>

#include "database/index/index_database.h"
#include "database/index/index_upgrade.h"
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

  /// Changes both rows in one transaction.
  void move_one() const {
    const Opened opened = open(index);
    engine::Transaction transaction{*opened.database};
    opened.database->execute("UPDATE index SET harbinoxid = harbinoxid + 1 WHERE id = 1");
    opened.database->execute("UPDATE index SET harbinoxid = harbinoxid - 1 WHERE id = 2");
    transaction.commit();
  }

  bool balances() const { return rows(index, "SELECT SUM(harbinoxid) FROM index WHERE id < 3") == expected_sum; }

  /// Adds a row, refreshes it from a patient database, makes a transfer, and checks that the sum of both sides is kept.
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
  // A statement that cannot get the lock within the busy time fails, and its process fails with it.
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

/// Patients with an older layout, in an index that is not up to date.
class KilledIndexUpgrade : public DatabaseTest {
 protected:
  static constexpr int patients = 3;
  KilledIndexUpgrade() {
    EXPECT_EQ(CreateIndexDatabase(environment, index), 1);
    execute(index, {"CREATE TABLE dbinfo (remark TEXT(10))"});
    patient_database(name(1));
    execute(path(name(1)), {"UPDATE db_info SET MinVersion=57"});
    for (int id = 1; id <= patients; ++id) {
      if (id > 1) std::filesystem::copy_file(host(name(1)), host(name(id)));
      execute(index, {"INSERT INTO index (id) VALUES (" + std::to_string(id) + ")"});
    }
  }
  static std::string name(int id) { return fmt::format("db4_{:06}.das", id); }
  std::string host(const std::string& file) const { return support::host_file_system().host_path(path(file)); }
  /// Kills its process at the call with the number `calls`.
  IndexUpgradeWatch killed_after(int calls) {
    const auto die = [this, calls] {
      if (++calls_ == calls) _exit(killed);
    };
    return {.status = [die](const std::string&) { die(); },
            .cancelled =
                [die] {
                  die();
                  return false;
                },
            .patient = [die](std::int32_t, const std::string&, const IndexOutcome&) { die(); }};
  }
  int upgraded() const {
    int count = 0;
    for (int id = 1; id <= patients; ++id) {
      count += rows(path(name(id)), "SELECT MinVersion FROM db_info")[0] == "60" ? 1 : 0;
    }
    return count;
  }

  static constexpr int killed = 9;
  std::string index = path("index.mdb");
  int calls_ = 0;
};

TEST_F(KilledIndexUpgrade, GoesOnWhereItWasKilled) {
  // For each patient: one call before it, one with the percentage, one for the upgrade.
  constexpr int calls_a_patient = 3;
  int before = 0;
  for (int done = 0; done <= patients; ++done) {
    const int call = calls_a_patient * (done == 0 ? 0 : 1) + 1;
    const auto process = faults::start_process([&] {
      db_UpgradeIndexDatabase(environment, index, killed_after(call));
      return 0;
    });
    ASSERT_EQ(faults::wait_for(process), killed) << done;
    EXPECT_EQ(upgraded(), done);
    EXPECT_GE(upgraded(), before);
    before = upgraded();
    EXPECT_EQ(rows(index, "SELECT id FROM index").size(), static_cast<std::size_t>(patients));
    EXPECT_EQ(rows(index, "SELECT version FROM dbinfo"), std::vector<std::string>{"1"});
  }
  const IndexUpgrade last = db_UpgradeIndexDatabase(environment, index, {});
  EXPECT_TRUE(last.complete());
  EXPECT_EQ(last.due, 0U);
  EXPECT_EQ(rows(index, "SELECT id FROM index WHERE name<>'' AND flag=0 AND status=0").size(),
            static_cast<std::size_t>(patients));
}

TEST_F(KilledIndexUpgrade, WalksOnlyThosePatientsThatItHasNotWalked) {
  const auto process = faults::start_process([&] {
    db_UpgradeIndexDatabase(environment, index, killed_after(5));
    return 0;
  });
  ASSERT_EQ(faults::wait_for(process), killed);
  EXPECT_EQ(db_UpgradeIndexDatabase(environment, index, {}).due, static_cast<std::size_t>(patients - 1));
  EXPECT_EQ(upgraded(), patients);
}

}  // namespace
}  // namespace database::testing
