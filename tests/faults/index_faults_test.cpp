// The index and the upgrade of all its patients, interrupted at every point.
#include <algorithm>

#include "database/index/index_database.h"
#include "database/index/index_upgrade.h"
#include "database/version_record.h"
#include "tests/faults/database_faults.h"

namespace database::testing {
namespace {

class IndexFaults : public DatabaseFaults {};

TEST_F(IndexFaults, AnIndexUpgradeGoesOnWhereItWasInterrupted) {
  const std::string index = path("index.mdb"), patient = path("db4_000001.das");
  ASSERT_EQ(CreateIndexDatabase(environment, index), 1);
  patient_database("db4_000001.das");
  execute(patient, {"UPDATE db_info SET MinVersion=58"});
  execute(index, {"CREATE TABLE dbinfo (remark TEXT(10))", "INSERT INTO index (id) VALUES (1)"});
  const auto run = [&] { return db_UpgradeIndexDatabase(environment, index, {}).complete(); };
  const auto is_current = [&] {
    return rows(index, "SELECT name, status FROM index WHERE id=1") ==
               std::vector<std::string>{"Müller-Lüdenscheidt|0"} &&
           rows(patient, "SELECT MinVersion FROM db_info") ==
               std::vector<std::string>{std::to_string(current_minor_version)};
  };
  const auto check = [&](Ended ended) {
    if (ended == Ended::Succeeded) {
      EXPECT_TRUE(is_current());
    }
    EXPECT_NE(state(index), no_file);
    EXPECT_NE(state(patient), no_file);
    EXPECT_TRUE(run()) << "goes on";
    EXPECT_TRUE(is_current());
  };
  faults::sweep("an index upgrade", {restoring(), {}, run, check});
}

TEST_F(IndexFaults, AnIndexRowIsStoredOrNot) {
  const std::string index = path("index.mdb"), file = patient_database();
  ASSERT_EQ(CreateIndexDatabase(environment, index), 1);
  sweep_over_file("refreshing the index", index, [&] {
    PatientRecord patient;
    return db_ProcessIndex(environment, index, patient, index_action::refresh, file) != 0;
  });
}

}  // namespace
}  // namespace database::testing
