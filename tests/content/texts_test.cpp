// All languages have the same texts, and every number that the program uses has a text.
#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "support/encoding.h"
#include "tests/content/text_tables.h"
#include "wizard/form_layout.h"

namespace {

using content::Texts;

/// The language that the others are compared with.
constexpr const char* model = "de";
/// Buttons of every page: back, cancel, and next, which has another text on the last page.
constexpr long back = 906, cancel = 901, next = 905, finish = 908;

/// Every language that has a table.
const std::vector<std::string>& languages() {
  static const auto names = [] {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(SOURCE_DIR "/texts"))
      if (entry.path().extension() == ".ini") found.push_back(entry.path().stem().string());
    return found;
  }();
  return names;
}

std::vector<std::string> matches(const std::string& text, const char* pattern) {
  const std::regex expression(pattern);
  std::vector<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
    found.push_back(match->str());
  std::sort(found.begin(), found.end());
  return found;
}

/// The access key of a text in lower case; empty if it has none.
std::string access_key(const std::string& text) {
  const std::string caption = text.substr(0, text.find('|'));
  const auto mark = caption.find('&');
  return mark == std::string::npos ? "" : support::to_lower(support::first_characters(caption.substr(mark + 1), 1));
}

long tag_number(std::string_view tag) {
  long number = 0;
  if (tag.starts_with('L')) std::from_chars(tag.data() + 1, tag.data() + tag.size(), number);
  return number;
}

const form::Form& layout() {
  static const auto form = [] {
    auto built = std::make_unique<form::Form>();
    wizard::build_form(*built);
    return built;
  }();
  return *form;
}

bool lies_in(const form::Control& control, const form::Control& page) {
  for (const form::Control* parent = control.parent(); parent; parent = parent->parent())
    if (parent == &page) return true;
  return false;
}

std::string file_content(const std::filesystem::path& path) {
  std::ostringstream content;
  content << std::ifstream(path).rdbuf();
  return content.str();
}

/// The numbers that a source file uses as texts: in a call that takes one, in a template argument, and in constants.
std::set<long> numbers_named_in(const std::string& source) {
  static const std::regex places(
      R"((?:\btext|\bloadres|\bshow_text|\bmessage\w*|\brefuse|\bask\w*)\([^;"]*[,)]|\w<\d{3,4}>|\blong \w+(?:\[\])? = [^;]*;)");
  static const std::regex number(R"([^\w.](\d{3,4})(?![\w.]))");
  std::set<long> numbers;
  // No place goes beyond a semicolon. Few statements have a number, and a search for places takes long.
  for (std::size_t begin = 0, end = 0; begin < source.size(); begin = end) {
    end = std::min(source.find(';', begin), source.size() - 1) + 1;
    const std::string statement = source.substr(begin, end - begin);
    if (!std::regex_search(statement, number)) continue;
    for (std::sregex_iterator place(statement.begin(), statement.end(), places), last; place != last; ++place) {
      const std::string named = place->str();
      for (std::sregex_iterator match(named.begin(), named.end(), number); match != last; ++match)
        numbers.insert(std::stol((*match)[1]));
    }
  }
  return numbers;
}

TEST(Texts, HaveTheSameNumbersInEveryLanguage) {
  const Texts expected = content::texts(model);
  EXPECT_GT(expected.size(), 100u);
  EXPECT_GT(expected.begin()->first, 0) << "a key is no number";
  EXPECT_THAT(languages(), testing::IsSupersetOf({"de", "en"}));
  for (const std::string& language : languages()) {
    const Texts texts = content::texts(language);
    for (const auto& row : expected) EXPECT_TRUE(texts.contains(row.first)) << language << " lacks " << row.first;
    for (const auto& row : texts) EXPECT_TRUE(expected.contains(row.first)) << "only " << language << ": " << row.first;
  }
}

