// Therapy plans stored and read, and the usual insulins and drugs looked up.
#include "database/therapy_plan.h"

#include "database/default_medication.h"
#include "tests/database/database_test.h"

namespace database::testing {
namespace {

using Plans = DatabaseTest;

TherapyPlan sample_plan() {
  TherapyPlan plan;
  plan.vDate = engine::date_from(2024, 5, 17);
  plan.desc = "Sommer";
  plan.Type = 3;
  plan.Comment = "nüchtern prüfen";
  plan.items = {{"Actrapid|100|0|0", 0, 8.5, 2, "vor dem Essen"}, {"Metformin", 800, 0, 0, ""}};
  return plan;
}

TEST_F(Plans, ReadBackAsStored) {
  const std::string file = patient_database();
  TherapyPlan plan = sample_plan();
  ASSERT_TRUE(db_SaveTherapyPlan(environment, file, plan));
  EXPECT_GT(plan.id, 0);
  for (const std::optional<std::int32_t> id : {std::optional<std::int32_t>{}, std::optional(plan.id)}) {
    TherapyPlan read;
    ASSERT_TRUE(db_GetTherapyPlan(environment, file, id, read));
    EXPECT_EQ(read.id, plan.id);
    EXPECT_EQ(read.vDate, plan.vDate);
    EXPECT_EQ(read.desc + "/" + read.Comment + "/" + std::to_string(read.Type), "Sommer/nüchtern prüfen/3");
    EXPECT_EQ(read.items, plan.items);
  }
  TherapyPlan untouched = sample_plan();
  EXPECT_FALSE(db_GetTherapyPlan(environment, file, plan.id + 1, untouched));
  EXPECT_EQ(untouched.desc, "Sommer");
}

TEST_F(Plans, ReplaceTheItemsOfTheSameIdAlone) {
  const std::string file = patient_database();
  TherapyPlan plan = sample_plan(), other = sample_plan();
  ASSERT_TRUE(db_SaveTherapyPlan(environment, file, plan));
  ASSERT_TRUE(db_SaveTherapyPlan(environment, file, other));
  EXPECT_NE(plan.id, other.id);
  plan.items = {{"Insuman|0|100|0", 1, 12, 9, ""}};
  plan.desc = "Herbst";
  ASSERT_TRUE(db_SaveTherapyPlan(environment, file, plan));
  EXPECT_EQ(rows(file, "SELECT therapieplan_details.[desc] FROM therapieplan_details ORDER BY lID, [desc]"),
            (std::vector<std::string>{"Insuman|0|100|0", "Actrapid|100|0|0", "Metformin"}));
  EXPECT_EQ(rows(file, "SELECT [desc] FROM therapieplan ORDER BY id"), (std::vector<std::string>{"Herbst", "Sommer"}));
}

TEST_F(Plans, ReadTheOneWithTheLatestDate) {
  const std::string file = patient_database();
  for (const int year : {2019, 2023, 2021}) {
    TherapyPlan plan = sample_plan();
    plan.vDate = engine::date_from(year, 12, 31);
    plan.desc = std::to_string(year);
    ASSERT_TRUE(db_SaveTherapyPlan(environment, file, plan));
  }
  TherapyPlan newest;
  ASSERT_TRUE(db_GetTherapyPlan(environment, file, std::nullopt, newest));
  EXPECT_EQ(newest.desc, "2023");
}

TEST_F(Plans, ShowAMessageAndStayAsTheyWereWhereSavingFails) {
  const std::string file = patient_database();
  TherapyPlan plan = sample_plan();
  ASSERT_TRUE(db_SaveTherapyPlan(environment, file, plan));
  TherapyPlan missing = sample_plan(), too_long = plan;
  missing.id = plan.id + 100;
  too_long.desc = std::string(256, 'x');
  too_long.items.clear();
  // The sound comes before the message.
  std::vector<std::size_t> messages_at_beep;
  environment.beep = [&] { messages_at_beep.push_back(messages.size()); };
  for (TherapyPlan* failing : {&missing, &too_long}) {
    messages.clear();
    messages_at_beep.clear();
    EXPECT_FALSE(db_SaveTherapyPlan(environment, file, *failing));
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].text, "Text 4880");
    EXPECT_EQ(messages[0].style, 48U);
    EXPECT_EQ(messages_at_beep, std::vector<std::size_t>{0});
  }
  TherapyPlan read;
  ASSERT_TRUE(db_GetTherapyPlan(environment, file, std::nullopt, read));
  EXPECT_EQ(read.id, plan.id);
  EXPECT_EQ(read.items, plan.items);
  EXPECT_FALSE(db_SaveTherapyPlan(environment, path("missing.das"), plan));
}

TEST_F(Plans, LeaveOutAnItemThatCannotBeStoredAndSayWhy) {
  const std::string file = patient_database();
  TherapyPlan plan = sample_plan();
  plan.items.insert(plan.items.begin() + 1, {std::string(256, 'x'), 1, 0, 0, ""});
  EXPECT_FALSE(db_SaveTherapyPlan(environment, file, plan));
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].style, 0U);
  EXPECT_FALSE(messages[0].text.empty());
  TherapyPlan read;
  ASSERT_TRUE(db_GetTherapyPlan(environment, file, plan.id, read));
  EXPECT_EQ(read.items, sample_plan().items);
}

