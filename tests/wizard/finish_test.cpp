// What the finish writes, in which order, and what it does not touch.
#include <filesystem>

#include "support/host.h"
#include "tests/wizard/wizard_test.h"

namespace wizard::testing {
namespace {

using ::testing::ElementsAreArray;
using ::testing::EndsWith;
using ::testing::StartsWith;

class Finish : public WizardTest {};

/// A whole typical run: the values from command line and pages become registry values, home page and database, and a
/// second run shows them again.
TEST_F(Finish, ATypicalRunFromTheCommandLineToTheDatabaseAndBack) {
  known_database("defs.mdb");
  execute(path("defs.mdb"), "DELETE FROM preferredInsulin");
  execute(path("defs.mdb"),
          "INSERT INTO preferredInsulin ([desc], bolusie, basalie, rapid) VALUES ('Lispro', 90, 0, -1)");
  write("pelmar.ini", "[CHARTS]\nday=1^2\nweek=3^4\npie=5^6\n");
  write("home.ini",
        "[setup]\nhomepage=Übersicht\n; Plätze\n[Übersicht]\nCHART1=0|0|day|1\nCHART2=1|0|week|28\nCHART3=\n");
  write("setup.ini", "[timezones]\nFixTimeFrom1=0530\n");
  set_value(support::RootKey::LocalMachine, installation_key, "PatientData", path("patients"));

  start("vantrix");
  go_to("Maßeinheit");
  choose("optBGUnit", 1);
  go_to("PatDat");
  enter_name("Jörg", "Müller/Maier");
  type("txtStreet", "Lindenstraße 7");
  choose("optGender", 1);
  select("cbDiabetesTyp", 2);
  select("cbTherapie", 4);
  go_to("Insulin");
  type("cbInsulin", "Basalin", 1);
  type("cbInsulin", "Lispro", 3);
  type("txtMedik", "Metformin", 1);
  go_to("Therapie_BZ");
  type("txtvorgabe", "4,4", 0);
  type("txtvorgabe", "135", 5);
  go_to("pics");
  tick(0, 0);
  tick(2);
  go_to("eingabe");
  choose("optDataEntry", 1);
  go_to("Fertig");
  const auto untouched = everything();
  const FinishReport preview = wizard().preview();
  EXPECT_EQ(everything(), untouched) << "a preview writes nothing";
  next();
  ASSERT_EQ(wizard().state(), frmAssistantFirstSteps::State::Finished);

  const std::string database = path("patients\\Müller_Maier_Jörg.das");
  EXPECT_TRUE(wizard().report().complete());
  EXPECT_THAT(lines(wizard().report()),
              ElementsAre("OutlookStyle=0", "DefaultDataEntry=EDIT_QUICKENTRY", "BGUnit=1",
                          "PATIENTDATA=" + path("patients"), "RunOnStart=mnu_patreview", "ShowOutlookbar=0",
                          "patient database", "laboratory definitions and preferred insulins", "patient", "settings",
                          "therapy plan", "[Übersicht] CHART1=0|0|week|1", "[Übersicht] CHART2=1|0|pie|28",
                          "DataBaseName=" + database, "FirstRun=0"));
  ASSERT_EQ(preview.entries.size(), wizard().report().entries.size());
  for (std::size_t n = 0; n < preview.entries.size(); ++n) {
    EXPECT_EQ(preview.entries[n].name, wizard().report().entries[n].name);
    EXPECT_EQ(preview.entries[n].value, wizard().report().entries[n].value);
    EXPECT_FALSE(preview.entries[n].written);
    EXPECT_EQ(preview.entries[n].problem + wizard().report().entries[n].problem, "") << preview.entries[n].name;
  }
  EXPECT_EQ(value(user_key, "BGUnit"), "1");
  EXPECT_EQ(value(std::string(user_key) + "\\DataEntry", "DefaultDataEntry"), "EDIT_QUICKENTRY");
  EXPECT_EQ(value(user_key, "FirstRun"), "0");
  EXPECT_EQ(value(installation_key, "DataBaseName"), database);
  EXPECT_EQ(value(installation_key, "Scheme"), std::nullopt);
  EXPECT_THAT(rows(database, "SELECT name, firstname, street, gender, typ, therapy FROM patdat"),
              ElementsAre("Müller/Maier|Jörg|Lindenstraße 7|1|2|4"));
  EXPECT_THAT(
      rows(database, "SELECT BGTargetMin, BGTargetMax, BGHypo, BGHyper, BPTargetSysMax, BB_From FROM patdat_setup"),
      ElementsAre("79|150|50|169|135|1899-12-30 05:30:00"));
  EXPECT_THAT(rows(database, "SELECT vdate, type FROM therapieplan"), ElementsAre("2024-05-17 00:00:00|4"));
  EXPECT_THAT(rows(database, "SELECT itemtype, [desc], itemvalue FROM therapieplan_details ORDER BY itemtype"),
              ElementsAre("1|Basalin|0|100|0|0", "3|Lispro|90|0|-1|0", "500||79", "501||150", "502||50", "503||169",
                          "504||100", "505||135", "506||70", "507||90", "801|Metformin|0"));
  EXPECT_THAT(rows(database, "SELECT [desc] FROM preferredInsulin"), ElementsAre("Lispro"));
  EXPECT_THAT(rows(database, "SELECT COUNT(*) FROM labdefs"), ElementsAre("15"));
  EXPECT_THAT(rows(database, "SELECT majversion, minversion FROM db_info"), ElementsAre("4|60"));

  now = engine::date_from(2024, 6, 1);
  start("vantrix|Müller_Maier_Jörg.das");
  EXPECT_EQ(text("txtName"), "Müller/Maier");
  EXPECT_EQ(control("optGender", 1).value(), 1);
  EXPECT_EQ(control("optBGUnit", 1).value(), 1);
  EXPECT_EQ(control("optDataEntry", 1).value(), 1);
  EXPECT_EQ(control("cbTherapie").selected_item_data(), 4);
  EXPECT_EQ(text("cbInsulin", 3), "Lispro");
  EXPECT_EQ(text("txtMedik", 1), "Metformin");
  EXPECT_EQ(text("txtvorgabe", 0), "4,4");
  EXPECT_EQ(text("txtvorgabe", 5), "135");
  finish();
  EXPECT_THAT(lines(wizard().report()), Not(Contains("patient database")));
  EXPECT_THAT(lines(wizard().report()), Not(Contains("therapy plan"))) << "nothing was changed";
  EXPECT_THAT(rows(database, "SELECT COUNT(*) FROM therapieplan"), ElementsAre("1"));
  EXPECT_THAT(rows(database, "SELECT COUNT(*) FROM patdat"), ElementsAre("1"));
}

TEST_F(Finish, ATargetThatIsNoNumberKeepsItsPreset) {
  start();
  enter_name();
  type("txtvorgabe", "hoch", 4);
  type("txtvorgabe", "99999", 5);
  finish();
  EXPECT_THAT(rows(path("patients\\Muster_Max.das"), "SELECT BPTargetSysMin, BPTargetSysMax FROM patdat_setup"),
              ElementsAre("100|130"));
  EXPECT_THAT(
      rows(path("patients\\Muster_Max.das"), "SELECT itemvalue FROM therapieplan_details WHERE itemtype IN (504, 505)"),
      ElementsAre("100", "130"));
}

TEST_F(Finish, ChangesOfAKnownDatabaseBecomeANewPlanThatKeepsTheRest) {
  const std::string database = known_database();
  execute(database, "UPDATE patdat SET id = 7, phone = '030 1', birthday = #5/6/1950#");
  execute(database,
          "INSERT INTO therapieplan_details (lid, itemtype, itemvalue) SELECT id, 400, 0.9 FROM therapieplan");
  start("vantrix|known.das");
  type("txtCity", "Bonn");
  type("txtvorgabe", "80", 0);
  finish();
  EXPECT_THAT(rows(database, "SELECT id, name, city, phone, birthday FROM patdat"),
              ElementsAre("7|Muster|Bonn|030 1|1950-05-06 00:00:00"));
  EXPECT_THAT(rows(database, "SELECT vdate FROM therapieplan ORDER BY vdate"),
              ElementsAre("2020-01-02 00:00:00", "2024-05-17 00:00:00"));
  EXPECT_THAT(rows(database,
                   "SELECT itemtype, [desc], itemvalue FROM therapieplan_details WHERE lid = 2 AND itemtype < 502"
                   " ORDER BY itemtype"),
              ElementsAre("0|Novorapid|100|0|0|0", "400||0,9", "500||80", "501||150"));
}

TEST_F(Finish, ZonesThatAKnownDatabaseLacksGetTheirDefaults) {
  const std::string database = known_database();
  for (const std::string column : {"BB_From", "BB_Until"}) {
    execute(database, "ALTER TABLE patdat_setup DROP COLUMN " + column);
    execute(database, "ALTER TABLE patdat_setup ADD COLUMN " + column + " DATETIME");
  }
  start("vantrix|known.das");
  go_to("Fertig");
  next();
  EXPECT_THAT(rows(database, "SELECT BB_From, BB_Until FROM patdat_setup"),
              ElementsAre("1899-12-30 06:00:00|1899-12-30 08:59:00"));
}

TEST_F(Finish, InsulinThatAnUnchangedTherapyDoesNotShowStaysInThePlan) {
  const std::string database = known_database();
  execute(database,
          "INSERT INTO therapieplan_details (lid, itemtype, [desc]) SELECT id, 4, 'Apidra|100|0|0' FROM therapieplan");
  const std::string insulins =
      "SELECT [desc] FROM therapieplan_details WHERE lid = (SELECT MAX(id) FROM therapieplan) AND itemtype < 5"
      " ORDER BY itemtype";
  start("vantrix|known.das");
  type("txtvorgabe", "80", 0);
  finish();
  EXPECT_THAT(rows(database, insulins), ElementsAre("Novorapid|100|0|0", "Apidra|100|0|0"));
  start("vantrix|known.das");
  select("cbTherapie", 5);
  finish();
  EXPECT_THAT(rows(database, insulins), IsEmpty()) << "a therapy without insulin was chosen";
  EXPECT_THAT(rows(database, "SELECT COUNT(*) FROM therapieplan"), ElementsAre("2")) << "one plan a day";
}

TEST_F(Finish, TheProfessionalEditionTouchesNoPatientDatabase) {
  set_value(support::RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\Pro", "PatientData", path("patients\\"));
  const std::string database = known_database();
  write("patients\\index.mdb", "x");
  const std::string content = read("patients\\known.das");
  start("Pro|known.das");
  choose("optShowStart", 2);
  finish();
  EXPECT_EQ(read("patients\\known.das"), content);
  EXPECT_THAT(lines(wizard().report()),
              ElementsAre("OutlookStyle=0", "DefaultDataEntry=EDIT_DIARY", "BGUnit=0", "RunOnStart=mnu_last",
                          "ShowOutlookbar=0", "DataBaseName=" + database, "FirstRun=0"));
}

TEST_F(Finish, TheProfessionalEditionReportsTheIndexThatItHadToCreate) {
  set_value(support::RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\Pro", "PatientData", path("patients\\"));
  start("Pro");
  finish();
  EXPECT_EQ(lines(wizard().report()).front(), "patient index");
  EXPECT_TRUE(support::file_test(support::host_file_system(), path("patients\\index.mdb")));
  start("Pro");
  finish();
  EXPECT_THAT(lines(wizard().report()), Not(Contains("patient index"))) << "it was there";

  set_value(support::RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\Pro", "PatientData", path("file\\"));
  write("file", "a file where the folder should be");
  start("Pro");
  finish();
  EXPECT_THAT(lines(wizard().report()), Contains(StartsWith("patient index (error ")));
}

/// The files that the report calls patient indexes, with "!" before those that were not written.
std::vector<std::string> reported_indexes(const FinishReport& report) {
  std::vector<std::string> found;
  for (const auto& entry : report.entries)
    if (entry.name == "patient index") found.push_back((entry.written ? "" : "!") + entry.place);
  return found;
}

TEST_F(Finish, AnIndexIsReportedUnderThePathThatItWasWrittenTo) {
  set_value(support::RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\Pro", "PatientData", path("local\\"));
  write("old\\index.mdb", "no database");
  write("file", "a file where a folder should be");
  start("Pro");
  const auto choose_folder = [this](int button, std::string_view folder) {
    user.chosen_folder = path(folder);
    wizard().click("cmdPath", button);
  };
  choose_folder(1, "old");
  finish();
  EXPECT_THAT(reported_indexes(wizard().report()), ElementsAre(path("local\\index.mdb")));
  EXPECT_EQ(read("old\\index.mdb"), "no database");

  start("Pro");
  support::host_file_system().create_folder(path("new"));
  choose_folder(0, "file");
  choose_folder(0, "new");
  finish();
  EXPECT_THAT(reported_indexes(wizard().report()), ElementsAre("!" + path("file\\index.mdb"), path("new\\index.mdb")));
}

/// Runs in a folder, because the numbered names have none: they mean files in the program's current folder.
class InFolder {
 public:
  explicit InFolder(const std::string& windows_path) : before_(std::filesystem::current_path()) {
    support::FileSystem& files = support::host_file_system();
    EXPECT_TRUE(files.create_folder(windows_path));
    const std::string host = files.host_path(windows_path);
    std::filesystem::current_path(std::filesystem::path(std::u8string(host.begin(), host.end())));
  }
  ~InFolder() { std::filesystem::current_path(before_); }
  InFolder(const InFolder&) = delete;
  InFolder& operator=(const InFolder&) = delete;

 private:
  std::filesystem::path before_;
};

TEST_F(Finish, ANewFileNeverTakesAnExistingOnesPlace) {
  write("patients\\Muster_Max.das", "");
  start();
  enter_name();
  go_to("Fertig");
  EXPECT_THAT(lines(wizard().preview()), Contains("DataBaseName=_1. ()"));

  const InFolder here{path("here")};
  for (int number = 1; number <= 100; ++number) {
    const std::string name = "_" + std::to_string(number) + ".";
    EXPECT_THAT(lines(wizard().preview()), Contains("DataBaseName=" + name + " ()"));
    write("here\\" + name, "somebody's data");
  }
  finish();
  EXPECT_THAT(lines(wizard().report()), Contains("patient database (no name is free for the new database)"));
  EXPECT_THAT(lines(wizard().report()), Not(Contains(StartsWith("patient="))));
  EXPECT_EQ(read("here\\_100."), "somebody's data");
}

TEST_F(Finish, NamesBeyondTheCodePageAreKeptInTheRecordAndFoundAgain) {
  struct Case {
    const char* first_name;
    const char* name;
    const char* file;
  };
  for (const Case& row : {Case{"Ayşe", "Şahinoğlu", "Sahinoglu_Ayse.das"}, Case{"Ania", "Żó", "Zó_Ania.das"},
                          Case{"Иван", "/O?", "_O______.das"}}) {
    start();
    enter_name(row.first_name, row.name);
    go_to("Fertig");
    const std::string database = path("patients\\") + row.file;
    EXPECT_THAT(lines(wizard().preview()), Contains("DataBaseName=" + database + " ()"));
    finish();
    EXPECT_TRUE(wizard().report().complete()) << row.name;
    EXPECT_EQ(value(installation_key, "DataBaseName"), database);
    EXPECT_THAT(rows(database, "SELECT firstname, name FROM patdat"),
                ElementsAre(std::string(row.first_name) + "|" + row.name));
    start("vantrix|" + std::string(row.file));
    EXPECT_EQ(wizard().config().CurrentDB, database);
    EXPECT_EQ(text("txtName"), row.name);
  }
}

/// An installation in a folder whose name the registry cannot hold.
class FinishBelowAForeignName : public Finish {
 protected:
  FinishBelowAForeignName() { write("Şahin\\vantrix.ini", "[setup]\nRegPath=vantrix\n"); }
  void adapt(Ports& ports) override { ports.own_folder = path("Şahin\\"); }
};

TEST_F(FinishBelowAForeignName, NoDatabaseIsMadeThatNothingPointsTo) {
  start();
  enter_name();
  finish();
  EXPECT_THAT(lines(wizard().report()),
              Contains("patient database (the registry cannot hold the path of this folder)"));
  EXPECT_FALSE(support::host_file_system().folder_exists(path("Şahin\\patients")));
  EXPECT_EQ(value(installation_key, "DataBaseName"), " ");
}

TEST_F(Finish, GoesOnWhereADatabaseCannotBeCreated) {
  write("patients", "a file where the folder should be");
  start();
  enter_name();
  finish();
  EXPECT_FALSE(wizard().report().complete());
  EXPECT_THAT(lines(wizard().report()), Contains(StartsWith("patient database (error ")));
  EXPECT_THAT(lines(wizard().report()), Not(Contains(StartsWith("settings"))));
  EXPECT_EQ(value(user_key, "FirstRun"), "0");
}

TEST_F(Finish, ASchemeThatChangedDiscardsToolbarsAndMenus) {
  write("schemes.txt", "[a]\n[b]\n");
  for (const char* file : {"user\\a.tb", "user\\b.mnu", "user\\c.txt"}) write(file, "x");
  known_database();
  start("vantrix|known.das");
  finish();
  EXPECT_THAT(user.log, Not(Contains(StartsWith("recycle"))));
  start("vantrix|known.das");
  select("cbSchema", 1);
  finish();
  EXPECT_EQ(value(installation_key, "Scheme"), "1");
  EXPECT_THAT(support::host_file_system().files(path("user"), "*"), ElementsAre("c.txt"));
  const auto& entries = wizard().report().entries;
  ASSERT_GE(entries.size(), 3U);
  EXPECT_EQ(entries[entries.size() - 2].place, path("user\\a.tb"));
  EXPECT_EQ(entries.back().place, path("user\\b.mnu"));
  EXPECT_TRUE(entries.back().written);

  write("user\\d.mnu", "x");
  user.recycles = false;
  start("vantrix|known.das");
  select("cbSchema", 0);
  finish();
  EXPECT_EQ(wizard().report().entries.back().place, path("user\\d.mnu"));
  EXPECT_THAT(lines(wizard().report()), Contains(" (was not moved to the recycle bin)"));
}

TEST_F(Finish, WithoutARecycleBinTheUserIsAskedWithTheNamesOfWhatWouldBeGone) {
  struct Row {
    int answer;
    std::vector<std::string> left;
    std::string_view said;
  };
  const std::string kept = "there is no recycle bin for it; it would be deleted for good";
  write("schemes.txt", "[a]\n[b]\n");
  known_database();
  user.recycle_bin = false;
  texts->given[6053] = "%1 gone:%2";
  int scheme = 0;
  for (const Row& row : {Row{7, {"a.tb", "b.mnu"}, kept}, Row{6, {}, "deleted for good"}}) {
    for (const char* file : {"user\\a.tb", "user\\b.mnu"}) write(file, "x");
    start("vantrix|known.das");
    scheme = 1 - scheme;
    select("cbSchema", scheme);
    user.log.clear();
    user.answers = {row.answer};
    finish();
    EXPECT_THAT(user.log, Contains("message " + path("user\\") + " gone:\r\na.tb\r\nb.mnu 4100 T4650"));
    EXPECT_THAT(support::host_file_system().files(path("user"), "*"), ElementsAreArray(row.left));
    const FinishReport::Entry& last = wizard().report().entries.back();
    EXPECT_EQ(row.answer == yes_button ? last.name : last.problem, row.said);
    EXPECT_EQ(last.written, row.answer == yes_button);
  }
}

TEST_F(Finish, ASchemeIsComparedAsANumber) {
  write("schemes.txt", "[a]\n[b]\n[c]\n");
  write("user\\a.tb", "x");
  known_database();
  for (const char* stored : {"02", " 2 ", "c"}) {
    set_value(support::RootKey::CurrentUser, installation_key, "Scheme", stored);
    start("vantrix|known.das");
    EXPECT_EQ(text("cbSchema"), "c") << stored;
    finish();
    EXPECT_EQ(value(installation_key, "Scheme"), stored) << "nothing was chosen";
  }
  EXPECT_EQ(read("user\\a.tb"), "x");
}

TEST_F(Finish, AGenderThatThePageDoesNotKnowIsKept) {
  const std::string database = known_database();
  execute(database, "UPDATE patdat SET gender = 2");
  start("vantrix|known.das");
  EXPECT_EQ(control("optGender", 0).value() + control("optGender", 1).value(), 0);
  finish();
  EXPECT_THAT(rows(database, "SELECT gender FROM patdat"), ElementsAre("2"));
  start("vantrix|known.das");
  choose("optGender", 1);
  finish();
  EXPECT_THAT(rows(database, "SELECT gender FROM patdat"), ElementsAre("1"));
}

class HomePage : public Finish {
 protected:
  /// Finishes a run in which these charts of day, week, pie, bar and odd are ticked; returns the slots afterwards.
  std::vector<std::string> slots(const std::string& home_page, const std::vector<int>& charts) {
    write("pelmar.ini", "[setup]\ndisplay=pics|Fertig\n[CHARTS]\nday=1^2\nweek=1^2\npie=1^2\nbar=1^2\nodd=1^2\n");
    write("home.ini", "[setup]\nhomepage=h\n[h]\n" + home_page);
    write("patients\\index.mdb", "x");
    start("Pro");
    for (int chart = 0; chart < 5; ++chart) {
      control("optThumb", chart).set_value(0);
      for (int wanted : charts)
        if (wanted == chart) tick(chart);
    }
    finish();
    std::vector<std::string> found;
    for (const auto& line : lines(wizard().report()))
      if (line.starts_with("[h] ")) found.push_back(line.substr(4));
    return found;
  }
};

TEST_F(HomePage, HoldsTheChosenChartsInOrder) {
  set_value(support::RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\Pro", "PatientData", path("patients\\"));
  EXPECT_THAT(slots("CHART1=0|0|day|1\n", {0, 2}), ElementsAre("CHART1=0|0|day|1", "CHART2=||pie"));
  EXPECT_THAT(slots("CHART1=a\nCHART2=1|2|odd\nCHART3=x|y|foreign\nCHART4=\nCHART5=3|4\n", {1}),
              ElementsAre("CHART1=a||week", "CHART2=1|2|"))
      << "an unticked chart leaves, a foreign one stays, an empty slot stays empty";
  EXPECT_THAT(slots("CHART1=0|0|day|1\n", {}), ElementsAre("CHART1=0|0||1"));
}

TEST_F(HomePage, ReportsChartsWhereTheFileNamesNone) {
  set_value(support::RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\Pro", "PatientData", path("patients\\"));
  write("pelmar.ini", "[setup]\ndisplay=pics|Fertig\n[CHARTS]\nday=1^2\n");
  write("patients\\index.mdb", "x");
  for (const bool ticked : {false, true}) {
    start("Pro");
    tick(0, ticked);
    finish();
    EXPECT_EQ(wizard().report().complete(), !ticked);
  }
  EXPECT_THAT(lines(wizard().report()), Contains("charts (the file names no home page)"));
}

TEST_F(HomePage, StaysAsItIsWhereThePageWasNeverShown) {
  set_value(support::RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\Pro", "PatientData", path("patients\\"));
  const std::string content = "[setup]\nhomepage=h\n[h]\nCHART1=0|0|day|1\n";
  write("pelmar.ini", "[setup]\ndisplay=INtro|Fertig\n[CHARTS]\nday=1^2\n");
  write("home.ini", content);
  write("patients\\index.mdb", "x");
  start("Pro");
  finish();
  EXPECT_EQ(read("home.ini"), content);
}

TEST_F(Finish, TheLastPageSumsUpEveryPagesChoices) {
  for (long line = 4831; line < 4855; ++line) texts->given[line] = std::to_string(line) + " %1/%2/%3/%4/%5";
  texts->given[4850] = "keine";
  write("pelmar.ini",
        "[setup]\ndisplay=netpath|Maßeinheit|PatDat|Insulin|Medikamente|Therapie_BZ|Therapie_BP|Pics|Eingabe|"
        "Darstellung|Schema|sidebar|start|Fertig\n[CHARTS]\nday=1^2\nweek=3^4\npie=5^6\n");
  write("home.ini", "[setup]\nhomepage=h\n[h]\n");
  write("schemes.txt", "[a]\nDesc=A\n");
  start();
  enter_name("%2", "O'Hara");
  type("txtStreet", "Lindenstraße 7");
  type("txtZIP", "10969");
  type("txtCity", "Berlin ");
  select("cbDiabetesTyp", 2);
  type("cbInsulin", "Actrapid", 0);
  type("cbInsulin", "Lantus", 1);
  go_to("Pics");
  tick(0);
  tick(2);
  go_to("Fertig");
  const std::string summary = text("lblSummary");
  const std::string rest = "/%2/%3/%4/%5\r\n";
  const std::string indent = "    ";
  EXPECT_EQ(summary, "4849 " + path("patients\\") + rest + "4834 T4751" + rest + "T4704:\r\n" + indent +
                         "4831 %2 O'Hara" + rest + indent + "4852 Lindenstraße 7, 10969 Berlin" + rest + indent +
                         "4853 T4746" + rest + indent + "4832 T4812" + rest + indent + "4833 keine" + rest + indent +
                         "4847 " + path("patients\\O'Hara_%2.das") + rest + "T4705:\r\n" + indent +
                         "T4766: Actrapid\r\n" + indent + "T4767: Lantus\r\n" + "4840 keine" + rest +
                         "4835 70/150/50/170/mg/dl\r\n4838 100/130/70/90/%5\r\n4841 T1, T5" + rest + "4842 T4777" +
                         rest + "4843 T4784" + rest + "4844 A" + rest + "4845 T4789" + rest + "4846 T4794/%2/%3/%4/%5");
  back();
  go_to("Fertig");
  EXPECT_EQ(text("lblSummary"), summary);
}

TEST_F(Finish, TheLastPageShowsWhatIsStoredNotWhatIsTyped) {
  texts->given = {{4835, "%1 %2 %3 %4 %5"}, {4838, "%1 %2 %3 %4"}};
  const std::string database = known_database();
  execute(database,
          "INSERT INTO therapieplan_details (lid, itemtype, [desc]) SELECT id, 4, 'Apidra|100|0|0' FROM therapieplan");
  start("vantrix|known.das");
  choose("optBGUnit", 1);
  type("txtvorgabe", "5,66", 0);
  type("txtvorgabe", "abc", 4);
  type("txtvorgabe", "99999", 5);
  type("txtvorgabe", "70,5", 6);
  type("cbInsulin", "Novo|Rapid", 0);
  go_to("Fertig");
  const std::string summary = text("lblSummary");
  for (const char* line : {"5,7 8,3 2,8 9,4 mmol/l", "100 130 70 90", "T4766: Novo Rapid\r\n    T4770: Apidra"})
    EXPECT_THAT(summary, ::testing::HasSubstr(line));
  next();
  EXPECT_THAT(rows(database, "SELECT BGTargetMin, BPTargetSysMin, BPTargetSysMax, BPTargetDiaMin FROM patdat_setup"),
              ElementsAre("102|100|130|70"));
  EXPECT_THAT(rows(database, "SELECT [desc] FROM therapieplan_details WHERE lid = 2 AND itemtype < 5"),
              ::testing::UnorderedElementsAre("Novo Rapid|100|0|0", "Apidra|100|0|0"));
}

TEST_F(Finish, EndsWithAPageThatSaysWhatWasWrittenAndWhere) {
  start();
  enter_name("Max", "Muster");
  go_to("Fertig");
  next();
  ASSERT_TRUE(wizard().report().complete());
  EXPECT_EQ(caption("lblHeading", 17), "T4924");
  for (const std::string& line :
       {"T6012\r\n    HKEY_CURRENT_USER\\" + std::string(user_key) + "\r\n",
        "T6003\r\nT6005\r\nT6006\r\nT6007\r\n    " + path("patients\\Muster_Max.das") + "\r\n"})
    EXPECT_THAT(text("lblSummary"), ::testing::HasSubstr(line));
  for (const int button : {1, 2}) EXPECT_FALSE(control("Command1", button).visible());
  EXPECT_EQ(caption("Command1", 0), "T6042");
}

TEST_F(Finish, ThatLacksSomethingDoesNotSayThatAllIsDone) {
  write("patients", "a file where the folder would be");
  start();
  enter_name("Max", "Muster");
  go_to("Fertig");
  next();
  ASSERT_FALSE(wizard().report().complete());
  EXPECT_NE(caption("lblHeading", 17), "T4924");
  EXPECT_TRUE(control("Command1", 2).visible());
}

}  // namespace
}  // namespace wizard::testing
