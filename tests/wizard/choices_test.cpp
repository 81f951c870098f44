// The pages of simple choices: the unit, the charts, the side bar, and the animated tips.
#include "support/user_locale.h"
#include "tests/wizard/wizard_test.h"
#include "wizard/glucose_unit.h"

namespace wizard::testing {
namespace {

TEST(GlucoseValues, AreConvertedWithTheTwoFactors) {
  struct Case {
    const char* text;
    GlucoseUnit to;
    const char* result;  ///< empty: no conversion
  };
  constexpr auto mg = GlucoseUnit::MgDl, mmol = GlucoseUnit::MmolL;
  for (const Case& row : {Case{"100", mmol, "5,6"}, Case{"5,6", mg, "101"}, Case{"90", mmol, "5"},
                          Case{"180", mmol, "10"}, Case{" 70 ", mmol, "3,9"}, Case{"0", mg, "0"}, Case{"abc", mmol, ""},
                          Case{"", mg, ""}, Case{"1e300", mg, ""}, Case{"40000", mg, ""}}) {
    EXPECT_EQ(converted(row.text, row.to).value_or(""), row.result) << row.text;
  }
  EXPECT_EQ(in_mg_dl("5,6", mmol), 101);
  EXPECT_EQ(in_mg_dl("100,5", mg), 100) << "halves to even";
  EXPECT_EQ(in_mg_dl("32767", mg), 32767);
  EXPECT_EQ(in_mg_dl("32768", mg), std::nullopt);
  EXPECT_EQ(in_mg_dl("x", mg), std::nullopt);
}

class Choices : public WizardTest {
 protected:
  std::vector<std::string> targets() {
    std::vector<std::string> found;
    for (int n = 0; n < 4; ++n) found.push_back(text("txtvorgabe", n) + " " + caption("lblUnit", n));
    return found;
  }
};

TEST_F(Choices, TheUnitRelabelsAndConvertsTheTargets) {
  start();
  const std::vector<std::string> as_preset{"70 mg/dl", "150 mg/dl", "50 mg/dl", "170 mg/dl"};
  EXPECT_EQ(targets(), as_preset);
  choose("optBGUnit", 0);
  EXPECT_EQ(targets(), as_preset) << "the unit already in force converts nothing";
  type("txtvorgabe", "viel", 3);
  choose("optBGUnit", 1);
  EXPECT_THAT(targets(), ElementsAre("3,9 mmol/l", "8,3 mmol/l", "2,8 mmol/l", "viel mmol/l"));
  choose("optBGUnit", 0);
  EXPECT_THAT(targets(), ElementsAre("70 mg/dl", "150 mg/dl", "50 mg/dl", "viel mg/dl"));
}

TEST_F(Choices, TargetsArePresetInTheUnitOfTheRegistry) {
  set_value(support::RootKey::CurrentUser, user_key, "BGUnit", "1");
  set_value(support::RootKey::CurrentUser, std::string(installation_key) + "\\PREFERENCES", "BGHypo", "60");
  set_value(support::RootKey::CurrentUser, std::string(installation_key) + "\\PREFERENCES", "BPSysUntil", "viel");
  start();
  EXPECT_EQ(control("optBGUnit", 1).value(), 1);
  EXPECT_THAT(targets(), ElementsAre("3,9 mmol/l", "8,3 mmol/l", "3,3 mmol/l", "9,4 mmol/l"));
  EXPECT_EQ(text("txtvorgabe", 5), "130");
}

TEST_F(Choices, EachTargetHasItsPreference) {
  const std::pair<const char*, const char*> preferences[] = {
      {"BGTargetFrom", "71"}, {"BGTargetUntil", "151"}, {"BGHypo", "51"},    {"BGHyper", "171"},
      {"BPSysFrom", "101"},   {"BPSysUntil", "131"},    {"BPDiaFrom", "61"}, {"BPDiaUntil", "81"}};
  for (const auto& [name, preferred] : preferences)
    set_value(support::RootKey::CurrentUser, std::string(installation_key) + "\\PREFERENCES", name, preferred);
  start();
  int field = 0;
  for (const auto& [name, preferred] : preferences) EXPECT_EQ(text("txtvorgabe", field++), preferred) << name;
}

TEST_F(Choices, OptionsArePresetFromTheRegistry) {
  struct Case {
    std::string key;
    const char* name;
    const char* stored;
    const char* options;
    int selected;
  };
  const std::string entry = std::string(user_key) + "\\DataEntry", profile{user_key};
  for (const Case& row :
       {Case{entry, "DefaultDataEntry", "", "optDataEntry", 0},
        Case{entry, "DefaultDataEntry", "EDIT_QUICKENTRY", "optDataEntry", 1},
        Case{entry, "DefaultDataEntry", "edit_log", "optDataEntry", 2},
        Case{entry, "DefaultDataEntry", "rubbish", "optDataEntry", 0},
        Case{profile, "RunOnStart", "", "optShowStart", 1}, Case{profile, "RunOnStart", "mnu_home", "optShowStart", 0},
        Case{profile, "RunOnStart", "mnu_last", "optShowStart", 2},
        Case{profile, "ShowOutlookbar", "", "optShowSideBar", 0},
        Case{profile, "ShowOutlookbar", "1", "optShowSideBar", 1},
        Case{profile, "OutlookStyle", "1", "optDisplayStyle", 1}, Case{profile, "BGUnit", "7", "optBGUnit", 0}}) {
    set_value(support::RootKey::CurrentUser, row.key, row.name, row.stored);
    start("vantrix");
    EXPECT_EQ(control(row.options, row.selected).value(), 1) << row.name << " " << row.stored;
  }
}

TEST_F(Choices, TheSideBarsPictureFollowsTheOption) {
  start();
  EXPECT_FALSE(control("imgSidebar").visible());
  EXPECT_EQ(control("imgSidebarMark").picture(), "") << "it would mark what is no side bar";
  choose("optShowSideBar", 1);
  EXPECT_TRUE(control("imgSidebar").visible());
  EXPECT_EQ(control("imgSidebarMark").picture(), "sidebar_mark");
  choose("optShowSideBar", 0);
  EXPECT_FALSE(control("imgSidebar").visible());
  EXPECT_EQ(control("imgSidebarMark").picture(), "") << "it would mark what is no side bar";
}

class Charts : public WizardTest {
 protected:
  Charts() {
    write("pelmar.ini",
          "[setup]\ndisplay=INtro|pics|Maßeinheit|Fertig\n[CHARTS]\nday=10^11\nweek=12\nbar=13^14\npie=15^16\nlong=17^"
          "18\n"
          "odd=x^\n");
    texts->given[10] = "&Tag";
    texts->given[17] = "Ein sehr langer Titel für ein Bild";
    write("pics\\thmb_ss_day.jpg", "jpeg");
    write("pics\\ss_day.jpg", "jpeg");
    write("pics\\ss_week.jpg", "");
  }
  std::vector<std::string> ticked() {
    std::vector<std::string> keys;
    for (const form::Control* option : wizard().form().array("optThumb"))
      if (option->value() == 1) keys.push_back(option->tag());
    return keys;
  }
};

TEST_F(Charts, AreBuiltOnceFromTheCatalogue) {
  start();
  EXPECT_EQ(wizard().form().array("optThumb").size(), 1U);
  EXPECT_EQ(caption("lblPics"), "0/4");
  next();
  EXPECT_THAT(wizard().StepNames(), ElementsAre("INtro", "pics-", "Maßeinheit", "Fertig"));
  ASSERT_EQ(wizard().form().array("optThumb").size(), 6U);
  EXPECT_EQ(caption("optThumb", 0), "Tag");
  EXPECT_EQ(control("optThumb", 0).picture(), path("pics\\thmb_ss_day.jpg"));
  EXPECT_EQ(caption("optThumb", 1), "T12");
  EXPECT_EQ(control("optThumb", 1).picture(), "");
  EXPECT_EQ(caption("optThumb", 4), "Ein sehr langer T...") << "20 characters of 100 twips fit into 2023 - 15";
  EXPECT_EQ(caption("optThumb", 5), "") << "the catalogue names no text";
  EXPECT_FALSE(control("cmdViwPic").enabled());
  tick(1);
  back();
  next();
  EXPECT_EQ(wizard().StepName(), "pics-") << "a page that was built is not passed over";
  EXPECT_TRUE(control("contstep", 8).visible());
  EXPECT_THAT(ticked(), ElementsAre("week"));
}

TEST_F(Charts, LieThreeInARowAndScroll) {
  std::string catalogue = "[setup]\ndisplay=INtro|pics|Fertig\n[CHARTS]\n";
  for (int n = 0; n < 12; ++n) catalogue += "chart" + std::to_string(n) + "=1^2\n";
  write("pelmar.ini", catalogue);
  start();
  next();
  const auto bounds = [&](int n) { return control("optThumb", n).bounds(); };
  EXPECT_EQ(bounds(0).width, 2023);
  EXPECT_EQ(bounds(0).height, 1335);
  EXPECT_EQ(bounds(2).top, bounds(0).top);
  EXPECT_EQ(bounds(3).left, bounds(0).left);
  EXPECT_GT(bounds(3).top, bounds(0).height);
  EXPECT_GE(control("picSlide").bounds().width, bounds(2).left + bounds(2).width);
  EXPECT_GE(control("picSlide").bounds().height, bounds(11).top + bounds(11).height);
  const int maximum = control("vsbSlide").maximum();
  EXPECT_GT(maximum, bounds(0).height);
  EXPECT_EQ(maximum, control("picSlide").bounds().height - control("picFrame").bounds().height);
  control("vsbSlide").set_value(maximum);
  wizard().change("vsbSlide");
  EXPECT_EQ(control("picSlide").bounds().top, -maximum);
}

TEST_F(Charts, AreTickedFromFiveSlotsOfTheHomePage) {
  write("home.ini",
        "[setup]\nhomepage=Start\n[Start]\nCHART1=0|0|WEEK|1\nCHART2=\nCHART3=1|1\nCHART4=0|1|gone\nCHART5=1|2|odd\n");
  start();
  next();
  EXPECT_THAT(ticked(), ElementsAre("week", "odd"));
  EXPECT_EQ(caption("lblPics"), "2/4");
}

TEST_F(Charts, AClickShowsTheChartAndTheLimitUnticksTheFifth) {
  start();
  next();
  for (int chart = 0; chart < 4; ++chart) tick(chart);
  EXPECT_EQ(caption("lblPics"), "4/4");
  EXPECT_EQ(caption("lblChartInfoTitle"), "T15");
  EXPECT_EQ(caption("lblChartInfo"), "T16");
  EXPECT_FALSE(control("cmdViwPic").enabled());
  tick(4);
  EXPECT_EQ(control("optThumb", 4).value(), 0);
  EXPECT_EQ(caption("lblPics"), "4/4");
  tick(1, 0);
  EXPECT_EQ(caption("lblPics"), "3/4");
  EXPECT_FALSE(control("cmdViwPic").enabled()) << "an empty screenshot counts as missing";
  EXPECT_EQ(caption("lblChartInfo"), "");
  tick(0, 0);
  EXPECT_TRUE(control("cmdViwPic").enabled());
  EXPECT_EQ(control("lblChartInfoTitle").tag(), "day");
  wizard().click("cmdViwPic");
  EXPECT_EQ(user.log.back(), "open " + path("pics\\ss_day.jpg"));
}

TEST_F(Charts, AKeyThatLeadsOutOfTheFolderHasNoPictures) {
  write("pics\\ss_\\x.jpg", "jpeg");
  write("secret.jpg", "jpeg");
  write("pelmar.ini",
        "[setup]\ndisplay=pics|Fertig\n[CHARTS]\n\\x=10^11\n\\..\\..\\secret=10^11\n/../../secret=10^11\n");
  start();
  for (int chart = 0; chart < 3; ++chart) {
    EXPECT_EQ(control("optThumb", chart).picture(), "");
    tick(chart);
    EXPECT_FALSE(control("cmdViwPic").enabled()) << control("optThumb", chart).tag();
    wizard().click("cmdViwPic");
  }
  EXPECT_THAT(user.log, ::testing::Not(::testing::Contains(::testing::StartsWith("open"))));
}

TEST_F(Charts, AnEmptyCatalogueLeavesAnEmptyPage) {
  write("pelmar.ini", "[setup]\ndisplay=pics|Fertig\n");
  start();
  EXPECT_FALSE(control("optThumb", 0).visible());
  EXPECT_EQ(caption("lblPics"), "0/4");
  EXPECT_FALSE(control("vsbSlide").enabled());
}

class Tips : public WizardTest {
 protected:
  Tips() { write("pelmar.ini", "[setup]\ndisplay=INtro|sidebar|start|tip_navbar|tip_splits|tip_stats|Fertig\n"); }
  /// Numbers of the pictures shown on this and the following ticks.
  std::vector<int> pictures(std::string_view array, int ticks) {
    std::vector<int> shown;
    for (int n = 0; n < ticks; ++n) {
      wizard().tick();
      for (const form::Control* picture : wizard().form().array(array))
        if (picture->visible()) shown.push_back(picture->index());
    }
    return shown;
  }
};

TEST_F(Tips, RunTheTimerAtThePagesPace) {
  start();
  for (int expected : {0, 600, 600, 1000, 2000, 2000, 0}) {
    EXPECT_EQ(control("Timer1").interval(), expected) << wizard().StepName();
    next();
  }
}

TEST_F(Tips, ShowTheirPicturesInTurnAndGoOnWhereTheyWere) {
  start();
  go_to("tip_navbar");
  EXPECT_THAT(pictures("imgNavBar", 6), ElementsAre(0, 1, 2, 3, 4, 0));
  next();
  EXPECT_THAT(pictures("imgSplitWindow", 4), ElementsAre(0, 1, 2, 0));
  EXPECT_EQ(caption("lblSplitDesc"), "T4873");
  wizard().tick();
  EXPECT_EQ(caption("lblSplitDesc"), "T4874");
  back();
  EXPECT_THAT(pictures("imgNavBar", 1), ElementsAre(1));
}

TEST_F(Tips, MoveTheHandInStepsWithinItsLimit) {
  start();
  go_to("tip_stats");
  form::Bounds before = control("imgMouseHand3").bounds();
  for (int n = 0; n < 12; ++n) {
    wizard().tick();
    const form::Bounds now_at = control("imgMouseHand3").bounds();
    EXPECT_LE(std::max(now_at.left, now_at.top), 2500);
    EXPECT_LE(std::abs(now_at.left - before.left), 900);
    EXPECT_EQ(caption("lblStatdesc"), n % 4 < 2 ? "T4876" : "T4877");
    before = now_at;
  }
  EXPECT_EQ(std::pair(before.left, before.top), std::pair(2400, 2460)) << "where the last picture holds the window";
}

TEST_F(Tips, BlinkTheirHighlight) {
  start();
  for (const char* mark : {"imgSidebarMark", "imgStartMark"}) {
    next();
    wizard().tick();
    EXPECT_TRUE(control(mark).visible());
    wizard().tick();
    EXPECT_FALSE(control(mark).visible());
  }
}

}  // namespace
}  // namespace wizard::testing
