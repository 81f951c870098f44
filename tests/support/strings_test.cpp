#include <gtest/gtest.h>

#include "support/error.h"
#include "support/host.h"
#include "support/ini.h"
#include "support/text.h"
#include "support/windows_path.h"
#include "tests/support/temporary_folder.h"

namespace support {
namespace {

using namespace std::string_view_literals;
using Texts = std::vector<std::string>;

TEST(Trim, DropsBlanksAndCodesBelowTwenty) {
  const std::pair<std::string_view, std::string_view> rows[] = {
      {" a b ", "a b"}, {"\x13 a\t\r\n", "a"}, {"\x19"sv, "\x19"},   {"\x14 a\x1F", "\x14 a\x1F"},
      {"\0abc"sv, ""},  {"a\0"sv, "a"},        {"a\0b"sv, "a\0b"sv}, {"", ""},
      {" \t ", ""},     {" ä ", "ä"},
  };
  for (const auto& [text, trimmed] : rows) {
    EXPECT_EQ(trim(text), trimmed);
    EXPECT_EQ(current_procedure_label(), "code!trim");
    EXPECT_EQ(vtrim(text), trimmed);
    EXPECT_EQ(current_procedure_label(), "registry!vtrim");
  }
}

struct SplitRow {
  std::string_view text;
  std::string_view delimiter;
  int upper_index;
  Texts pieces;
};

TEST(Split, GivesTheUpperIndex) {
  const SplitRow rows[] = {
      {"a||b", "|", 2, {"a", "", "b"}}, {"a|", "|", 0, {"a"}},         {"|", "|", 0, {""}},   {"a", "|", 0, {"a"}},
      {"aXbxc", "x", 1, {"aXb", "c"}},  {"a::b", "::", 1, {"a", "b"}}, {"ab", "", 0, {"ab"}}, {"", "|", -1, {"before"}},
  };
  for (const SplitRow& row : rows) {
    Texts pieces = {"before"};
    EXPECT_EQ(Split(row.text, pieces, row.delimiter), row.upper_index) << row.text;
    EXPECT_EQ(pieces, row.pieces) << row.text;
    EXPECT_EQ(current_procedure_label(), "code! Split");
  }
  Texts many;
  EXPECT_EQ(Split(std::string(40000, '|'), many, "|"), 32767);
}

TEST(RemoveSlashes, ReducesRunsAndKeepsANetworkPath) {
  const std::pair<std::string, std::string> rows[] = {
      {R"(C:\a\\b\\\c)", R"(C:\a\b\c)"},
      {R"(\\server\\share\a)", R"(\\server\share\a)"},
      {R"(\a)", R"(\\a)"},
      {"", ""},
      {R"(a\\)", R"(a\)"},
      {std::string(1 << 20, '\\'), R"(\\)"},
  };
  for (const auto& [given, repaired] : rows) {
    std::string path = given;
    RemoveSlashes(path);
    EXPECT_EQ(path, repaired);
  }
}

struct ReplaceRow {
  std::string text;
  std::string_view wanted;
  std::string_view replacement;
  int count;
  std::string result;
};

TEST(Replace, SearchesFromTheStartIgnoringCaseUntilNoneIsLeft) {
  const ReplaceRow rows[] = {
      {"Llabel", "l", "", 3, "abe"},
      {"aÄb", "ä", "ae", 1, "aaeb"},
      {R"(a\nb\Nc)", "\\n", "\r\n", 2, "a\r\nb\r\nc"},
      {R"(a\\\\b)", R"(\\)", R"(\)", 3, R"(a\b)"},
      {"aab", "ab", "b", 2, "b"},       // the rest of one occurrence forms the next
      {"abab", "ab", "ba", 3, "bbaa"},  // and so does a replacement of the same length
      {"abc", "b", "xBx", 0, "abc"},    // replacing would never end
      {"abc", "", "x", 0, "abc"},
      {"", "a", "b", 0, ""},
  };
  for (const ReplaceRow& row : rows) {
    std::string text = row.text;
    EXPECT_EQ(replace(text, row.wanted, row.replacement), row.count) << row.text;
    EXPECT_EQ(text, row.result);
  }
  std::string breeding = "0000111111";
  replace(breeding, "0011", "111000");  // would never end without the limit
  EXPECT_LT(breeding.size(), 100U);
  std::string many(100000, 'a');
  EXPECT_EQ(replace(many, "A", "bc"), 32767);
  EXPECT_EQ(many.size(), 200000U);
}

struct PathRow {
  std::string_view path;
  std::string_view drive;
  std::string_view folder;
  std::string_view name;
  std::string_view shortened;
};

TEST(ExtractFromPath, GivesTheParts) {
  const PathRow rows[] = {
      {R"(C:\a\b\c\d.txt)", R"(C:\)", R"(C:\a\b\c\)", "d.txt", R"(C:\a\..\..\d.txt)"},
      {R"(C:\a\d.txt)", R"(C:\)", R"(C:\a\)", "d.txt", R"(C:\a\d.txt)"},
      {R"(\\server\share\d.txt)", R"(\\)", R"(\\server\share\)", "d.txt", R"(\\server\..\d.txt)"},
      {R"(C:\d.txt)", R"(C:\)", R"(C:\)", "d.txt", R"(C:\d.txt)"},
      {"d.txt", R"(d.\)", "", "d.txt", "d.txt"},
      {"", "", "", "", ""},
  };
  for (const PathRow& row : rows) {
    EXPECT_EQ(ExtractFromPath(row.path, 0), row.drive) << row.path;
    EXPECT_EQ(ExtractFromPath(row.path, 1), row.folder) << row.path;
    EXPECT_EQ(ExtractFromPath(row.path, 2), row.name) << row.path;
    EXPECT_EQ(ExtractFromPath(row.path, 3), row.shortened) << row.path;
    EXPECT_EQ(ExtractFromPath(row.path, 4), "");
    EXPECT_EQ(ExtractFromPath(row.path, -1), "");
  }
}

TEST(GetSchemes, ListsTheSectionsThatFitTheBuffer) {
  const testing::TemporaryFolder folder;
  Texts names = {"before"};
  EXPECT_EQ(GetSchemes(host_ini_files(), host_file_system(), folder.windows("none.txt"), names), 0);
  EXPECT_EQ(GetSchemes(host_ini_files(), host_file_system(), folder.write("empty.txt", ""), names), 0);
  EXPECT_EQ(names, Texts{"before"});
  const std::string few = folder.write("few.txt",
                                       "[Standard]\nLongDesc=x\n[F\xFC"
                                       "r Kinder]\n");
  EXPECT_EQ(GetSchemes(host_ini_files(), host_file_system(), few, names), 2);
  EXPECT_EQ(names, (Texts{"Standard", "Für Kinder"}));
  std::string sections;
  for (int i = 0; i < 1000; ++i) sections += "[Schema" + std::to_string(1000 + i) + "]\r\n";
  const std::string many = folder.write("many.txt", sections);
  EXPECT_EQ(GetSchemes(host_ini_files(), host_file_system(), many, names), 372);  // of 11 characters, in 4093
  EXPECT_EQ(names.back(), "Schema1371");
}

}  // namespace
}  // namespace support
