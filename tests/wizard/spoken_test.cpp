// What a screen reader says about the controls.
#include "wizard/spoken.h"

#include "tests/wizard/wizard_test.h"

namespace wizard::testing {
namespace {

class SpokenTest : public WizardTest {
 protected:
  /// "name (description)"; "-" for a control that is not mentioned.
  std::string said(std::string_view name, int index = -1) {
    const Spoken spoken = wizard::spoken(wizard().form(), wizard().config(), control(name, index));
    if (spoken.silent) return "-";
    return spoken.name + (spoken.description.empty() ? "" : " (" + spoken.description + ")");
  }
};

TEST_F(SpokenTest, NamesFieldsByTheirLabelsAndUnitsAndOptionsWithTheirGroup) {
  texts->given = {{4740, "&Vorname *:"},  {4756, "Zielbereich &von:"},  {4746, "W&eiblich"},
                  {4745, "Geschlecht:"},  {4750, "Blutzucker in"},      {4751, "&mg/dl"},
                  {4713, "Seitenleiste"}, {4789, "&Ohne Seitenleiste"}, {905, "&Weiter >"}};
  start();
  struct Case {
    const char* control;
    int index;
    const char* said;
  };
  for (const auto& [control, index, expected] : {
           Case{"txtFirstName", -1, "Vorname (T4921)"},
           Case{"txtvorgabe", 0, "Zielbereich von, mg/dl"},
           Case{"txtvorgabe", 4, "T4761, T4765"},
           Case{"cbTherapie", -1, "T4749"},
           Case{"cbInsulin", 2, "T4768"},
           Case{"optGender", 0, "Weiblich (Geschlecht)"},
           Case{"optBGUnit", 0, "mg/dl (Blutzucker in)"},
           Case{"optShowSideBar", 0, "Ohne Seitenleiste (Seitenleiste)"},
           Case{"lblSummary", -1, "T4718"},
           Case{"contstep", 3, "T4704"},
           Case{"Image1", -1, "-"},
           Case{"imgCursorHand", -1, "-"},
           Case{"imgSidebar", -1, "T4788"},
           Case{"Command1", 0, "Weiter"},
           Case{"lblChartLimit", -1, "-"},
       }) {
    EXPECT_EQ(said(control, index), expected) << control;
  }
}

TEST_F(SpokenTest, SaysTheUnitThatIsChosenAndAWholeTitle) {
  start();
  choose("optBGUnit", 1);
  EXPECT_EQ(said("txtvorgabe", 2), "T4758, mmol/l");
  enter_name();
  go_to("Pics");
  control("optThumb", 0).set_caption("T…");
  EXPECT_EQ(said("optThumb", 0), control("optThumb", 0).tooltip());
}

TEST_F(SpokenTest, HasANameForWhateverIsNoDecoration) {
  start();
  for (const auto& each : wizard().form().controls()) {
    const Spoken spoken = wizard::spoken(wizard().form(), wizard().config(), *each);
    const bool says_something = each->kind() != form::Kind::Timer && each->kind() != form::Kind::Label &&
                                each->kind() != form::Kind::PictureBox && each->kind() != form::Kind::ChartOption &&
                                each->kind() != form::Kind::StepIndicator;
    if (!says_something || spoken.silent) continue;
    EXPECT_NE(spoken.name, "") << each->path();
  }
}

TEST_F(SpokenTest, ExplainsWhyAPageAsks) {
  start();
  for (const auto& each : wizard().form().controls()) {
    if (each->name() != "cmdWhy") continue;
    wizard().click("cmdWhy", each->index());
    EXPECT_THAT(user.log.back(), AllOf(::testing::StartsWith("message T493"), ::testing::EndsWith(" 65600 T4650")))
        << each->index();
  }
  EXPECT_EQ(user.log.size(), 7u) << "the window is made topmost, and six pages explain themselves";
}

}  // namespace
}  // namespace wizard::testing
