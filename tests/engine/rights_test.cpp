#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

class Rights : public EngineTest {};

TEST_F(Rights, OfANewFileAreTheUsersAlone) {
  add_things(*create());
  const auto rights = std::filesystem::status(host_path()).permissions();
  EXPECT_EQ(rights, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
}

}  // namespace
}  // namespace engine::test
