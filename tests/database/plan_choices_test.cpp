// The plan that is made from the values of the therapy pages.
#include <gtest/gtest.h>

#include "database/therapy_plan.h"

namespace database::testing {
namespace {

const engine::Date today = engine::date_from(2024, 5, 17, 14, 30);

PlanChoices sample_choices() {
  PlanChoices choices;
  choices.insulins[0] = insulin_text("Actrapid", 0);
  choices.insulins[1] = "";
  choices.drugs[0] = "Metformin";
  choices.targets[0] = 80;
  choices.targets[7] = 85;
  return choices;
}

std::string shown(const TherapyPlan& plan) {
  std::string text = engine::iso_text(plan.vDate).substr(0, 10) + " #" + std::to_string(plan.id);
  for (const PlanItem& item : plan.items) {
    text += "; " + std::to_string(item.ItemType) + " " + item.desc + "=" + std::to_string(int(item.ItemValue));
  }
  return text;
}

TEST(PlanChoices, GiveEachSlotItsNumbers) {
  struct Case {
    std::int16_t slot;
    std::string_view text;
  };
  const Case cases[] = {{0, "A B|100|0|0"}, {1, "A B|0|100|0"}, {2, "A B|100|0|-1"}, {3, "A B|100|0|0"},
                        {4, "A B|100|0|0"}, {5, "A B"},         {-1, "A B"}};
  for (const Case& row : cases) EXPECT_EQ(insulin_text("A|B", row.slot), row.text) << row.slot;
  EXPECT_EQ(insulin_text("Mixtard", 29.5, 70.4, -1), "Mixtard|30|70|-1");
  EXPECT_EQ(insulin_name("Mixtard|30|70|-1") + insulin_name("plain"), "Mixtardplain");
}

TEST(PlanChoices, MakeAFirstPlanOfToday) {
  EXPECT_EQ(shown(first_plan(sample_choices(), today)),
            "2024-05-17 #0; 0 Actrapid|100|0|0=0; 500 =80; 507 =85; 800 Metformin=0");
  EXPECT_EQ(shown(first_plan({}, today)), "2024-05-17 #0");
}

TEST(PlanChoices, CarryTheNewestPlanOn) {
  TherapyPlan newest;
  newest.id = 4;
  newest.vDate = engine::date_from(2023, 1, 1);
  newest.desc = "Alt";
  newest.items = {{"Actrapid|90|10|0", 0, 8, 1, "doses stay"},
                  {"Lantus|0|100|0", 1, 0, 0, ""},
                  {"", 400, 2, 0, ""},
                  {"", 500, 70, 0, ""},
                  {"", 506, 80, 0, "as high as the new lower glucose target"},
                  {"Metformin", 801, 0, 0, "the drug chosen for another place"}};
  const TherapyPlan plan = following_plan(newest, sample_choices(), today);
  EXPECT_EQ(shown(plan),
            "2024-05-17 #0; 0 Actrapid|90|10|0=8; 400 =2; 500 =80; 506 =80; 507 =85; 800 Metformin=0; 801 Metformin=0");
  EXPECT_EQ(plan.desc, "Alt");
  EXPECT_FALSE(same_content(newest, plan));

  newest.vDate = engine::date_from(2024, 5, 17);
  EXPECT_EQ(following_plan(newest, sample_choices(), today).id, 4);
}

TEST(PlanChoices, KeepAPlanThatShowsThemAlready) {
  TherapyPlan newest = first_plan(sample_choices(), today);
  std::swap(newest.items.front(), newest.items.back());
  EXPECT_TRUE(same_content(newest, following_plan(newest, sample_choices(), today)));
  EXPECT_TRUE(same_content(newest, following_plan(newest, {}, today)));
}

}  // namespace
}  // namespace database::testing
