// The commands that show what a patient's database says about the patient: plan, laboratory, days with entries, index.
#include "tests/apps/program_run.h"

namespace apps_test {
namespace {

class Figures : public testing::Test {
 protected:
  Figures() {
    EXPECT_EQ(run_patientdb({"create", file_, "--name", "Müller", "--firstname", "Jörg"}).code, 0);
    change({"INSERT INTO therapieplan (vdate, [desc], [type], comment) VALUES (#3/1/2024#, 'Sommer', 2, 'alt')",
            "INSERT INTO therapieplan_details (lid, itemtype, itemvalue, timeslot, [desc], comment) "
            "VALUES (1, 0, 8.5, 2, 'Actrapid|100|0|0', 'vor dem Essen')",
            "INSERT INTO therapieplan_details (lid, itemtype, itemvalue, [desc], comment) "
            "VALUES (1, 500, 80, 'von', 'mg/dl')",
            "INSERT INTO labvalues (vdate, vtime, [value], [type]) VALUES (#3/2/2024#, #08:00:00#, 7.1, 11)",
            "INSERT INTO glucose (vdate, vtime, [value], event) VALUES (#3/4/2024#, #06:00:00#, 100, 2)",
            "INSERT INTO glucose (vdate, vtime, [value], event) VALUES (#3/5/2024#, #12:00:00#, 140, 3)"});
  }

  void change(const std::vector<std::string>& statements) const {
    std::vector<std::string> arguments{"sql", file_};
    arguments.insert(arguments.end(), statements.begin(), statements.end());
    const Outcome outcome = run_patientdb(arguments);
    EXPECT_EQ(outcome.code, 0) << outcome.err;
  }
  /// The output of a command, which must succeed.
  static std::string said(const std::vector<std::string>& arguments) {
    const Outcome outcome = run_patientdb(arguments);
    EXPECT_EQ(outcome.code, 0) << outcome.err << testing::PrintToString(arguments);
    return outcome.out;
  }

  TemporaryFolder folder_;
  std::string file_ = folder_.file("P.das");
};

TEST_F(Figures, OfThePlanInForce) {
  const std::string summary =
      "1|0|0|400=0,0|401=0,0|402=0,0|500=80,0|501=0,0|502=0,0|503=0,0|0=Actrapid|100|0|0|1=||100|2=|100|0|-1|"
      "3=|100|0|0|4=|100|0|0";
  EXPECT_EQ(
      said({"plan", file_, "--json"}),
      R"({"id":1,"date":"2024-03-01","type":2,"summary":")" + summary +
          R"(","basal_per_kilogram":null,"insulins":["Actrapid|100|0|0","||100","|100|0|-1","|100|0|0","|100|0|0"])"
          R"(,"items":[{"itemtype":0,"itemvalue":8.5,"timeslot":2,"desc":"Actrapid|100|0|0",)"
          R"("comment":"vor dem Essen"},{"itemtype":500,"itemvalue":80,"timeslot":0,"desc":"von",)"
          R"("comment":"mg/dl"}]})"
          "\n");
  EXPECT_EQ(said({"plan", file_, "--date", "2024-03-01"}), "Plan 1 of 2024-03-01, type 2\n" + summary +
                                                               "\n\n"
                                                               "Type  Value  Time slot  Text\n"
                                                               "----  -----  ---------  ----------------\n"
                                                               "   0    8.5          2  Actrapid|100|0|0\n"
                                                               " 500     80          0  von\n");
  const Outcome before = run_patientdb({"plan", file_, "--date", "2024-02-29"});
  EXPECT_EQ(before.code, 1);
  EXPECT_EQ(before.out + before.err, "No therapy plan is in force on this day.\n");
}

