// Pages that may not be left, and runs that end without having written anything.
#include "tests/window/window_test.h"

namespace window_driver {
namespace {

using RefusalsTest = WindowTest;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct Refusal {
  std::string_view page, field, text, message;
};

/// Each field is corrected before the next row.
TEST_F(RefusalsTest, ARefusedPageSaysWhyAndShowsTheField) {
  start();
  enter_patient();
  for (const auto& [page, field, text, message] : {
           Refusal{"PatDat", "txtFirstName", "", "Vornamen"},
           Refusal{"PatDat", "txtName", " ", "Nachnamen"},
           Refusal{"Therapie_BZ", "txtvorgabe(0)", "200", "Zielbereich"},
           Refusal{"Therapie_BZ", "txtvorgabe(2)", "0", "Unterzuckerung"},
           Refusal{"Therapie_BZ", "txtvorgabe(3)", "80", "Überzuckerung"},
           Refusal{"Therapie_BZ", "txtvorgabe(1)", "viel", "Zahl"},
       }) {
    wizard().go_to(page);
    const std::string good = wizard().text(field);
    wizard().type(field, text);
    wizard().press("Command1(0)");
    EXPECT_THAT(wizard().message(), HasSubstr(message)) << field;
    wizard().answer(IDOK);
    EXPECT_EQ(wizard().page(), page);
    EXPECT_TRUE(wait_until([&] { return wizard().focus() == field; })) << field << ", not " << wizard().focus();
    wizard().type(field, good);
  }
  wizard().next();
  EXPECT_EQ(wizard().page(), "Therapie_BP");
}

TEST_F(RefusalsTest, BackAndNextOverAllPagesChangeNothing) {
  start();
  enter_patient();
  const auto before = demo_.everything();
  wizard().go_to("Fertig");
  const std::string summary = wizard().text("lblSummary");
  for (auto page = std::rbegin(standard_pages) + 1; page != std::rend(standard_pages); ++page) {
    wizard().back();
    EXPECT_EQ(wizard().page(), *page);
  }
  EXPECT_FALSE(wizard().is_enabled("Command1(1)"));
  wizard().go_to("Fertig");
  EXPECT_EQ(wizard().text("lblSummary"), summary);
  EXPECT_THAT(demo_.changed_since(before), IsEmpty());
}

TEST_F(RefusalsTest, CancelAsksOnEveryPageAndNoKeepsItAndYesLeavesAllAsItWas) {
  const auto before = demo_.everything();
  start();
  for (const std::string_view page : standard_pages) {
    if (page == "PatDat") enter_patient();
    wizard().go_to(page);
    ASSERT_EQ(wizard().page(), page);
    wizard().press("Command1(2)");
    EXPECT_THAT(wizard().message(), HasSubstr("abbrechen")) << page;
    wizard().answer(IDNO);
    EXPECT_EQ(wizard().page(), page);
  }
  wizard().press("Command1(2)");
  wizard().message();
  wizard().answer(IDYES);
  expect_end();
  EXPECT_THAT(demo_.changed_since(before), IsEmpty());
}

TEST_F(RefusalsTest, EscAndTheCrossOfTheFrameAreCancel) {
  const auto before = demo_.everything();
  start().go_to("PatDat");
  press_key(VK_ESCAPE);
  EXPECT_THAT(wizard().message(), HasSubstr("abbrechen"));
  wizard().answer(IDNO);
  PostMessageW(wizard().window(), WM_CLOSE, 0, 0);
  EXPECT_THAT(wizard().message(), HasSubstr("abbrechen"));
  wizard().answer(IDYES);
  expect_end();
  EXPECT_THAT(demo_.changed_since(before), IsEmpty());
}

}  // namespace
}  // namespace window_driver
