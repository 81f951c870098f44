// The settings record, the daytime zones, and the values that the therapy plan overrides.
#include "database/settings.h"

#include "database/therapy_plan.h"
#include "database/zone_table.h"
#include "tests/database/database_test.h"

namespace database::testing {
namespace {

using Settings = DatabaseTest;

SettingsRecord sample_settings() {
  SettingsRecord settings;
  settings.BGTargetMax = 160, settings.BGTargetMin = 80;
  settings.BPTargetSysMax = 135, settings.BPTargetSysMin = 105;
  settings.BPTargetDiaMax = 85, settings.BPTargetDiaMin = 62;
  settings.BGHyper = 240, settings.BGHypo = 60;
  settings.TargetWeight = 71000;
  settings.BUPerDayMax = 12.5;
  settings.KHPerDayMax = 150;
  settings.KCalPerDayMax = 1800;
  settings.FatPerDayMax = 70;
  settings.CholPerDayMax = 0.25;
  settings.ProtPerDayMax = 90;
  for (int i = 0; i < 13; ++i) {
    settings.zones[static_cast<std::size_t>(i)] = {time_of_day(i, 1), time_of_day(i + 1, 0), "zone"};
  }
  return settings;
}

std::string shown(const SettingsRecord& settings) {
  std::string text;
  for (const double number :
       {double{settings.TargetWeight}, settings.BUPerDayMax, settings.KCalPerDayMax, settings.CholPerDayMax}) {
    text += engine::to_text(number) + "|";
  }
  for (const std::int32_t number :
       {settings.BGTargetMax, settings.BGTargetMin, settings.BPTargetSysMax, settings.BPTargetSysMin,
        settings.BPTargetDiaMax, settings.BPTargetDiaMin, settings.BGHyper, settings.BGHypo, settings.KHPerDayMax,
        settings.FatPerDayMax, settings.ProtPerDayMax}) {
    text += std::to_string(number) + "|";
  }
  return text;
}

/// The columns that shown() shows, and those of the zones.
constexpr std::string_view settings_columns =
    "SELECT TargetWeight, BUPerDayMax, KCalPerDayMax, CholPerDayMax, BGTargetMax, BGTargetMin, BPTargetSysMax, "
    "BPTargetSysMin, BPTargetDiaMax, BPTargetDiaMin, BGHyper, BGHypo, KHPerDayMax, FatPerDayMax, ProtPerDayMax, '' "
    "FROM patdat_setup";
constexpr std::string_view zone_columns =
    "SELECT BB_From, BB_Until, AB_From, AB_Until, BL_From, BL_Until, AL_From, AL_Until, BS_From, BS_Until, AS_From, "
    "AS_Until, BD_From, BD_Until, AD_From, AD_Until, BedTime_From, BedTime_Until, UTZ1_From, UTZ1_Until, UTZ2_From, "
    "UTZ2_Until, UTZ3_From, UTZ3_Until, UTZ4_From, UTZ4_Until, UTZ1_Desc, UTZ2_Desc, UTZ3_Desc, UTZ4_Desc "
    "FROM patdat_setup";

std::string clock(engine::Date time) { return engine::iso_text(time).substr(11, 5); }

std::string shown(const ZoneTable& zones) {
  std::string text;
  for (const Zone& zone : zones) {
    text += clock(zone.from) + "-" + clock(zone.until) + " " + zone.description + "\n";
  }
  return text;
}

constexpr const char* default_zones =
    "06:00-08:59 Text 802\n09:00-11:29 Text 803\n11:30-11:59 Text 804\n12:00-13:59 Text 805\n"
    "14:00-14:59 Text 818 (Text 806)\n15:00-16:59 Text 819 (Text 806)\n17:00-18:29 Text 816\n18:30-21:59 Text 817\n"
    "22:00-05:59 Text 807\n06:00-10:59 \n11:00-16:59 \n17:00-21:59 \n22:00-05:59 \n";

TEST_F(Settings, StandInTheirColumnsAndAreReadBack) {
  const std::string file = patient_database();
  SettingsRecord stored = sample_settings();
  for (const float weight : {71000.0F, 69500.0F}) {
    stored.TargetWeight = weight;
    stored.zones[12].description = "Nacht & Frühdienst";
    ASSERT_EQ(db_SaveSettings(environment, file, stored), 1);
    EXPECT_EQ(rows(file, settings_columns), std::vector<std::string>{shown(stored)});
    std::string times;
    for (const Zone& zone : stored.zones)
      times += engine::iso_text(zone.from) + "|" + engine::iso_text(zone.until) + "|";
    EXPECT_EQ(rows(file, zone_columns), std::vector<std::string>{times + "zone|zone|zone|Nacht & Frühdienst"});
    SettingsRecord read;
    ASSERT_TRUE(db_GetSettings(environment, file, read));
    EXPECT_EQ(shown(read), shown(stored));
    EXPECT_EQ(clock(read.zones[8].from) + clock(read.zones[12].until), "08:0113:00");
    EXPECT_EQ(read.zones[12].description, "Nacht & Frühdienst");
    EXPECT_EQ(read.zones[5].description, "Text 819 (Text 806)");
  }
}

TEST_F(Settings, YieldToTheNewestPlan) {
  struct Case {
    std::int16_t item_type;
    double SettingsRecord::*number;
    std::int16_t SettingsRecord::*whole;
    double value, expected;
  };
  const Case cases[] = {
      {500, nullptr, &SettingsRecord::BGTargetMin, 90, 90},
      {501, nullptr, &SettingsRecord::BGTargetMax, 140.5, 140},
      {502, nullptr, &SettingsRecord::BGHypo, 55, 55},
      {503, nullptr, &SettingsRecord::BGHyper, 200, 200},
      {504, nullptr, &SettingsRecord::BPTargetSysMin, 104, 104},
      {505, nullptr, &SettingsRecord::BPTargetSysMax, 130, 130},
      {506, nullptr, &SettingsRecord::BPTargetDiaMin, 65, 65},
      {507, nullptr, &SettingsRecord::BPTargetDiaMax, 80, 80},
      {509, &SettingsRecord::BUPerDayMax, nullptr, 11.5, 11.5},
      {510, nullptr, &SettingsRecord::KHPerDayMax, 120, 120},
      {511, nullptr, &SettingsRecord::ProtPerDayMax, 100, 100},
      {512, nullptr, &SettingsRecord::FatPerDayMax, 60, 60},
      {513, &SettingsRecord::CholPerDayMax, nullptr, 0.5, 0.5},
      {510, nullptr, &SettingsRecord::KHPerDayMax, 40000, 150},  // no 16-bit number: passed over
  };
  const std::string file = patient_database();
  ASSERT_EQ(db_SaveSettings(environment, file, sample_settings()), 1);
  TherapyPlan plan;
  plan.vDate = engine::date_from(2024, 1, 1);
  for (const Case& row : cases) {
    plan.items = {{.desc = "", .ItemType = row.item_type, .ItemValue = row.value}};
    ASSERT_TRUE(db_SaveTherapyPlan(environment, file, plan));
    SettingsRecord read;
    ASSERT_TRUE(db_GetSettings(environment, file, read));
    EXPECT_EQ(row.number ? read.*row.number : 1.0 * read.*row.whole, row.expected) << row.item_type;
  }
  plan.items = {{.desc = "", .ItemType = plan_item::weight, .ItemValue = 75}};
  ASSERT_TRUE(db_SaveTherapyPlan(environment, file, plan));
  SettingsRecord read;
  ASSERT_TRUE(db_GetSettings(environment, file, read));
  EXPECT_EQ(read.TargetWeight, 75000.0F);
}

TEST_F(Settings, KeepWhatCannotBeReadOrFound) {
  const std::string file = patient_database();
  execute(file, {"UPDATE patdat_setup SET BGHypo = Null"});
  SettingsRecord read;
  read.BGHypo = 47;
  EXPECT_TRUE(db_GetSettings(environment, file, read));
  EXPECT_EQ(read.BGHypo, 47);
  EXPECT_FALSE(db_GetSettings(environment, file, read, 3));
  EXPECT_EQ(db_SaveSettings(environment, file, sample_settings(), 3), 0);
  execute(file, {"DELETE * FROM patdat_setup"});
  EXPECT_FALSE(db_GetSettings(environment, file, read));
  EXPECT_EQ(db_AddTimeZonesToPatient(environment, file, sample_settings().zones), 0);
  EXPECT_EQ(read.BGHypo, 47);
}

TEST_F(Settings, StoreWhatTheyCanBesideAColumnThatFails) {
  const std::string file = patient_database();
  SettingsRecord settings = sample_settings();
  settings.KCalPerDayMax = 1e6;
  settings.zones[10].description = std::string(51, 'x');
  ASSERT_EQ(db_SaveSettings(environment, file, settings), 1);
  EXPECT_EQ(rows(file, "SELECT KCalPerDayMax, FatPerDayMax, UTZ2_Desc, UTZ3_Desc FROM patdat_setup"),
            std::vector<std::string>{"-1|70||zone"});
}

TEST_F(Settings, TellThatTheirRowWasRefused) {
  const std::string file = patient_database();
  execute(file, {"DELETE * FROM patdat_setup", "ALTER TABLE patdat_setup ADD COLUMN needed TEXT(5) NOT NULL"});
  EXPECT_EQ(db_SaveSettings(environment, file, sample_settings()), 0);
  EXPECT_EQ(rows(file, "SELECT count(*) FROM patdat_setup"), std::vector<std::string>{"0"});
}

TEST_F(Settings, GiveAUsersZoneOfNoTimesItsDefaults) {
  const std::string file = patient_database();
  execute(file, {"UPDATE patdat_setup SET BB_From = 0, BB_Until = 0, UTZ1_From = 0, UTZ1_Until = 0, UTZ2_From = 0"});
  ZoneTable zones;
  ASSERT_TRUE(GetTimeZones(environment, file, zones, false));
  EXPECT_EQ(clock(zones[0].from) + "-" + clock(zones[0].until), "00:00-00:00");
  EXPECT_EQ(clock(zones[9].from) + "-" + clock(zones[9].until), "06:00-10:59");
  EXPECT_EQ(clock(zones[10].from) + "-" + clock(zones[10].until), "00:00-16:59");
}

TEST_F(Settings, TakeZoneTimesAloneIntoTheRowThatExists) {
  const std::string file = patient_database();
  ASSERT_EQ(db_SaveSettings(environment, file, sample_settings()), 1);
  ZoneTable zones;
  ASSERT_TRUE(GetTimeZones(environment, file, zones, true));
  zones[9].description = "not stored";
  ASSERT_EQ(db_AddTimeZonesToPatient(environment, file, zones), 1);
  EXPECT_EQ(rows(file, "SELECT BedTime_From, UTZ1_Until, UTZ1_Desc, BGHypo FROM patdat_setup"),
            std::vector<std::string>{"1899-12-30 22:00:00|1899-12-30 10:59:00|zone|60"});
}

TEST_F(Settings, FindTheZonesOfANewPatientInTheSettingsFile) {
  ZoneTable zones;
  ASSERT_TRUE(GetTimeZones(environment, "", zones, true));
  EXPECT_EQ(shown(zones), default_zones);

  zone_file.values = {{"FixTimeFrom1", "0515"},       {"FIxTimeUntil9", "0459"}, {"TimeFrom4", "2130"},
                      {"TimeUntil4", "2400"},         {"TimeUntil3", "1760"},    {"FixTimeFrom2", "9"},
                      {"TimeSlotDesc", "Eigene Zeit"}};
  ASSERT_TRUE(GetTimeZones(environment, "", zones, true));
  EXPECT_EQ(shown(zones),
            "05:15-08:59 Text 802\n09:00-11:29 Text 803\n11:30-11:59 Text 804\n12:00-13:59 Text 805\n"
            "14:00-14:59 Text 818 (Text 806)\n15:00-16:59 Text 819 (Text 806)\n17:00-18:29 Text 816\n"
            "18:30-21:59 Text 817\n22:00-04:59 Text 807\n06:00-10:59 Eigene Zeit\n11:00-16:59 Eigene Zeit\n"
            "17:00-21:59 Eigene Zeit\n21:30-05:59 Eigene Zeit\n");

  environment.ini = nullptr;
  environment.language = nullptr;
  ASSERT_TRUE(GetTimeZones(environment, "", zones, true));
  EXPECT_EQ(clock(zones[0].from) + zones[0].description, "06:00");
}

}  // namespace
}  // namespace database::testing
