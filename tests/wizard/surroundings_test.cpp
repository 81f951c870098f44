// A run under unusual circumstances.
#include "tests/wizard/wizard_test.h"

namespace wizard::testing {
namespace {

class Surroundings : public WizardTest {};

TEST_F(Surroundings, AClockAtEitherEndOfTheCalendarWorks) {
  const struct {
    engine::Date now;
    std::string day, last_name;
  } clocks[] = {
      {engine::date_from(1899, 12, 29, 18, 30, 0), "1899-12-29 00:00:00", "Before"},
      {engine::date_from(1899, 1, 1, 23, 59, 59), "1899-01-01 00:00:00", "First"},
      {engine::date_from(9999, 12, 31, 23, 59, 59), "9999-12-31 00:00:00", "Last"},
  };
  for (const auto& clock : clocks) {
    now = clock.now;
    start();
    enter_name("Max", clock.last_name);
    finish();
    EXPECT_TRUE(wizard().report().complete()) << clock.day;
    const std::string file = clock.last_name + "_Max.das", database = path("patients\\" + file);
    EXPECT_THAT(rows(database, "SELECT vdate FROM therapieplan"), ElementsAre(clock.day));

    start("vantrix|" + file);
    EXPECT_EQ(text("txtName"), clock.last_name);
    type("txtvorgabe", "81", 0);
    finish();
    EXPECT_TRUE(wizard().report().complete()) << clock.day;
    EXPECT_THAT(rows(database, "SELECT vdate FROM therapieplan"), ElementsAre(clock.day)) << "one plan a day";
    EXPECT_THAT(rows(database, "SELECT itemvalue FROM therapieplan_details WHERE itemtype = 500"), ElementsAre("81"));
  }
}

TEST_F(Surroundings, AUserProfileMayHaveAnyName) {
  for (const std::string profile : {"Jörg Müller #1 (100%)", "O'Neill; [ä]=\"ß\"|x"}) {
    set_value(support::RootKey::CurrentUser, installation_key, "User", profile);
    const std::string key = std::string(installation_key) + "\\Profiles\\" + profile + "\\User Configuration";
    start();
    EXPECT_EQ(wizard().config().User, profile);
    enter_name("Max", "Muster" + std::to_string(profile.size()));
    choose("optBGUnit", 1);
    finish();
    EXPECT_TRUE(wizard().report().complete()) << profile;
    EXPECT_EQ(value(key, "BGUnit"), "1") << profile;
    EXPECT_EQ(value(key, "FirstRun"), "0") << profile;
  }
}

TEST_F(Surroundings, AHomePageWithAThousandChartsKeepsTheOthers) {
  std::string charts = "[CHARTS]\n", home = "[setup]\nhomepage=H\n[H]\n";
  for (int n = 0; n < 1000; ++n) charts += "k" + std::to_string(n) + "=1^2\n";
  for (int n = 1; n <= 1000; ++n) home += "CHART" + std::to_string(n) + "=0|0|old" + std::to_string(n) + "|1\n";
  write("pelmar.ini", charts);
  write("home.ini", home);
  start();
  enter_name();
  go_to("pics");
  EXPECT_GT(wizard().form().array("optThumb").size(), 500U) << "as many as the buffer of 4096 characters takes";
  tick(0);
  tick(400);
  finish();
  EXPECT_TRUE(wizard().report().complete());
  EXPECT_THAT(lines(wizard().report()), Contains("[H] CHART2=0|0|k400|1"));
  EXPECT_THAT(read("home.ini"), ::testing::HasSubstr("CHART1000=0|0|old1000|1"));
}

}  // namespace
}  // namespace wizard::testing
