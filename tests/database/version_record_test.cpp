// The version record: written with a new database, read back, and used to recognise a database of this product.
#include "database/version_record.h"

#include "database/upgrade/ladder.h"
#include "tests/database/database_test.h"

namespace database::testing {
namespace {

using Version = DatabaseTest;

TEST_F(Version, IsThatOfANewDatabase) {
  VersionRecord record;
  record.MajVersion = record.MinVersion = 0;
  ASSERT_TRUE(db_ReadDBInfo(environment, patient_database(), record));
  EXPECT_EQ(record.MajVersion, 4);
  EXPECT_EQ(record.MinVersion, 60);
  EXPECT_EQ(record.Desc, "vantrix");
  EXPECT_EQ(record.Password, "geheim");
  for (const auto& moment : {record.LastChanged, record.LastBackup, record.Created}) {
    ASSERT_TRUE(moment);
    EXPECT_EQ(engine::iso_text(*moment), "2024-05-17 14:30:00");
  }
  EXPECT_FALSE(record.LastArchive);
}

TEST_F(Version, StandsInItsColumnsAndIsReadBack) {
  const std::string file = patient_database();
  VersionRecord record = new_version_record(environment);
  record.Type = 2;
  record.LastChanged = engine::date_from(2024, 1, 1);
  record.LastBackup = engine::date_from(2024, 1, 2);
  record.Created = engine::date_from(2024, 1, 3);
  record.LastCompressed = engine::date_from(2024, 1, 4);
  record.LastArchive = engine::date_from(2024, 1, 5);
  ASSERT_EQ(db_WriteDBInfo(environment, file, record), 1);
  EXPECT_EQ(rows(file, "SELECT [Type], LastChanged, LastBackup, Created, LastCompressed, LastArchive FROM db_info"),
            std::vector<std::string>{"2|2024-01-01 00:00:00|2024-01-02 00:00:00|2024-01-03 00:00:00|"
                                     "2024-01-04 00:00:00|2024-01-05 00:00:00"});
  VersionRecord read;
  ASSERT_TRUE(db_ReadDBInfo(environment, file, read));
  EXPECT_EQ(read.Type, 2);
  EXPECT_EQ(read.LastChanged, record.LastChanged);
  EXPECT_EQ(read.LastBackup, record.LastBackup);
  EXPECT_EQ(read.Created, record.Created);
  EXPECT_EQ(read.LastCompressed, record.LastCompressed);
  EXPECT_EQ(read.LastArchive, record.LastArchive);
}

TEST_F(Version, KeepsABlankBehindTheTextsThatReadersTrim) {
  const std::string file = patient_database();
  VersionRecord record = new_version_record(environment);
  record.sAvailableData = " 1,2";
  record.lAvailableData = 6;
  record.LastUser = "Praxis";
  ASSERT_EQ(db_WriteDBInfo(environment, file, record), 1);
  EXPECT_EQ(rows(file, "SELECT Password, sAvailableData FROM db_info"), std::vector<std::string>{"geheim | 1,2 "});
  VersionRecord read;
  ASSERT_TRUE(db_ReadDBInfo(environment, file, read));
  EXPECT_EQ(read.sAvailableData + "/" + read.LastUser, "1,2/Praxis");
  EXPECT_EQ(read.lAvailableData, 6);
}

TEST_F(Version, IsWrittenBackForLayoutsThatAreNotUpgraded) {
  const std::string file = patient_database();
  const std::pair<std::int16_t, std::int16_t> versions[] = {
      {3, 12}, {5, 1}, {4, current_minor_version + 1}, {4, current_minor_version}};
  for (const auto& [major, minor] : versions) {
    VersionRecord record = new_version_record(environment);
    record.MajVersion = major;
    record.MinVersion = minor;
    ASSERT_EQ(db_WriteDBInfo(environment, file, record), 1);
    VersionRecord read;
    ASSERT_TRUE(db_ReadDBInfo(environment, file, read));
    EXPECT_EQ(read.MajVersion, major);
    EXPECT_EQ(read.MinVersion, minor);
  }
  execute(file, {"DELETE * FROM db_info"});
  VersionRecord record = new_version_record(environment);
  EXPECT_EQ(db_WriteDBInfo(environment, file, record), 1);
  EXPECT_EQ(rows(file, "SELECT count(*) FROM db_info"), std::vector<std::string>{"1"});
  EXPECT_EQ(db_WriteDBInfo(environment, path("missing.das"), record), 0);
  execute(file, {"INSERT INTO db_info (LastUser) VALUES ('X')", "CREATE UNIQUE INDEX one ON db_info (LastUser)"});
  record.LastUser = "X";
  EXPECT_EQ(db_WriteDBInfo(environment, file, record), 0);
}

TEST_F(Version, TellsForeignDatabasesByTheirDescription) {
  struct Case {
    std::string_view statement;
    bool ours;
  };
  const Case cases[] = {
      {"UPDATE db_info SET [Desc] = 'Daten von VANTRIX 4'", true},
      {"UPDATE db_info SET [Desc] = 'TrenMoor'", true},
      {"UPDATE db_info SET [Desc] = 'vantri x'", false},
      {"UPDATE db_info SET [Desc] = Null", false},
      {"UPDATE db_info SET [Desc] = 'vantrix', LastBackup = Null, [Type] = Null", true},
      {"ALTER TABLE db_info DROP COLUMN sAvailableData", true},
      {"ALTER TABLE db_info ALTER COLUMN lAvailableData TEXT(9)", true},
      {"UPDATE db_info SET lAvailableData = 'no number'", false},
      {"DELETE * FROM db_info", false},
      {"DROP TABLE db_info", false},
  };
  const std::string file = patient_database();
  for (const Case& row : cases) {
    execute(file, {row.statement});
    VersionRecord record;
    record.Desc = "vantrix";
    EXPECT_EQ(db_ReadDBInfo(environment, file, record), row.ours) << row.statement;
  }
}

TEST_F(Version, ThatNobodyCanReadIsNotTheCurrentOne) {
  struct Case {
    std::string_view statement;
    int error;
  };
  const Case cases[] = {
      {"UPDATE db_info SET MinVersion = Null", 94},
      {"UPDATE db_info SET MinVersion = 27, MajVersion = Null", 94},
      {"ALTER TABLE db_info ALTER COLUMN MajVersion TEXT(9)", 94},
      {"UPDATE db_info SET MajVersion = 'four'", 13},
      {"UPDATE db_info SET MajVersion = '4'", 0},
      {"ALTER TABLE db_info DROP COLUMN MinVersion", 3265},
  };
  const std::string file = patient_database();
  for (const Case& row : cases) {
    execute(file, {row.statement});
    VersionRecord record;
    const support::Outcome outcome = support::outcome_of(
        [&] { EXPECT_EQ(db_ReadDBInfo(environment, file, record), row.error == 0) << row.statement; });
    EXPECT_EQ(outcome.last() ? outcome.last()->number() : 0, row.error) << row.statement;
  }
}

}  // namespace
}  // namespace database::testing
