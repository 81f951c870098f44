#include "database/lab_definitions.h"
#include "database/plan_summary.h"
#include "database/therapy_plan.h"
#include "tests/database/database_test.h"

namespace database {
namespace {

using Texts = std::vector<std::string>;
class LabTest : public testing::DatabaseTest {};
class PlanSummaryTest : public testing::DatabaseTest {};

TEST_F(LabTest, DefaultRangesAreResetNotDoubled) {
  const std::string file = patient_database();
  EXPECT_EQ(db_SetDefaultLabRanges(environment, file, 3), 13);
  execute(file, {"UPDATE Labordefinitionen SET RangeUntil=999 WHERE field='iHDL'"});
  EXPECT_EQ(db_SetDefaultLabRanges(environment, file, 3), 13);
  EXPECT_EQ(db_SetDefaultLabRanges(environment, file, 4), 13);
  EXPECT_EQ(rows(file, "SELECT LaborID, count(*) FROM Labordefinitionen GROUP BY LaborID ORDER BY LaborID"),
            (Texts{"3|13", "4|13"}));
  EXPECT_EQ(rows(file,
                 "SELECT BDTKEY, unit, displayunit, rangefrom, rangeuntil, criticalthreshold FROM Labordefinitionen "
                 "WHERE LaborID=3 AND field IN ('iHDL','INR','dKetones') ORDER BY field"),
            (Texts{"KETONE|1|0|-1|1,5|0,6", "HDL|0|0|35|50|-1", "INR|4|4|2,5|4,5|-1"}));
}

TEST_F(LabTest, AddsTheLaboratoryWhereAnOldTableLacksIt) {
  const std::string file = patient_database();
  open(file).database->table_defs().item("Labordefinitionen")->fields().remove("LaborID");
  EXPECT_EQ(db_SetDefaultLabRanges(environment, file, 1), 13);
}

TEST_F(LabTest, FindsADefinitionByNameTypeOrLaboratory) {
  const std::string file = patient_database();
  execute(file, {"INSERT INTO labvalues (vdate, [value], [type]) VALUES (#1/5/2024#, 7.3, 11)"});
  LabDefinition definition;
  ASSERT_TRUE(db_GetLabDefinition(environment, file, std::string("DHBAC"), 0, definition));
  EXPECT_EQ(definition.type, 11);
  EXPECT_EQ(definition.stored_values, 1);
  EXPECT_FLOAT_EQ(definition.rangeuntil, 6.2F);
  ASSERT_TRUE(db_GetLabDefinition(environment, file, std::int16_t{12}, 0, definition));
  EXPECT_EQ(definition.field, "iChol");
  EXPECT_EQ(definition.stored_values, 0);
  EXPECT_FALSE(db_GetLabDefinition(environment, file, std::string("iChol"), 9, definition));
  EXPECT_FALSE(db_GetLabDefinition(environment, file, std::string("i'Chol"), 0, definition));
  EXPECT_EQ(definition.field, "iChol") << "what was not found leaves the record as it was";
  db_SetDefaultLabRanges(environment, file, 9);
  EXPECT_TRUE(db_GetLabDefinition(environment, file, std::string("iChol"), 9, definition));
}

TherapyPlan plan_of(int day, std::vector<PlanItem> items) {
  TherapyPlan plan;
  plan.vDate = engine::date_from(2024, 3, day);
  plan.items = std::move(items);
  return plan;
}

PlanItem item(std::int16_t type, double value) { return {"", type, value, 0, ""}; }

TEST_F(PlanSummaryTest, SumsUpThePlanInForce) {
  const std::string file = patient_database();
  PlanSummary summary;
  EXPECT_FALSE(db_GetPlanSummary(environment, file, std::nullopt, summary));
  TherapyPlan first =
      plan_of(1, {item(0, 0), item(5, 0), item(6, 0), item(10, 0), item(299, 0), item(400, 0.5), item(400, 0.4),
                  item(402, 1.25), item(500, 80), item(501, 140), item(502, 60), item(503, 180), item(803, 1)});
  TherapyPlan second = plan_of(9, {item(1, 0), item(500, 90)});
  ASSERT_TRUE(db_SaveTherapyPlan(environment, file, first));
  ASSERT_TRUE(db_SaveTherapyPlan(environment, file, second));
  ASSERT_TRUE(db_GetPlanSummary(environment, file, engine::date_from(2024, 3, 8), summary));
  EXPECT_EQ(summary.id, first.id);
  const std::string missing = "|0=|100|0|0|1=||100|2=|100|0|-1|3=|100|0|0|4=|100|0|0";
  EXPECT_EQ(plan_summary_text(summary),
            "2|1|1|400=0,9|401=0,0|402=1,3|500=80,0|501=140,0|502=60,0|503=180,0" + missing);
  ASSERT_TRUE(db_GetPlanSummary(environment, file, std::nullopt, summary));
  EXPECT_EQ(plan_summary_text(summary), "1|0|0|400=0,0|401=0,0|402=0,0|500=90,0|501=0,0|502=0,0|503=0,0" + missing);
  EXPECT_FALSE(db_GetPlanSummary(environment, file, engine::date_from(2024, 2, 28), summary));
}

TEST_F(PlanSummaryTest, RoundsAsTheUserSeesIt) {
  PlanSummary summary;
  for (const auto& [value, text] : std::initializer_list<std::pair<double, std::string>>{{0.85, "=0,9"},
                                                                                         {0.1 + 0.75, "=0,9"},
                                                                                         {7.25, "=7,3"},
                                                                                         {0.05, "=0,1"},
                                                                                         {-0.04, "=0,0"},
                                                                                         {123456.75, "=123456,8"}}) {
    summary.basal_rates[0] = value;
    EXPECT_NE(plan_summary_text(summary).find("|400" + text + "|"), std::string::npos) << plan_summary_text(summary);
  }
}

TEST_F(PlanSummaryTest, NamesInsulinsAndDividesByTheTargetWeight) {
  const std::string file = patient_database();
  TherapyPlan plan = plan_of(1, {{"Lispro|90|0|0", plan_item::bolus, 0, 0, ""},
                                 {"Aspart|95|0|0", plan_item::pump, 0, 0, ""},
                                 item(400, 12),
                                 item(400, 15.5)});
  ASSERT_TRUE(db_SaveTherapyPlan(environment, file, plan));
  PlanSummary summary;
  // Weights in grams; 78 cannot be one.
  for (const auto& [weight, part] : std::initializer_list<std::pair<std::string_view, std::string>>{
           {"UPDATE patdat_setup SET TargetWeight = 0", ""},
           {"UPDATE patdat_setup SET TargetWeight = 78", ""},
           {"UPDATE patdat_setup SET TargetWeight = 80000", "|400/kg=0,34"}}) {
    execute(file, {weight});
    ASSERT_TRUE(db_GetPlanSummary(environment, file, std::nullopt, summary));
    EXPECT_EQ(plan_summary_text(summary), "2|0|0|400=27,5|401=0,0|402=0,0|500=0,0|501=0,0|502=0,0|503=0,0" + part +
                                              "|0=Lispro|90|0|0|1=||100|2=|100|0|-1|3=|100|0|0|4=Aspart|95|0|0");
  }
}

}  // namespace
}  // namespace database
