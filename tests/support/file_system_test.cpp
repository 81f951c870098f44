#include "support/file_system.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <filesystem>

#include "support/abandoned_files.h"
#include "support/error.h"
#include "support/host_file.h"
#include "support/host_path.h"
#include "support/host_stream.h"
#include "support/windows_path.h"
#include "tests/support/file_age.h"
#include "tests/support/temporary_folder.h"

namespace support {
namespace {

using testing::set_age;
using testing::TemporaryFolder;

TEST(FileSystem, FindsNamesWithoutRegardToCase) {
  const TemporaryFolder folder;
  FileSystem& files = host_file_system();
  ASSERT_TRUE(files.create_folder(folder.windows("Größe\\Unter")));
  folder.write("Größe/Unter/Datei.ini", "abc");
  EXPECT_TRUE(files.folder_exists(folder.windows("GRÖßE\\UNTER\\")));
  const std::string other_case = folder.windows("gRÖßE\\unter\\DATEI.INI");
  EXPECT_EQ(files.file_size(other_case), 3U);
  EXPECT_EQ(files.read(other_case, 3), "abc");
  EXPECT_EQ(files.read(other_case, 2), std::nullopt);
  EXPECT_EQ(read_host_file(files.host_path(other_case), 100), "abc");
  EXPECT_TRUE(files.remove(other_case));
  EXPECT_FALSE(files.remove(other_case));
  EXPECT_FALSE(files.file_size(folder.windows("Größe")));
}

TEST(FileSystem, TreatsPathsThatCannotBeAsMissing) {
  const TemporaryFolder folder;
  FileSystem& files = host_file_system();
  const std::string with_nul = folder.write("a", "x") + std::string("\0.ini", 5);
  for (const std::string& path : {std::string(), std::string("Q:\\no such drive\\a.ini"), with_nul}) {
    EXPECT_FALSE(files.file_size(path)) << path;
    EXPECT_FALSE(files.read(path, 100)) << path;
    EXPECT_FALSE(files.create_folder(path)) << path;
    EXPECT_FALSE(files.folder_exists(path)) << path;
    EXPECT_TRUE(files.files(path + "\\x", "*").empty()) << path;
    EXPECT_FALSE(files.rename_without_replacing(path, folder.windows("b"))) << path;
  }
  EXPECT_FALSE(files.create_folder(folder.windows("a\\below a file")));
}

TEST(FileSystem, TellsWhereCouldBeWrittenWithoutWriting) {
  const TemporaryFolder folder;
  const FileSystem& files = host_file_system();
  folder.write("a", "x");
  const std::string file = folder.windows("a");
  for (const char* name : {"", "new", "new\\below\\"}) {
    EXPECT_TRUE(files.can_create_in(folder.windows(name))) << name;
    EXPECT_GT(files.free_space(folder.windows(name)).value_or(0), 0U) << name;
  }
  for (const std::string& path : {file, file + "\\below", std::string("Q:\\no such drive")})
    EXPECT_FALSE(files.can_create_in(path)) << path;
  EXPECT_TRUE(files.can_write(file));
  folder.set_read_only("a", true);
  EXPECT_FALSE(files.can_write(file));
  folder.set_read_only("a", false);
  for (const char* name : {"", "new"}) EXPECT_FALSE(files.can_write(folder.windows(name))) << name;
  EXPECT_FALSE(files.folder_exists(folder.windows("new")));
}

TEST(FileSystem, NamesHostPathsInFull) {
  const FileSystem& files = host_file_system();
  const std::string here = files.windows_path(".");
  EXPECT_EQ(here.substr(1, 2), ":\\");
  EXPECT_TRUE(files.folder_exists(here));
  for (const char* path : {"a/../b.ini", "./b.ini", "b.ini"})
    EXPECT_EQ(files.windows_path(path), here + "\\b.ini") << path;
}

TEST(FileSystem, NeverReplacesByRenaming) {
  const TemporaryFolder folder;
  FileSystem& files = host_file_system();
  const std::string first = folder.write("first", "1");
  const std::string second = folder.write("second", "2");
  EXPECT_FALSE(files.rename_without_replacing(first, second));
  EXPECT_FALSE(files.rename_without_replacing(first, folder.windows("SECOND")));
  EXPECT_EQ(folder.read("second"), "2");
  EXPECT_TRUE(files.rename_without_replacing(first, folder.windows("third")));
  EXPECT_EQ(folder.read("third"), "1");
  EXPECT_FALSE(folder.read("first"));
}

TEST(FileSystem, ListsFilesByPattern) {
  const TemporaryFolder folder;
  FileSystem& files = host_file_system();
  for (const char* name : {"b.tb", "A.TB", "c.mnu", "d.tbx", "ä.tb"}) folder.write(name, "");
  files.create_folder(folder.windows("folder.tb"));
  EXPECT_EQ(files.files(folder.windows(), "*.tb"), (std::vector<std::string>{"A.TB", "b.tb", "ä.tb"}));
  EXPECT_EQ(files.files(folder.windows("none"), "*").size(), 0U);
}

struct PatternRow {
  std::string_view name;
  std::string_view pattern;
  bool matches;
};

TEST(MatchesPattern, TakesStarsAndQuestionMarks) {
  const PatternRow rows[] = {
      {"a.tb", "*.tb", true},     {"a.tbx", "*.tb", false}, {"plain", "*.*", true}, {"Ä.txt", "?.TXT", true},
      {"ab.txt", "?.txt", false}, {"aXbXc", "a*b*c", true}, {"abc", "a*d", false},  {"", "*", true},
      {"", "?", false},           {"abcbc", "*bc", true},   {"a", "a***", true},    {"*", "?", true},
  };
  for (const PatternRow& row : rows) EXPECT_EQ(matches_pattern(row.name, row.pattern), row.matches) << row.name;
  EXPECT_FALSE(matches_pattern(std::string(5000, 'a'), "*a*a*a*a*a*a*a*a*b"));  // must return at once
}

TEST(FileTest, CountsAnEmptyFileAsMissing) {
  const TemporaryFolder folder;
  EXPECT_TRUE(file_test(host_file_system(), folder.write("one", "1")));
  EXPECT_FALSE(file_test(host_file_system(), folder.write("empty", "")));
  EXPECT_FALSE(file_test(host_file_system(), folder.windows("none")));
  EXPECT_FALSE(file_test(host_file_system(), folder.windows()));
}

TEST(ReplaceHostFile, ReplacesInOneStepOrLeavesTheFile) {
  const TemporaryFolder folder;
  replace_host_file(folder.host("ä.txt"), "first");
  replace_host_file(folder.host("ä.txt"), "second");
  EXPECT_EQ(folder.read("ä.txt"), "second");
  EXPECT_EQ(folder.file_count(), 1U);
  folder.set_read_only("ä.txt", true);
  EXPECT_THROW(replace_host_file(folder.host("ä.txt"), "third"), RuntimeError);
  EXPECT_EQ(folder.read("ä.txt"), "second");
  EXPECT_EQ(folder.file_count(), 1U);
  folder.set_read_only("ä.txt", false);
  EXPECT_THROW(replace_host_file(folder.host("none/a.txt"), "x"), RuntimeError);
}

TEST(AbandonedFiles, AreRemovedWhereTheyAreSurelyOursAndOld) {
  const TemporaryFolder folder;
  constexpr const char* abandoned[] = {"a.das.creating-0a1b2c3d", "a.das.creating-0a1b2c3d-journal"};
  constexpr const char* kept[] = {"a.das",
                                  "a.das.20240517",
                                  "a.das.creating-",
                                  "a.das.creating-my.copy",
                                  "b.das.creating-0a1b2c3d",
                                  "a.das.writing-Ab12-Z"};
  constexpr const char* young = "a.das.creating-ffffffff";
  const auto write_old = [&](const char* name) {
    folder.write(name, "x");
    const auto age = std::chrono::minutes(11);
    set_age(folder.host(name), age);
  };
  for (const char* name : abandoned) write_old(name);
  for (const char* name : kept) write_old(name);
  folder.write(young, "x");
  remove_abandoned_files(folder.host("a.das"), new_database_mark);
  for (const char* name : abandoned) EXPECT_FALSE(folder.read(name)) << name;
  for (const char* name : kept) EXPECT_TRUE(folder.read(name)) << name;
  EXPECT_TRUE(folder.read(young));
  remove_abandoned_files(folder.host("none/a.das"), new_database_mark);
  write_old("gone.ini.writing-1");
  remove_abandoned_files(folder.host("gone.ini"), replacement_mark);
  EXPECT_TRUE(folder.read("gone.ini.writing-1")) << "all that is left of a file that the system lost";
  folder.write("gone.ini", "");
  remove_abandoned_files(folder.host("gone.ini"), replacement_mark);
  EXPECT_FALSE(folder.read("gone.ini.writing-1"));
}

TEST(AbandonedFolders, AreRemovedWhereTheyAreSurelyOursAndOld) {
  const TemporaryFolder folder;
  const auto grow_old = [&](const std::string& name) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.host(name)))
      set_age(host_path_of(entry.path()), std::chrono::minutes(11));
    set_age(folder.host(name), std::chrono::minutes(11));
  };
  const auto fill = [&](const std::string& name) {
    NewHostFolder made(folder.host(name));
    EXPECT_TRUE(made);
    folder.write(name + "/t.csv", "x");
  };
  const std::string kept[] = {"out", "out.exporting-", "out.exporting-my.copy", "other.exporting-0a1b2c3d"};
  for (const std::string& name : kept) fill(name);
  for (const std::string name : {"out.exporting-0000000a", "out.exporting-0000000b", "out.exporting-0000000c"})
    fill(name);
  std::filesystem::create_directory(folder.host("out.exporting-0000000b/folder"));
  for (const auto& entry : std::filesystem::directory_iterator(folder.host(""))) {
    grow_old(entry.path().filename().string());
  }
  folder.write("out.exporting-0000000c/young.csv", "x");
  const auto is_there = [&](const std::string& name) { return std::filesystem::exists(folder.host(name)); };
  {
    NewHostFolder used(folder.host("out.exporting-0000000d"));
    grow_old("out.exporting-0000000d");
    remove_abandoned_folders(folder.host("out"), export_mark);
    EXPECT_TRUE(is_there("out.exporting-0000000d"));
  }
  for (const std::string& name : kept) EXPECT_TRUE(is_there(name)) << name;
  EXPECT_FALSE(is_there("out.exporting-0000000a"));
  EXPECT_TRUE(is_there("out.exporting-0000000b/t.csv")) << "a folder in it is none of ours";
  EXPECT_TRUE(is_there("out.exporting-0000000c/t.csv")) << "it grows";
  remove_abandoned_folders(folder.host("out"), export_mark);
  EXPECT_FALSE(is_there("out.exporting-0000000d"));
}

