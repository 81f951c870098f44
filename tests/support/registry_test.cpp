#include "support/registry.h"

#include <gtest/gtest.h>

#include <map>

#include "support/hive_registry.h"
#include "tests/support/registry_contract.h"

namespace support {
namespace testing {

constexpr RootKey user_root = RootKey::CurrentUser;

INSTANTIATE_TEST_SUITE_P(Hive, RegistryContract,
                         ::testing::Values(RegistryCase{
                             "hive", [](const TemporaryFolder& folder) { return open_hive(folder.host("test.reg")); },
                             "Software\\Test", [](const std::string&) {}}),
                         [](const auto& row) { return row.param.name; });

TEST_P(RegistryContract, CreatesAKeyOnce) {
  EXPECT_FALSE(KeyExists(*registry_, user_root, key_));
  EXPECT_TRUE(CreateRegKey(*registry_, user_root, key_ + "\\Ä b\\c", "string"));
  EXPECT_FALSE(CreateRegKey(*registry_, user_root, key_ + "\\Ä B", "string"));
  EXPECT_TRUE(KeyExists(*registry_, user_root, key_));
  EXPECT_TRUE(KeyExists(*registry_, user_root, key_ + "\\Ä B\\C"));
  EXPECT_FALSE(KeyExists(*registry_, user_root, key_ + "\\Ä b\\c\\d"));
  EXPECT_FALSE(KeyExists(*registry_, RootKey::LocalMachine, key_ + "\\Ä b"));
  EXPECT_FALSE(CreateRegKey(*registry_, user_root, key_ + "\\Łódź", "string"));
}

TEST_P(RegistryContract, CanBeWrittenHereAndBelow) {
  EXPECT_TRUE(registry_->can_write(user_root, key_ + "\\new\\below"));
  EXPECT_FALSE(KeyExists(*registry_, user_root, key_)) << "only a look";
  EXPECT_TRUE(CreateRegKey(*registry_, user_root, key_, "string"));
  EXPECT_TRUE(registry_->can_write(user_root, key_));
}

TEST_P(RegistryContract, WritesTextAndReadsItBack) {
  const std::pair<std::string, std::string> rows[] = {
      {"plain", "abc"}, {"path", R"(C:\a "b"\)"}, {"umlaut ä", "Größe €"}, {"", "the key's own"}, {"plain", "changed"},
  };
  for (const auto& [name, value] : rows) {
    EXPECT_TRUE(WriteRegString(*registry_, user_root, key_, name, value)) << name;
    std::string read;
    EXPECT_TRUE(ReadRegValue(*registry_, user_root, key_, name, read)) << name;
    EXPECT_EQ(read, value);
  }
}

TEST_P(RegistryContract, StoresAnEmptyValueAsABlankThatReadsAsTheCallersDefault) {
  EXPECT_TRUE(WriteRegString(*registry_, user_root, key_, "v", ""));
  const auto stored = registry_->read(user_root, key_, "v");
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->type, 1U);
  EXPECT_EQ(stored->text, std::string(" \0", 2));
  std::string read = "default";
  EXPECT_TRUE(ReadRegValue(*registry_, user_root, key_, "V", read));
  EXPECT_EQ(read, "default");
}

TEST_P(RegistryContract, LeavesTheOutputWhereThereIsNothing) {
  std::string read = "default";
  EXPECT_FALSE(ReadRegValue(*registry_, user_root, key_, "v", read));
  EXPECT_TRUE(CreateRegKey(*registry_, user_root, key_, "string"));
  EXPECT_FALSE(ReadRegValue(*registry_, user_root, key_, "v", read));
  EXPECT_EQ(read, "default");
}

TEST_P(RegistryContract, RefusesTextThatWouldNotReadBack) {
  EXPECT_TRUE(WriteRegString(*registry_, user_root, key_, "v", "before"));
  for (const std::string& value : {std::string("Łódź"), std::string("a\0b", 3), std::string("\xFF")}) {
    EXPECT_FALSE(WriteRegString(*registry_, user_root, key_, "v", value));
  }
  std::string read;
  EXPECT_TRUE(ReadRegValue(*registry_, user_root, key_, "v", read));
  EXPECT_EQ(read, "before");
  EXPECT_FALSE(registry_->write_text(user_root, key_ + "\\none", "v", "x"));  // the key must exist
}

/// Gives the same answer to every question.
class OneValue : public Registry {
 public:
  bool key_exists(RootKey, std::string_view) const override { return true; }
  std::optional<RegistryValue> read(RootKey, std::string_view, std::string_view) const override { return value; }
  CreateResult create_key(RootKey, std::string_view, std::string_view) override { return CreateResult::Existed; }
  bool write_text(RootKey, std::string_view, std::string_view, std::string_view) override { return false; }
  bool can_write(RootKey, std::string_view) const override { return false; }
  std::optional<RegistryValue> value;
};

struct ValueRow {
  std::uint32_t type;
  std::string_view text;
  std::uint32_t number;
  bool was_read;
  std::string_view output;
};

TEST(ReadRegValue, TakesTextsAndNumbersOnly) {
  using namespace std::string_view_literals;
  const ValueRow rows[] = {
      {1, "abc\0"sv, 0, true, "abc"},   {1, "abc", 0, true, "abc"},           {1, "abc\0\0"sv, 0, true, "abc"},
      {1, " \0"sv, 0, true, "default"}, {1, "", 0, true, "default"},          {1, "\0abc"sv, 0, true, "default"},
      {1, "a\x19", 0, true, "a\x19"},   {2, "%TEMP%\0"sv, 0, true, "%TEMP%"}, {4, "", 5, true, "5"},
      {4, "", 0xFFFFFFFF, true, "-1"},  {7, "a\0\0"sv, 0, false, "default"},  {3, "", 0, false, "default"},
  };
  for (const ValueRow& row : rows) {
    OneValue registry;
    registry.value = RegistryValue{row.type, std::string(row.text), row.number};
    std::string output = "default";
    EXPECT_EQ(ReadRegValue(registry, user_root, "k", "v", output), row.was_read) << row.type << row.text;
    EXPECT_EQ(output, row.output) << row.text;
  }
}

}  // namespace testing
}  // namespace support