TEST_F(Plans, ShowTheirProgressItemByItem) {
  struct Recorded : Progress {
    void start(std::string_view, std::int32_t) override {}
    void set_caption(std::string_view caption) override { shown += std::string(caption) + "; "; }
    void set_value(std::int32_t value) override { shown += std::to_string(value) + " "; }
    void finish() override {}
    std::string shown;
  } progress;
  environment.progress = &progress;
  TherapyPlan plan = sample_plan();
  ASSERT_TRUE(db_SaveTherapyPlan(environment, patient_database(), plan));
  EXPECT_EQ(progress.shown, "1 Text 4881\r\nActrapid|100|0|0; 2 Text 4881\r\nMetformin; ");
}

class DefaultMedication : public DatabaseTest {
 public:
  DefaultMedication() : file(patient_database()) {
    texts.given = {{4353, "Bolus:"}, {4354, "Basal::"}, {4355, " Rapid: "}, {4356, "Mix:"}};
  }
  std::string insulins() {
    DefaultInsulin insulin;
    EXPECT_TRUE(db_GetDefaultInsulin(environment, file, insulin));
    return insulin.bolus + "; " + insulin.basal + "; " + insulin.mix + "; " + insulin.rapid + "; " +
           std::to_string(insulin.bolus_percentage);
  }
  std::string drugs() {
    std::array<std::string, 3> found;
    EXPECT_TRUE(db_GetDefaultOAD(environment, file, found));
    return found[0] + "; " + found[1] + "; " + found[2];
  }
  std::string file;
};

TEST_F(DefaultMedication, ComesFromTheFirstSourceThatNamesIt) {
  EXPECT_EQ(insulins(), "Bolus; Basal; Mix 50/50; Rapid; 50");

  const std::string entry = "INSERT INTO insulin (vDate, vTime, BolusIE, BasalIE, Rapid, [desc]) VALUES (#1/2/2020#, ";
  execute(file, {entry + "#07:00:00#, 8.5, 0, 0, 'Früh')", entry + "#19:00:00#, 9.5, 0, 0, 'Actrapid')",
                 entry + "#20:00:00#, 6, 18, 0, 'Mixtard')", entry + "#21:00:00#, 5, 0, -1, 'Humalog')",
                 entry + "#22:00:00#, 0, 7, 0, '')"});
  EXPECT_EQ(insulins(), "Actrapid|10|0|0; Basal; Mixtard|6|18|0; Humalog|5|0|-1; 25");

  execute(file, {"INSERT INTO defaultinsulin (DefaultBasal, DefaultMix, BolusPercentage) "
                 "VALUES (' Lantus|0|100|0 ', 'Insuman Comb', 30)"});
  EXPECT_EQ(insulins(), "Actrapid|10|0|0; Lantus|0|100|0; Insuman Comb; Humalog|5|0|-1; 30");

  TherapyPlan plan = sample_plan();
  plan.items = {{"Apidra|100|0|0", 3, 0, 0, ""},
                {"not an insulin", 5, 0, 0, ""},
                {"pump", 4, 0, 0, ""},
                {"Levemir|0|100|0", 1, 0, 0, ""}};
  ASSERT_TRUE(db_SaveTherapyPlan(environment, file, plan));
  EXPECT_EQ(insulins(), "Actrapid|10|0|0; Levemir|0|100|0; Insuman Comb; Apidra|100|0|0; 30");
}

TEST_F(DefaultMedication, NamesDrugsFromPlanAndDefaultsAlone) {
  EXPECT_EQ(drugs(), "; ; ");
  execute(file, {"INSERT INTO defaultoad (DefaultOAD1, DefaultOAD3) VALUES ('Glibenclamid', ' Acarbose ')"});
  EXPECT_EQ(drugs(), "Glibenclamid; ; Acarbose");
  TherapyPlan plan = sample_plan();
  plan.items = {{"Metformin", 800, 0, 0, ""}, {"Pioglitazon", 801, 0, 0, ""}, {"no drug", 803, 0, 0, ""}};
  ASSERT_TRUE(db_SaveTherapyPlan(environment, file, plan));
  EXPECT_EQ(drugs(), "Metformin; Pioglitazon; Acarbose");
}

TEST_F(DefaultMedication, IsNotLookedUpInAFileThatCannotBeOpened) {
  DefaultInsulin insulin{"kept", "", "", "", 1};
  std::array<std::string, 3> found{"kept"};
  EXPECT_FALSE(db_GetDefaultInsulin(environment, path("missing.das"), insulin));
  EXPECT_FALSE(db_GetDefaultOAD(environment, path("missing.das"), found));
  EXPECT_EQ(insulin.bolus + found[0], "keptkept");
}

}  // namespace
}  // namespace database::testing