TEST(HostStream, TakesNoPlaceThatIsTakenAndReadsFilesAlone) {
  const TemporaryFolder folder;
  HostFileWriter writer(folder.host("a.csv"));
  ASSERT_TRUE(writer.write("Zeile\n"));
  ASSERT_TRUE(writer.close());
  EXPECT_FALSE(writer.write("more"));
  EXPECT_FALSE(writer.close());
  EXPECT_FALSE(HostFileWriter(folder.host("a.csv")));
  EXPECT_FALSE(HostFileWriter(folder.host("none/a.csv")));
  EXPECT_EQ(folder.read("a.csv"), "Zeile\n");
  HostFileReader reader(folder.host("a.csv"));
  std::array<char, 4> part{};
  EXPECT_EQ(reader.read(part), 4U);
  EXPECT_EQ(reader.read(part), 2U);
  EXPECT_EQ(reader.read(part), 0U);
  EXPECT_FALSE(HostFileReader(folder.host("b.csv")));
  EXPECT_FALSE(HostFileReader(folder.host("")));
  EXPECT_FALSE(NewHostFolder(folder.host("a.csv")));
  NewHostFolder made(folder.host("new")), other(folder.host("second"));
  ASSERT_TRUE(made && other);
  folder.write("new/t.csv", "x");
  EXPECT_FALSE(is_host_folder_unused(folder.host("new")));
  EXPECT_TRUE(made.take_name(folder.host("named")));
  EXPECT_EQ(folder.read("named/t.csv"), "x");
  EXPECT_FALSE(other.take_name(folder.host("named")));
  EXPECT_EQ(folder.read("named/t.csv"), "x");
}

TEST(VirtualStore, HasATwinOfAFolderOnlyWhereFilesLieInIt) {
  const TemporaryFolder local;
  const FileSystem& files = host_file_system();
  const auto twin = [&](std::string_view folder) { return virtual_store_twin(files, local.windows(), folder); };
  host_file_system().create_folder(local.windows() + "\\VirtualStore\\Program Files\\Diary");
  host_file_system().create_folder(local.windows() + "\\VirtualStore\\Program Files\\Other");
  local.write("VirtualStore/Program Files/Diary/home.ini", "x");
  EXPECT_EQ(twin("C:\\Program Files\\Diary\\"), local.windows() + "\\VirtualStore\\Program Files\\Diary\\");
  for (const std::string_view none : {"C:\\Program Files\\Other", "C:\\none", "\\\\server\\Program Files\\Diary", ""})
    EXPECT_EQ(twin(none), "") << none;
  EXPECT_EQ(virtual_store_twin(files, "", "C:\\Program Files\\Diary"), "");
}

}  // namespace
}  // namespace support