TEST_F(Figures, OfTheLaboratoryWithItsRanges) {
  EXPECT_THAT(said({"labs", file_, "--json"}),
              HasSubstr(R"({"type":11,"field":"dHbAc","longdesc":"HBA1c","bdtkey":"HBA1C","unit":2,"displayunit":2,)"
                        R"("rangefrom":4.1,"rangeuntil":6.2,"criticalthreshold":-1,"values":1},{"type":12,)"));
  EXPECT_THAT(said({"labs", file_}),
              AllOf(HasSubstr("Type  Field       Name                       From  Until  Critical  Values\n"),
                    HasSubstr("\n  11  dHbAc       HBA1c                       4.1    6.2                 1\n"),
                    HasSubstr("\n  12  iChol       Cholesterin                        200       180       0\n")));
  EXPECT_THAT(said({"sql", file_, "SELECT * FROM Labordefinitionen", "--json"}), HasSubstr("\"rows\":[],"));
  said({"labs", file_, "--default-ranges", "3"});
  EXPECT_EQ(said({"sql", file_, "SELECT LaborID, count(*) AS n FROM Labordefinitionen GROUP BY LaborID", "--json"}),
            "{\"columns\":[\"LaborID\",\"n\"],\"rows\":[[3,13]],\"affected\":0}\n");
}

TEST_F(Figures, OfTheDaysThatHaveEntries) {
  EXPECT_THAT(
      said({"summary", file_, "--json"}),
      AllOf(StartsWith(R"([{"typ":0,"count":2,"first":"2024-03-04","last":"2024-03-05","checksum":122.88)"),
            HasSubstr(R"(},{"typ":9,"count":1,"first":"2024-03-02","last":"2024-03-02","checksum":null},{"typ":13,)")));
  EXPECT_THAT(said({"summary", file_, "--mask", "1"}), HasSubstr("\n       0     2  2024-03-04  2024-03-05  122.88"));
  const std::vector<std::string> days{"--from", "2024-03-04", "--until", "2024-03-31"};
  for (const auto& [choice, count] : std::vector<std::pair<std::vector<std::string>, std::string>>{
           {{}, "2"}, {{"--time-from", "06:00", "--time-until", "11:59:59"}, "1"}, {{"--weekdays", "2,7"}, "1"}}) {
    std::vector<std::string> arguments{"summary", file_, "--mask", "1", "--json"};
    arguments.insert(arguments.end(), days.begin(), days.end());
    arguments.insert(arguments.end(), choice.begin(), choice.end());
    EXPECT_THAT(said(arguments), HasSubstr("\"count\":" + count + ",")) << testing::PrintToString(choice);
  }
  EXPECT_EQ(said({"summary", file_, "--import-id", "5", "--mask", "1", "--json"}), "[]\n");
}

TEST_F(Figures, OfDaysNameTheCategoriesWithoutTimes) {
  const std::vector<std::string> period{"summary",    file_,         "--from", "2024-03-04",   "--until",
                                        "2024-03-31", "--time-from", "22:00",  "--time-until", "06:00"};
  const Outcome outcome = run_patientdb(period);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.out, HasSubstr("\n       0     1  2024-03-04  2024-03-04"));
  EXPECT_EQ(outcome.err, "Left out, since their entries have no time of day: categories 20 21 25 26\n");
}

TEST_F(Figures, OfThePumpReachToTheEndOfTheDay) {
  change(
      {"INSERT INTO insulinpump (vdate, vtime, amount, [type], [desc], comment) "
       "VALUES (#3/4/2024#, #00:00:00#, 1, 1, '60', 'x')",
       "INSERT INTO insulinpump (vdate, vtime, amount, [type], [desc], comment) "
       "VALUES (#3/4/2024#, #23:59:30#, 5, 2, '', 'x')"});
  const std::vector<std::string> day{"pump-stats", file_, "--from", "2024-03-04", "--until", "2024-03-04", "--json"};
  EXPECT_THAT(said(day), AllOf(HasSubstr("\"boluses\":1,"), HasSubstr("\"basal_total\":24,")));
  EXPECT_THAT(said({"basal", file_, "--from", "2024-03-04", "--until", "2024-03-04"}), "24\n");
  std::vector<std::string> evening = day;
  evening.insert(evening.end(), {"--time-from", "12:00"});
  const Outcome outcome = run_patientdb(evening);
  EXPECT_THAT(outcome.out, HasSubstr("\"boluses\":0,"));
  EXPECT_THAT(outcome.err, HasSubstr("23:59:59 is taken as 23:59:00"));
}

TEST_F(Figures, OfAnIndexTellWhatItRequiresAndIgnores) {
  change({"CREATE TABLE t (a LONG, b LONG)", "CREATE INDEX needed ON t (a) WITH DISALLOW NULL",
          "CREATE UNIQUE INDEX loose ON t (b) WITH IGNORE NULL"});
  EXPECT_THAT(said({"schema", file_, "t"}),
              AllOf(HasSubstr("Index needed (a) required\n"), HasSubstr("Index loose (b) unique ignores Null\n")));
}