TEST(Texts, AreNeitherEmptyNorRepeatedNorOutsideTheCodePage) {
  for (const std::string& language : languages()) {
    const std::string table = content::source_text("texts/" + language + ".ini");
    EXPECT_TRUE(support::fits_cp1252(table)) << language;
    EXPECT_EQ(matches(table, R"(\n\d+=)").size(), content::texts(language).size()) << language << ": a number twice";
    for (const auto& [number, text] : content::texts(language)) {
      EXPECT_NE(text, "") << language << " " << number;
      EXPECT_NE(text.front(), '|') << language << " " << number;
    }
  }
}

TEST(Texts, AgreeInPlaceholdersLineBreaksTooltipsAndAccessKeys) {
  const Texts expected = content::texts(model);
  for (const std::string& language : languages()) {
    for (const auto& [number, text] : content::texts(language)) {
      const auto original = expected.find(number);
      if (original == expected.end()) continue;
      for (const char* mark : {"%[0-9]", "\\\\n", "\\|", "&"})
        EXPECT_EQ(matches(text, mark), matches(original->second, mark)) << language << " " << number;
      EXPECT_LE(matches(text, "&").size(), 1u) << language << " " << number;
      EXPECT_EQ(text.ends_with(':'), original->second.ends_with(':')) << language << " " << number;
    }
  }
}

TEST(Texts, CoverEveryTagOfTheForm) {
  std::set<long> tags{tag_number(layout().tag())};
  for (const auto& control : layout().controls())
    if (const long number = tag_number(control->tag())) tags.insert(number);
  EXPECT_GT(tags.size(), 50u);
  for (const std::string& language : languages()) {
    const Texts texts = content::texts(language);
    for (const long number : tags) EXPECT_TRUE(texts.contains(number)) << language << " " << number;
  }
}

TEST(Texts, CoverEveryNumberThatTheSourcesName) {
  std::set<long> known;
  for (const auto& row : content::texts(model)) known.insert(row.first);
  std::size_t found = 0;
  for (const char* room : {"wizard", "database", "apps"}) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SOURCE_DIR + std::string("/") + room)) {
      if (entry.path().extension() != ".cpp") continue;
      for (const long number : numbers_named_in(file_content(entry.path()))) {
        EXPECT_TRUE(known.contains(number)) << entry.path() << " names text " << number;
        ++found;
      }
    }
  }
  EXPECT_GT(found, 10u);
}

/// The texts of a page that may have an access key: those of the buttons first, then in the order of its controls.
std::vector<long> numbers_on(const form::Control& page) {
  std::vector<long> numbers{page.tag() == "Fertig" ? finish : next, back, cancel};
  for (const auto& control : layout().controls()) {
    const long number = tag_number(control->tag());
    if (number != 0 && lies_in(*control, page) && std::ranges::find(numbers, number) == numbers.end())
      numbers.push_back(number);
  }
  return numbers;
}

/// For each word of a caption, the first letter or digit that is free. Letters beyond A to Z are not on everybody's
/// keyboard.
std::string keys_to_choose_from(const std::string& text, const std::set<std::string>& taken) {
  std::string keys;
  bool found = false;
  for (const char c : support::to_lower(text.substr(0, text.find('|')))) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '&') continue;
    if (byte < 0x80 && std::isalnum(byte) == 0)
      found = false;
    else if (!found && byte < 0x80 && !taken.contains(std::string(1, c)))
      keys += c, found = true;
  }
  return keys;
}

TEST(Texts, GiveEachPageDistinctAccessKeysThatAreTheFirstFreeLetterOfAWord) {
  for (const std::string& language : languages()) {
    Texts texts = content::texts(language);
    for (const form::Control* page : layout().array("contstep")) {
      std::set<std::string> taken;
      for (const long number : numbers_on(*page)) {
        const std::string key = access_key(texts[number]);
        if (key.empty()) continue;
        EXPECT_THAT(keys_to_choose_from(texts[number], taken), testing::HasSubstr(key))
            << language << ", page " << page->tag() << ": " << texts[number];
        taken.insert(key);
      }
      EXPECT_GE(taken.size(), 3u) << "the buttons have theirs";
    }
  }
}

}  // namespace
