#include "support/language.h"

#include <gtest/gtest.h>

#include "support/file_system.h"
#include "tests/support/temporary_folder.h"

namespace support {
namespace {

class LanguageTest : public ::testing::Test {
 protected:
  LanguageTest() {
    host_file_system().create_folder(folder_.windows("texts"));
    folder_.write("texts/de.ini",
                  "[texts]\n606=Größe|Ein Tipp\n607=a\\nb\n608=\"so\" und \"so\"\nx=none\n609=\n[other]\n610=x");
    folder_.write("texts/bom.ini", "\xEF\xBB\xBF[texts]\n1=ü €\n");
    folder_.write("texts/old.ini", "[texts]\n1=\xFC\n");
    folder_.write("texts/empty.ini", "[texts]\n");
    folder_.write("outside.ini", "[texts]\n1=x\n");
  }

  std::string text(std::string_view class_name, long number) {
    const auto language = create_language(class_name, folder_.windows());
    return language ? language->loadres(number) : "no language";
  }

  testing::TemporaryFolder folder_;
};

TEST_F(LanguageTest, GivesTextsByNumber) {
  EXPECT_EQ(text("de.LanguageDLL", 606), "Größe|Ein Tipp");
  EXPECT_EQ(text("de.LanguageDLL", 607), "a\r\nb");
  EXPECT_EQ(text("de.LanguageDLL", 608), "\"so\" und \"so\"");
  EXPECT_EQ(text("de.LanguageDLL", 609), "");
  EXPECT_EQ(text("de.LanguageDLL", 610), "");
  EXPECT_EQ(text("bom.LanguageDLL", 1), "ü €");
  EXPECT_EQ(text("old.LanguageDLL", 1), "ü");
}

TEST_F(LanguageTest, IsGermanWithoutAName) {
  EXPECT_EQ(text(".LanguageDLL", 606), "Größe|Ein Tipp");
  EXPECT_EQ(text("", 606), "Größe|Ein Tipp");
}

TEST_F(LanguageTest, IsMissingWithoutATable) {
  for (const char* name : {"fr.LanguageDLL", "empty.LanguageDLL", "..\\outside.LanguageDLL", "../outside"}) {
    EXPECT_EQ(text(name, 1), "no language") << name;
  }
}

}  // namespace
}  // namespace support
