#include "database/upgrade/file_upgrade.h"

#include <gmock/gmock.h>

#include "tests/database/refusing_database.h"
#include "tests/upgrade/old_layout.h"

namespace database::testing {
namespace {

class FileUpgrades : public OldLayout {};

TEST_F(FileUpgrades, KeepTheirCopyOnlyWhereTheDiskHasFailed) {
  environment.message_box = [](std::string_view, std::uint32_t, std::string_view) { return 1; };
  struct Case {
    int number;
    std::string copy;
  };
  for (const Case& row : {Case{3043, "4.40.4.40.das"}, Case{3045, ""}, Case{3059, ""}}) {
    const std::string file = old_database(40);
    VersionRecord record;
    ASSERT_TRUE(db_ReadDBInfo(environment, file, record));
    RefusingDatabase database(open(file).database, [&](std::string_view statement) {
      if (statement.starts_with("INSERT INTO import")) throw support::RuntimeError(row.number, "refused");
    });
    try {
      upgrade_opened(environment, database, file, record, true);
      ADD_FAILURE() << row.number;
    } catch (const UpgradeFailure& failure) {
      EXPECT_EQ(failure.number(), row.number);
      EXPECT_EQ(failure.copy(), row.copy);
    }
    database.close();
    EXPECT_EQ(stored_version(file), 40);
    EXPECT_EQ(files().size(), row.copy.empty() ? 1U : 2U) << row.number;
    environment.file_system().remove(path("4.40.4.40.das"));
  }
}

}  // namespace
}  // namespace database::testing
