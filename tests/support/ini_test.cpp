#include "support/ini.h"

#include <gtest/gtest.h>

#include "support/hive_registry.h"
#include "support/host.h"
#include "tests/support/ini_table.h"
#include "tests/support/temporary_folder.h"

namespace support {
namespace {

using testing::Ask;
using testing::IniReadRow;
using testing::IniWriteRow;
using testing::TemporaryFolder;
using namespace std::string_view_literals;

std::string answer_to(const IniReadRow& row, const std::string& file) {
  const IniFiles& ini = host_ini_files();
  switch (row.ask) {
    case Ask::Keys:
      return ini.keys(file, row.section, row.fallback, row.size);
    case Ask::Sections:
      return ini.sections(file, row.fallback, row.size);
    case Ask::Value:
      break;
  }
  return ini.value(file, row.section, row.key, row.fallback, row.size);
}

TEST(IniFiles, AnswerAsTheProfileCallsDo) {
  const TemporaryFolder folder;
  int number = 0;
  for (const IniReadRow& row : testing::ini_read_rows()) {
    const std::string file = folder.write("r" + std::to_string(++number) + ".ini", row.file);
    EXPECT_EQ(answer_to(row, file), row.answer) << row.what;
  }
}

TEST(IniFiles, WriteAsTheProfileCallsDoOrRefuse) {
  const TemporaryFolder folder;
  int number = 0;
  for (const IniWriteRow& row : testing::ini_write_rows()) {
    const std::string name = "w" + std::to_string(++number) + ".ini";
    const std::string file = folder.write(name, row.before);
    EXPECT_EQ(host_ini_files().write(file, row.section, row.key, row.value), row.written) << row.what;
    EXPECT_EQ(folder.read(name), row.after) << row.what;
  }
  EXPECT_EQ(folder.file_count(), testing::ini_write_rows().size());
}

TEST(IniFiles, MakeAFileButNoFolder) {
  const TemporaryFolder folder;
  EXPECT_TRUE(host_ini_files().write(folder.windows("neu ä.ini"), "s", "k", "v"));
  EXPECT_EQ(folder.read("neu ä.ini"), "[s]\r\nk=v\r\n");
  EXPECT_FALSE(host_ini_files().write(folder.windows("none\\neu.ini"), "s", "k", "v"));
  EXPECT_FALSE(host_ini_files().write("", "s", "k", "v"));
}

TEST(IniFiles, SeeWhatAnotherProgramWrote) {
  const TemporaryFolder folder;
  const std::string file = folder.write("a.ini", "[a]\nk=1\n");
  EXPECT_EQ(host_ini_files().value(file, "a", "k", "", 10), "1");
  EXPECT_TRUE(host_ini_files().write(file, "a", "j", "2"));
  folder.write("a.ini", "[a]\nk=longer\n");
  EXPECT_EQ(host_ini_files().value(file, "a", "k", "", 10), "longer");
}

TEST(IniFiles, TakeMissingAndHugeFilesForEmptyOnes) {
  const TemporaryFolder folder;
  const std::string huge = folder.write("huge.ini", "[a]\nk=1\n" + std::string(std::size_t{5} << 20U, 'x'));
  for (const std::string& file : {huge, folder.windows("none.ini"), folder.windows(), std::string()}) {
    const IniFiles& ini = host_ini_files();
    EXPECT_EQ(ini.value(file, "a", "k", "D", 10), "D") << file;
    EXPECT_EQ(ini.keys(file, "a", "D", 10), "D") << file;
    EXPECT_EQ(ini.sections(file, "D", 10), "") << file;
  }
  EXPECT_FALSE(host_ini_files().write(huge, "a", "k", "2"));
}

TEST(IniFiles, LeaveAReadOnlyFileAlone) {
  const TemporaryFolder folder;
  const std::string file = folder.write("ro.ini", "[a]\nk=1\n");
  folder.set_read_only("ro.ini", true);
  EXPECT_FALSE(host_ini_files().write(file, "a", "k", "2"));
  EXPECT_EQ(folder.read("ro.ini"), "[a]\nk=1\n");
  folder.set_read_only("ro.ini", false);
}

struct QueryRow {
  IniQuery query;
  std::string_view answer;
};

TEST(ReadIni, GivesPiecesAndLists) {
  const TemporaryFolder folder;
  const std::string file =
      folder.write("x.ini", "[s]\nk=a|b||d\nj=\"q|r\"\nKEYS=no\nlong=" + std::string(5000, 'x') + "\n[t]\n[u]\n");
  const auto hive = open_hive(folder.host("none.reg"));
  const QueryRow rows[] = {
      {{"s", "k", "", file}, "a|b||d"},
      {{"s", "none", "D|E", file}, "D|E"},
      {{"s", "k", "", file, 0, "|"}, "a"},
      {{"s", "k", "", file, 2, "|"}, ""},
      {{"s", "k", "", file, 3, "|"}, "d"},
      {{"s", "k", "", file, 4, "|"}, ""},
      {{"s", "k", "", file, -2, "|"}, ""},
      {{"s", "none", "D|E", file, 1, "|"}, "E"},
      {{"s", "j", "", file, 1, "|"}, "r"},
      {{"s", "KEYS", "", file}, "k\0j\0KEYS\0long\0"sv},
      {{"s", "KEYS", "", file, 1}, "j"},
      {{"s", "KEYS", "", file, 1, "\0"sv}, "j"},
      {{"s", "KEYS", "", file, -1, "|"}, "k|j|KEYS|long"},
      {{"s", "KEYS", "", file, 3, "|"}, "long"},
      {{"none", "KEYS", "D", file, -1, "|"}, "D"},
      {{"", "SECTIONS", "", file}, "s\0t\0u\0"sv},
      {{"", "SECTIONS", "", file, -1, "^"}, "s^t^u"},
      {{"", "SECTIONS", "", file, 2, "\0"sv}, "u"},
      {{"s", "keys", "D", file}, "no"},
  };
  for (const QueryRow& row : rows) {
    EXPECT_EQ(ReadIni(host_ini_files(), *hive, "Software", row.query), row.answer)
        << row.query.section << "." << row.query.key << " " << row.query.index;
  }
  EXPECT_EQ(ReadIni(host_ini_files(), *hive, "Software", {"s", "long", "", file}).size(), 4095U);
}

TEST(ReadIni, GivesSeveralValuesAsItGivesEach) {
  const TemporaryFolder folder;
  const std::string file =
      folder.write("x.ini", "[s]\nk=a|b\nj = \"q\" \nä=ß\nlong=" + std::string(5000, 'x') + "\n[t]\nk=2\n");
  const auto hive = open_hive(folder.host("none.reg"));
  const std::string keys[] = {"K", "j", "none", "long", "ä", "k"};
  for (const std::string& read : {file, folder.windows("none.ini")}) {
    const auto values = ReadIniValues(host_ini_files(), read, "s", keys);
    ASSERT_EQ(values.size(), std::size(keys));
    for (std::size_t n = 0; n < values.size(); ++n)
      EXPECT_EQ(values[n], ReadIni(host_ini_files(), *hive, "Software", {"s", keys[n], "", read})) << keys[n];
  }
  EXPECT_TRUE(ReadIniValues(host_ini_files(), file, "s", {}).empty());
}

TEST(ReadIni, ReadsSetupIniInTheInstallationsFolderWithoutAFile) {
  const TemporaryFolder folder;
  folder.write("setup.ini", "[setup]\nfont=Tahoma\n");
  const auto hive = open_hive(folder.host("h.reg"));
  WriteRegString(*hive, RootKey::LocalMachine, "SOFTWARE\\X", "Path", " " + folder.windows() + " ");
  EXPECT_EQ(ReadIni(host_ini_files(), *hive, "SOFTWARE\\X", {"setup", "font", "D"}), "Tahoma");
  EXPECT_EQ(ReadIni(host_ini_files(), *hive, "SOFTWARE\\Y", {"setup", "font", "D"}), "D");
}

}  // namespace
}  // namespace support