TEST_F(Figures, OfThePatientsInTheIndex) {
  const std::string index = folder_.file("index.mdb");
  said({"index", index, "create"});
  said({"index", index, "upgrade"});
  EXPECT_EQ(said({"index", index, "write", "0", "--name", "Neu", "--firstname", "Nils", "--birthday", "1950-05-06"}),
            "patient 1\n");
  EXPECT_EQ(said({"index", index, "refresh", "0", file_}), "patient 2\n");
  EXPECT_EQ(said({"sql", index, "SELECT id, name, dateofbirth, therapy, flag FROM index ORDER BY id", "--json"}),
            R"({"columns":["ID","Name","DateOfBirth","Therapy","flag"],)"
            R"("rows":[[1,"Neu","1950-05-06 00:00:00",0,0],[2,"Müller",null,2,3]],"affected":0})"
            "\n");
  EXPECT_EQ(said({"index", index, "delete", "1"}), "patient 1\n");
  EXPECT_THAT(said({"sql", index, "SELECT id FROM index", "--json"}), HasSubstr("\"rows\":[[2]],"));
  EXPECT_EQ(said({"index", index, "upgrade"}), "1 row without a patient database removed\n");
  EXPECT_THAT(said({"sql", index, "SELECT id FROM index", "--json"}), HasSubstr("\"rows\":[],"))
      << "no patient database lies beside the index";
}

TEST_F(Figures, AreNotShownForArgumentsThatCannotBe) {
  const struct {
    std::vector<std::string> arguments;
    std::string message;
  } cases[] = {
      {{"summary", file_, "--from", "2024-03-01"}, "--from and --until go together"},
      {{"summary", file_, "--from", "1.3.2024", "--until", "2024-03-02"}, "--from takes a day as YYYY-MM-DD"},
      {{"summary", file_, "--from", "2024-03-01", "--until", "2024-02-30"}, "--until takes a day of the calendar"},
      {{"summary", file_, "--from", "2024-03-02", "--until", "2024-03-01"}, "--until lies before --from"},
      {{"basal", file_, "--from", "2024-03-02", "--until", "2024-03-01"}, "--until lies before --from"},
      {{"pump-stats", file_, "--from", "2024-03-02", "--until", "2024-03-01"}, "--until lies before --from"},
      {{"summary", file_, "--time-from", "06:00", "--time-until", "12:00"}, "Times of day need --from and --until"},
      {{"summary", file_, "--time-from", "24:00"}, "--time-from takes a time as HH:MM"},
      {{"summary", file_, "--time-from", "06:60"}, "--time-from takes a time as HH:MM"},
      {{"summary", file_, "--weekdays", "1,8"}, "--weekdays takes weekday numbers"},
      {{"summary", file_, "--weekdays", "1,"}, "--weekdays takes weekday numbers"},
      {{"summary", file_, "--import-id", "-2"}, "--import-id takes"},
      {{"summary", "M\xFCller.das"}, "Argument 1 is not UTF-8"},
      {{"plan", file_, "--date", "2023-02-29"}, "--date takes a day of the calendar"},
      {{"index", folder_.file("index.mdb"), "write", "1x"}, "number is a whole number from 0"},
      {{"index", folder_.file("index.mdb"), "erase"}, "no action \"erase\""},
  };
  said({"index", folder_.file("index.mdb"), "create"});
  const std::string torn = folder_.write("torn.txt", std::string("bri\0mol", 7));
  const Outcome password = run_patientdb({"info", file_, "--password-file", torn});
  EXPECT_EQ(password.code, 2);
  EXPECT_THAT(password.err, HasSubstr("holds a NUL"));
  for (const auto& row : cases) {
    const Outcome outcome = run_patientdb(row.arguments);
    EXPECT_EQ(outcome.code, 2) << testing::PrintToString(row.arguments);
    EXPECT_THAT(outcome.err, HasSubstr(row.message)) << testing::PrintToString(row.arguments);
    EXPECT_EQ(outcome.out, "");
  }
}

}  // namespace
}  // namespace apps_test
