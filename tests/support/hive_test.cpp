#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>

#include "support/error.h"
#include "support/hive_registry.h"
#include "tests/support/file_age.h"
#include "tests/support/temporary_folder.h"

namespace support {
namespace {

using ::testing::HasSubstr;
using testing::TemporaryFolder;
using ::testing::ThrowsMessage;
constexpr RootKey user_root = RootKey::CurrentUser;
constexpr RootKey machine_root = RootKey::LocalMachine;

constexpr std::string_view hive_text =
    "REGEDIT4\r\n; the installation\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Maker\\App]\r\n; its folder\r\n"
    "\"path\"=\"C:\\\\Programme\\\\Gr\xF6\xDF"
    "e \\\"x\\\"\"\r\n@=\"own\"\r\n\"n\"=dword:0000001f\r\n"
    "\"list\"=hex(7):61,00,\\\r\n  62,00,00\r\n\"expand\"=hex(2):25,54,25,00\r\n\r\n"
    "[HKEY_CLASSES_ROOT\\.das]\r\n@=\"x\"\r\n\r\n";

std::string text_of(const Registry& registry, RootKey root, std::string_view key, std::string_view name) {
  std::string text = "default";
  return ReadRegValue(registry, root, key, name, text) ? text : "nothing";
}

TEST(Hive, ReadsValuesAndKeepsWhatItDoesNotKnow) {
  const TemporaryFolder folder;
  folder.write("h.reg", hive_text);
  const auto hive = open_hive(folder.host("h.reg"));
  constexpr std::string_view key_path = "software\\MAKER\\app";
  EXPECT_EQ(text_of(*hive, machine_root, key_path, "PATH"), "C:\\Programme\\Größe \"x\"");
  EXPECT_EQ(text_of(*hive, machine_root, key_path, ""), "own");
  EXPECT_EQ(text_of(*hive, machine_root, key_path, "n"), "31");
  EXPECT_EQ(text_of(*hive, machine_root, key_path, "expand"), "%T%");
  EXPECT_EQ(text_of(*hive, machine_root, key_path, "list"), "nothing");
  EXPECT_EQ(hive->read(machine_root, key_path, "list")->type, 7U);
  EXPECT_TRUE(hive->key_exists(machine_root, "SOFTWARE\\Maker"));
  EXPECT_FALSE(hive->key_exists(user_root, "SOFTWARE\\Maker"));

  ASSERT_TRUE(hive->write_text(machine_root, key_path, "Path", "C:\\x"));
  std::string expected(hive_text);
  const auto start = expected.find("C:\\\\Programme");
  expected.replace(start, expected.find('\r', start) - start, "C:\\\\x\"");
  EXPECT_EQ(folder.read("h.reg"), expected);
}

TEST(Hive, AppendsKeysInTheSpellingOfThoseAboveThem) {
  const TemporaryFolder folder;
  const auto hive = open_hive(folder.host("h.reg"));
  EXPECT_FALSE(folder.read("h.reg"));
  EXPECT_EQ(hive->create_key(user_root, "Software\\Maker", "string"), Registry::CreateResult::Created);
  EXPECT_EQ(hive->create_key(user_root, "SOFTWARE\\maker\\App\\User", "string"), Registry::CreateResult::Created);
  EXPECT_EQ(hive->create_key(user_root, "software\\maker\\app", "string"), Registry::CreateResult::Existed);
  EXPECT_TRUE(hive->write_text(user_root, "software\\maker", "BGUnit", "1"));
  EXPECT_TRUE(hive->write_text(user_root, "software\\maker\\APP", "v", " "));
  EXPECT_EQ(folder.read("h.reg"),
            "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Maker]\r\n\"BGUnit\"=\"1\"\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\Maker\\App\\User]\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\Maker\\App]\r\n\"v\"=\" \"\r\n\r\n");
  EXPECT_EQ(folder.file_count(), 1U);
}

TEST(Hive, TouchesTheFileOnlyForAChange) {
  const TemporaryFolder folder;
  const std::string loose = "REGEDIT4\n[HKEY_CURRENT_USER\\A]\n \"v\" = \"1\" \n";
  folder.write("h.reg", loose);
  const auto hive = open_hive(folder.host("h.reg"));
  EXPECT_TRUE(hive->write_text(user_root, "a", "V", "1"));
  EXPECT_EQ(hive->create_key(user_root, "a", ""), Registry::CreateResult::Existed);
  EXPECT_FALSE(hive->write_text(user_root, "a", "v", "two\r\nlines"));
  EXPECT_EQ(folder.read("h.reg"), loose);
}

TEST(Hive, WritesOverWhatAnotherProgramWroteMeanwhile) {
  const TemporaryFolder folder;
  const auto first = open_hive(folder.host("h.reg"));
  const auto second = open_hive(folder.host("h.reg"));
  EXPECT_TRUE(WriteRegString(*first, user_root, "A", "one", "1"));
  EXPECT_TRUE(WriteRegString(*second, user_root, "A", "two", "2"));
  const auto third = open_hive(folder.host("h.reg"));
  EXPECT_EQ(text_of(*third, user_root, "A", "one"), "1");
  EXPECT_EQ(text_of(*third, user_root, "A", "two"), "2");
}

TEST(Hive, IsUnchangedWhereItCannotBeWritten) {
  const TemporaryFolder folder;
  folder.write("h.reg", "REGEDIT4\n[HKEY_CURRENT_USER\\A]\n\"v\"=\"1\"\n");
  const auto hive = open_hive(folder.host("h.reg"));
  folder.set_read_only("h.reg", true);
  EXPECT_THAT([&] { hive->write_text(user_root, "A", "v", "2"); }, ThrowsMessage<RuntimeError>(HasSubstr("h.reg")));
  EXPECT_EQ(text_of(*hive, user_root, "A", "v"), "1");
  EXPECT_THROW(hive->create_key(user_root, "B", ""), RuntimeError);
  EXPECT_FALSE(hive->key_exists(user_root, "B"));
  folder.set_read_only("h.reg", false);
  folder.write("h.reg", "damaged meanwhile");
  EXPECT_FALSE(WriteRegString(*hive, user_root, "A", "v", "2"));
  EXPECT_EQ(folder.read("h.reg"), "damaged meanwhile");
}

TEST(Hive, TellsWhetherItCouldBeWritten) {
  const TemporaryFolder folder;
  EXPECT_TRUE(open_hive(folder.host("new.reg"))->can_write(user_root, "Software"));
  EXPECT_FALSE(open_hive(folder.host("none/h.reg"))->can_write(user_root, "Software"));
  folder.write("h.reg", hive_text);
  const auto hive = open_hive(folder.host("h.reg"));
  EXPECT_TRUE(hive->can_write(user_root, "Software"));
  folder.set_read_only("h.reg", true);
  EXPECT_FALSE(hive->can_write(user_root, "Software"));
  folder.set_read_only("h.reg", false);
}

TEST(Hive, CleansUpAfterAProcessThatDiedWhileWriting) {
  const TemporaryFolder folder;
  constexpr const char* left_behind = "h.reg.writing-Ab12Cd";
  folder.write("h.reg", hive_text);
  folder.write(left_behind, "half");
  open_hive(folder.host("h.reg"));
  EXPECT_EQ(folder.file_count(), 2U) << "its process may be alive";
  const auto age = std::chrono::minutes(11);
  testing::set_age(folder.host(left_behind), age);
  open_hive(folder.host("h.reg"));
  EXPECT_EQ(folder.read("h.reg"), hive_text);
  EXPECT_EQ(folder.file_count(), 1U);
}

struct DamagedRow {
  std::string_view bytes;
  std::string_view line;
};

TEST(Hive, NamesTheLineThatIsDamaged) {
  using namespace std::string_view_literals;
  const DamagedRow rows[] = {
      {"", "line 1:"},
      {"Windows Registry Editor Version 5.00\r\n", "line 1:"},
      {"\xFF\xFEW\0i\0"sv, "line 1:"},
      {"REGEDIT4\nv=1\n", "line 2:"},
      {"REGEDIT4\n\"v\"=\"1\"\n", "line 2:"},  // before any key
      {"REGEDIT4\n\n[HKEY_CURRENT_USER\\A\n", "line 3:"},
      {"REGEDIT4\n[-HKEY_CURRENT_USER\\A]\n", "line 2:"},
      {"REGEDIT4\n[]\n", "line 2:"},
      {"REGEDIT4\n[A]\n\"v\"=\"C:\\x\"\n", "line 3:"},
      {"REGEDIT4\n[A]\n\"v\"=\"open\n", "line 3:"},
      {"REGEDIT4\n[A]\n\"v\"=\"a\" b\n", "line 3:"},
      {"REGEDIT4\n[A]\n\"v\"=-\n", "line 3:"},
      {"REGEDIT4\n[A]\n\"v\"=dword:123456789\n", "line 3:"},
      {"REGEDIT4\n[A]\n\"v\"=hex:0g\n", "line 3:"},
      {"REGEDIT4\n[A]\n\"v\"=hex(x):00\n", "line 3:"},
      {"REGEDIT4\n[A]\n\"v\"=hex:00,\\\n", "line 3:"},
      {"REGEDIT4\n[A]\n\"v\"\n", "line 3:"},
      {"REGEDIT4\n[A]\n\"v\"=\"a\0b\"\n"sv, "line 3:"},
  };
  const TemporaryFolder folder;
  for (const DamagedRow& row : rows) {
    folder.write("d.reg", row.bytes);
    try {
      open_hive(folder.host("d.reg"));
      ADD_FAILURE() << "opened: " << row.bytes;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.number(), 321);
      EXPECT_NE(std::string_view(error.what()).find(row.line), std::string_view::npos) << error.what();
      EXPECT_NE(std::string_view(error.what()).find("d.reg"), std::string_view::npos) << error.what();
    }
    EXPECT_EQ(folder.read("d.reg"), row.bytes);
  }
  EXPECT_THROW(open_hive(folder.host(".")), RuntimeError);
}

}  // namespace
}  // namespace support
