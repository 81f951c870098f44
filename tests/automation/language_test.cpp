#include "support/language.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/automation/registration.h"
#include "tests/automation/server_library.h"

namespace automation_test {
namespace {

TEST(LanguageClass, GivesTheTextsOfTheComponentAndIsReleased) {
  const Registration registration({language_class});
  const long before = living_objects();
  const std::size_t start = released_objects().size();
  {
    const auto language = support::create_language(language_class, "C:\\nowhere");
    ASSERT_NE(language, nullptr);
    EXPECT_EQ(language->loadres(606), "Größe 606|Ein Tipp €");
    EXPECT_EQ(language->loadres(0), "") << "an empty answer";
    EXPECT_EQ(language->loadres(-1), "") << "a component that raises";
    EXPECT_EQ(living_objects(), before + 1);
  }
  EXPECT_EQ(released_objects().substr(start), L"Language ");
}

TEST(LanguageClass, GivesWayToTheTextTableWhereItIsMissing) {
  EXPECT_EQ(support::create_installed_language(language_class), nullptr);
  const auto table = support::create_language("de.LanguageDLL", SOURCE_DIR);
  ASSERT_NE(table, nullptr);
  EXPECT_NE(table->loadres(606), "");
}

TEST(LanguageClass, GivesWayToTheTextTableWhereItHasNoTexts) {
  const Registration registration({newer_engine});
  EXPECT_EQ(support::create_installed_language(newer_engine), nullptr) << "an object without loadres";
}

}  // namespace
}  // namespace automation_test
