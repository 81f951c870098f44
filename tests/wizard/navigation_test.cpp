// The list of pages, the three buttons, and what is shown when a page appears.
#include "tests/wizard/wizard_test.h"
#include "wizard/page_list.h"
#include "wizard/step_list.h"

namespace wizard::testing {
namespace {

class Navigation : public WizardTest {
 protected:
  void configure(const std::string& list) { write("pelmar.ini", "[setup]\ndisplay=" + list + "\n"); }
};

TEST_F(Navigation, WalksTheListOfTheEditionOrTheConfiguredOne) {
  EXPECT_THAT(start().StepNames(),
              ElementsAre("INtro", "Maßeinheit", "Patdat", "Insulin", "Medikamente", "Therapie_bz", "Therapie_bp",
                          "pics", "eingabe", "sidebar", "tip_navbar", "tip_splits", "tip_stats", "Fertig"));
  EXPECT_THAT(start("vantrix Pro").StepNames(),
              ElementsAre("INtro", "netpath", "Maßeinheit", "pics", "sidebar", "start", "tip_navbar", "tip_splits",
                          "tip_stats", "Fertig"));
  configure("INtro|Maßeinheit|Fertig");
  EXPECT_THAT(start().StepNames(), ElementsAre("INtro", "Maßeinheit", "Fertig"));
}

TEST_F(Navigation, ShowsOnePageWithItsPictureButtonsAndProgress) {
  configure("INtro|Maßeinheit|Insulin|Medikamente|eingabe|Quatsch|Ende");
  start();
  struct Case {
    const char* page;
    const char* picture;
  };
  for (const Case& row : {Case{"INtro", "105"}, Case{"Maßeinheit", "104"}, Case{"Insulin", "101"},
                          Case{"Medikamente", "102"}, Case{"eingabe", "103"}, Case{"Quatsch", "105"}}) {
    EXPECT_EQ(wizard().StepName(), row.page);
    EXPECT_EQ(control("Image1").picture(), row.picture) << row.page;
    EXPECT_EQ(control("Command1", 1).enabled(), wizard().CurrentStep() != 0);
    EXPECT_EQ(control("pbar").value(), wizard().CurrentStep());
    EXPECT_EQ(caption("Command1", 0), "T905");
    int shown = 0;
    for (const form::Control* page : wizard().form().array("contstep")) shown += page->visible();
    EXPECT_EQ(shown, row.page == std::string("Quatsch") ? 0 : 1);
    next();
  }
  EXPECT_EQ(wizard().StepName(), "Fertig");
  EXPECT_EQ(caption("Command1", 0), "T908");
  EXPECT_TRUE(control("contstep", page_index(summary_page)).visible());
  EXPECT_EQ(control("pbar").maximum(), 6);
  back();
  EXPECT_EQ(caption("Command1", 0), "T905");
}

TEST_F(Navigation, PassesOverNamesWithAHyphenBothWays) {
  configure("INtro|-Patdat|Insulin-|Maßeinheit|pics-|Fertig");
  start();
  next();
  EXPECT_EQ(wizard().StepName(), "Maßeinheit");
  back();
  EXPECT_EQ(wizard().StepName(), "INtro");
  back();
  EXPECT_EQ(wizard().CurrentStep(), 0);
  next();
  next();
  EXPECT_EQ(wizard().StepName(), "Fertig") << "a page of charts that was configured away is passed over too";
}

/// Steps that are skipped do not count, also if they come and go while the wizard runs.
TEST_F(Navigation, SaysWhereTheUserIs) {
  texts->given = {{4920, "%1/%2 %3"}, {4704, "Daten"}};
  configure("INtro|Patdat|-eingabe|Insulin|pics|Ende");
  start();
  next();
  EXPECT_EQ(caption("lstSteps"), "2/5 Daten");
  EXPECT_EQ(control("lstSteps").text(), "Daten");
  enter_name();
  select("cbTherapie", 5);  // without insulin
  EXPECT_EQ(caption("lstSteps"), "2/4 Daten");
  next();
  EXPECT_EQ(caption("lstSteps"), "3/4 T4709") << "the page of charts, which is marked as built now";
  next();
  EXPECT_EQ(caption("lstSteps"), "4/4 T4718");
}

TEST_F(Navigation, PassesOverAllTipsInOneClick) {
  struct Case {
    const char *list, *behind;
  };
  for (const Case& row : {Case{"tip_navbar|tip_splits|tip_stats|Fertig", "Fertig"},
                          Case{"tip_stats|-pics|eingabe|tip_navbar|Ende", "eingabe"},
                          Case{"tip_splits|tip_navbar|tip_stats", "Fertig"}}) {
    configure(row.list);
    start();
    for (const form::Control* button : wizard().form().array("cmdSkipTips"))
      if (button->parent()->visible()) wizard().click("cmdSkipTips", button->index());
    EXPECT_EQ(wizard().StepName(), row.behind) << row.list;
    EXPECT_EQ(wizard().state(), frmAssistantFirstSteps::State::Running);
  }
}

TEST_F(Navigation, StaysOnAPageThatRefuses) {
  configure("Patdat|Insulin-|Maßeinheit|Fertig");
  start();
  next();
  EXPECT_EQ(wizard().CurrentStep(), 0);
  EXPECT_EQ(user.log.back(), "message T607 4112 T4650");
  EXPECT_EQ(wizard().form().focus(), &control("txtFirstName"));
  enter_name("Max", " ");
  next();
  EXPECT_EQ(user.log.back(), "message T606 4112 T4650");
  EXPECT_EQ(wizard().form().focus(), &control("txtName"));
  enter_name();
  next();
  EXPECT_EQ(wizard().StepName(), "Maßeinheit");
}

TEST_F(Navigation, StartsTheFinishFromTheLastPageWithoutACheck) {
  configure("INtro|Patdat");
  start();
  next();
  EXPECT_EQ(wizard().StepName(), "Fertig");
  next();
  EXPECT_EQ(wizard().state(), frmAssistantFirstSteps::State::Finished);
  EXPECT_EQ(wizard().CurrentStep(), wizard().LastStep() + 1);
  const auto files = everything();
  next();
  back();
  cancel();
  EXPECT_EQ(everything(), files) << "nothing happens after the end";
}

TEST_F(Navigation, CancelAsksOnEveryPageAndLeavesEverythingAsItWas) {
  write("home.ini", "[setup]\nhomepage=h\n[h]\nCHART1=0|0|day|1\n");
  write("pelmar.ini", "[CHARTS]\nday=1^2\nweek=1^2\n");
  write("schemes.txt", "[a]\nDesc=A\n[b]\nDesc=B\n");
  const std::string database = known_database("patients\\Muster_Max.das");
  const auto before = everything();
  int last = 1;
  for (int page = 0; page <= last; ++page) {
    start("vantrix|Muster_Max.das");
    last = wizard().LastStep();
    choose("optBGUnit", 1);
    type("txtName", "Anders");
    while (wizard().CurrentStep() < page) next();
    if (wizard().StepName() == "pics") tick(1);
    user.answers = {7, 6};
    cancel();
    EXPECT_EQ(wizard().state(), frmAssistantFirstSteps::State::Running);
    EXPECT_EQ(wizard().CurrentStep(), page);
    EXPECT_EQ(text("txtName"), "Anders");
    cancel();
    EXPECT_EQ(user.log.back(), "message T693 4100 T4650");
    EXPECT_EQ(wizard().state(), frmAssistantFirstSteps::State::Cancelled);
    EXPECT_EQ(everything(), before) << "page " << page;
  }
}

TEST(AStepList, FindsOffersAndLeavesOutByTheFirstCharacters) {
  StepList steps;
  steps.choose("INtro|Insulin-|medikamente|Fertig");
  EXPECT_TRUE(steps.offers("INtro"));
  for (const char* page : {"Insulin", "pics"}) EXPECT_FALSE(steps.offers(page)) << page;
  steps.offer("Insulin", true);
  steps.offer("Medikamente", false);
  steps.offer("PatDat", false);
  EXPECT_THAT(steps.names(), ElementsAre("INtro", "Insulin", "Medikamente-", "Fertig"));
  steps.mark_built(1);
  steps.forward();
  EXPECT_EQ(steps.name_at(steps.current()), "Insulin-") << "built, not left out";
  steps.forward();
  EXPECT_EQ(steps.current(), 3);
  steps.forward();
  EXPECT_EQ(steps.name_at(steps.current()), "");
}

}  // namespace
}  // namespace wizard::testing
