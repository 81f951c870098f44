// A check finds nothing wrong in old layouts, nor in upgraded ones.
#include "database/keeping/check.h"

#include "tests/upgrade/old_layout.h"

namespace database::testing {
namespace {

class CheckedLayout : public OldLayout, public ::testing::WithParamInterface<std::int16_t> {
 protected:
  std::vector<std::string> findings(const std::string& file) const {
    std::vector<std::string> found;
    const keeping::CheckReport report = keeping::check_database(environment, file, "");
    for (const keeping::Finding& finding : report.findings) {
      // The scripts' rows exist for the upgrade to work on; some of them refer to rows that do not exist.
      if (finding.check != "reference") found.push_back(finding.table + "." + finding.field + ": " + finding.text);
    }
    return found;
  }
};

TEST_P(CheckedLayout, HasWhatItsVersionShouldHaveBeforeAndAfterTheUpgrade) {
  environment.message_box = [](std::string_view, std::uint32_t, std::string_view) { return 1; };
  const std::string file = old_database(GetParam());
  EXPECT_EQ(findings(file), std::vector<std::string>{});
  ASSERT_EQ(upgrade(file), 1);
  EXPECT_EQ(findings(file), std::vector<std::string>{});
}

INSTANTIATE_TEST_SUITE_P(Old, CheckedLayout, ::testing::ValuesIn(old_versions().begin(), old_versions().end()),
                         [](const auto& version) { return "Layout4_" + std::to_string(version.param); });

}  // namespace
}  // namespace database::testing
