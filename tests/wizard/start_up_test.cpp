// How a run finds the installation that it configures.
#include "wizard/start_up.h"

#include "tests/wizard/wizard_test.h"

namespace wizard::testing {
namespace {

using support::RootKey;

class StartUp : public WizardTest {};

TEST(CommandLine, SplitsAtTheBars) {
  struct Case {
    const char* line;
    const char* name;
    const char* database;
  };
  for (const Case& row : {Case{"X", "X", ""}, Case{"X|P1.das", "X", "P1.das"}, Case{"|P1.das", "", "P1.das"},
                          Case{"X|P|Q", "X", "P"}, Case{"", "", ""}}) {
    EXPECT_EQ(command_line_field(row.line, 0), row.line);
    EXPECT_EQ(command_line_field(row.line, 1), row.name) << row.line;
    EXPECT_EQ(command_line_field(row.line, 2), row.database) << row.line;
  }
}

TEST_F(StartUp, EndsAtOnceWithoutInstallationNameAndCommandLine) {
  write("vantrix.ini", "[other]\nRegPath=x\n");
  EXPECT_EQ(start("X").config().RegPath, "X");
  user.log.clear();
  EXPECT_FALSE(try_start(""));
  EXPECT_THAT(user.log, ::testing::IsEmpty());
}

TEST_F(StartUp, TellsTheEditionByThreeLettersInTheName) {
  set_value(RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\vantrix Pro 5", "PatientData", path("pro"));
  for (const auto& [line, professional] : {std::pair{"vantrix", false}, {"vantrix Pro 5", true}, {"Produkt", true}})
    EXPECT_EQ(start(line).config().ProEdition, professional) << line;
}

TEST_F(StartUp, DerivesFoldersAndFilesFromTheProgramFolder) {
  const InstallationConfig& config = start().config();
  EXPECT_EQ(config.RegKey, installation_key);
  EXPECT_EQ(config.user_key(), user_key);
  EXPECT_EQ(config.Path, path(""));
  EXPECT_EQ(config.ImportDir, path("data\\incoming\\"));
  EXPECT_EQ(config.DataDir, path("data\\"));
  EXPECT_EQ(config.ModulesDir, path("modules\\"));
  EXPECT_EQ(config.LookupDB, path("defs.mdb"));
  EXPECT_EQ(config.PatientData, path("patients\\"));
  EXPECT_EQ(config.IndexDB, path("patients\\index.mdb"));
  EXPECT_EQ(config.COM, 1);
  EXPECT_EQ(config.Productname, "vantrix");
  EXPECT_EQ(config.User, "default");
  EXPECT_EQ(config.DefaultFont, "Tahoma");
  EXPECT_EQ(config.DBPassword, "brimol");
}

TEST_F(StartUp, TakesTheUsersRegistryOverTheMachines) {
  const auto machine = RootKey::LocalMachine, current_user = RootKey::CurrentUser;
  set_value(machine, installation_key, "Path", "C:\\Prog");
  set_value(machine, installation_key, "DataDir", "C:\\machine");
  set_value(current_user, installation_key, "DataDir", " C:\\user\\\\data ");
  set_value(machine, installation_key, "PatientData", "\\\\server\\share\\\\patients");
  set_value(machine, installation_key, "COM", "7");
  set_value(current_user, installation_key, "Helpfile", "C:\\user.hlp");
  set_value(machine, installation_key, "Manual", "C:\\manual.pdf");
  set_value(machine, std::string(installation_key) + "\\Setup", "Productname", "Tagebuch");
  set_value(current_user, installation_key, "User", "eva");
  write("setup.ini", "[setup]\nfont=Verdana\n");
  const InstallationConfig& config = start().config();
  EXPECT_EQ(config.Path, "C:\\Prog\\");
  EXPECT_EQ(config.ImportDir, "C:\\Prog\\data\\incoming\\");
  EXPECT_EQ(config.DataDir, "C:\\user\\data");
  EXPECT_EQ(config.PatientData, "\\\\server\\share\\patients");
  EXPECT_EQ(config.IndexDB, "\\\\server\\share\\patients\\index.mdb");
  EXPECT_EQ(config.COM, 1) << "the port is the user's";
  EXPECT_EQ(config.Helpfile, "") << "the help file is the machine's";
  EXPECT_EQ(config.Manual, "C:\\manual.pdf");
  EXPECT_EQ(config.Productname, "Tagebuch");
  EXPECT_EQ(config.User, "eva");
  EXPECT_EQ(config.DefaultFont, "Verdana");
}

TEST_F(StartUp, FindsTheCurrentDatabaseInTheSettingsThenOnTheCommandLine) {
  write("patients\\P1.das", "x");
  write("patients\\empty.das", "");
  EXPECT_EQ(start("vantrix|P1.das").config().CurrentDB, path("patients\\P1.das"));
  EXPECT_EQ(start("vantrix|other.das").config().CurrentDB, "");
  EXPECT_EQ(start("vantrix|empty.das").config().CurrentDB, "") << "an empty file counts as missing";
  EXPECT_EQ(start("vantrix").config().CurrentDB, "");
  write("mine.das", "x");
  write("setup.ini", "[setup]\nCurrentDB=" + path("\\mine.das") + "\n");
  EXPECT_EQ(start("vantrix|P1.das").config().CurrentDB, path("mine.das"));
}

TEST_F(StartUp, CreatesAMissingIndexInTheProfessionalEditionOnly) {
  support::host_file_system().create_folder(path("patients"));
  start("vantrix");
  EXPECT_FALSE(support::host_file_system().file_size(path("patients\\index.mdb")));
  start("vantrix Pro");
  EXPECT_TRUE(support::file_test(support::host_file_system(), path("patients\\index.mdb")));
  const std::string content = read("patients\\index.mdb");
  start("vantrix Pro");
  EXPECT_EQ(read("patients\\index.mdb"), content);
}

TEST_F(StartUp, DressesTheFormWithTextsAndColours) {
  texts->given[4651] = "Willkommen bei %1";
  start();
  EXPECT_EQ(caption("Label2"), "Willkommen bei vantrix");
  EXPECT_EQ(caption("lblName"), "T4741");
  EXPECT_EQ(wizard().form().caption(), "T4650");
  EXPECT_EQ(control("pbar").colours(), (form::Colours{0xFF0000, 0xFFFFFF}));
  EXPECT_EQ(control("txtName").font(), "Tahoma");
  EXPECT_THAT(user.log, Contains("topmost"));
}

TEST_F(StartUp, TheProfessionalEditionSaysThatTheIndexIsCreatedAtOnce) {
  EXPECT_EQ((start("vantrix"), caption("lblIntro")), "T4803");
  EXPECT_EQ((start("vantrix Pro"), caption("lblIntro")), "T4819");
}

TEST_F(StartUp, F1OpensTheHelpFileWhereItExists) {
  set_value(RootKey::LocalMachine, installation_key, "Helpfile", path("help\\\\diary.chm"));
  start();
  user.log.clear();
  wizard().help();
  EXPECT_THAT(user.log, ::testing::IsEmpty());
  write("help\\diary.chm", "x");
  for (const char* page : {"Intro", "Maßeinheit"}) {
    go_to(page);
    wizard().help();
    EXPECT_EQ(user.log.back(), "open " + path("help\\diary.chm")) << page;
  }
}

TEST_F(StartUp, SpeaksGermanWithoutALanguageComponent) {
  texts = nullptr;
  write("pelmar.ini", "[setup]\ndisplay=Intro|PatDat|Pics|Fertig\n[CHARTS]\nday=5100^5101\n");
  start();
  EXPECT_EQ(caption("Label2"), "Willkommen bei vantrix");
  EXPECT_EQ(caption("lblIntro"), "Sie brauchen dafür nur wenige Minuten.") << "as designed";
  EXPECT_EQ(caption("Command1", 0), "&Weiter >");
  EXPECT_EQ(caption("lblLocation"), "Die Patientendaten liegen auf diesem Computer.");
  go_to("PatDat");
  next();
  EXPECT_EQ(user.log.back(), "message Bitte geben Sie Ihren Vornamen ein. 4112 Erste Schritte");
  EXPECT_EQ(control("cbDiabetesTyp").items().front().text, "Typ 1");
  enter_name();
  go_to("Pics");
  wizard().click("optThumb", 0);
  EXPECT_EQ(caption("lblChartInfoTitle"), "Blutzucker des Tages");
  go_to("Fertig");
  EXPECT_EQ(caption("Command1", 0), "&Fertigstellen");
  EXPECT_THAT(text("lblSummary"), ::testing::HasSubstr("Name: Max Muster"));
  EXPECT_THAT(text("lblSummary"), ::testing::HasSubstr("Diagramme der Startseite: "));
  cancel();
  EXPECT_THAT(user.log.back(), ::testing::StartsWith("message Möchten Sie die Einrichtung wirklich abbrechen?"));
}

TEST_F(StartUp, ATextThatTheLanguageComponentLacksIsGerman) {
  texts->given[607] = "";
  start();
  go_to("PatDat");
  next();
  EXPECT_EQ(user.log.back(), "message Bitte geben Sie Ihren Vornamen ein. 4112 T4650");
  enter_name("Max", "");
  next();
  EXPECT_EQ(user.log.back(), "message T606 4112 T4650");
}

TEST_F(StartUp, SurvivesFilesThatHoldRubbish) {
  const std::string rubbish = std::string(20000, '\x01') + "[setup]\nRegPath=" + std::string(5000, 'x') + '\0';
  for (const char* file : {"setup.ini", "pelmar.ini", "home.ini", "schemes.txt"}) write(file, rubbish);
  write("defs.mdb", "no database");
  write("patients\\P1.das", "no database either");
  start("vantrix|P1.das");
  EXPECT_EQ(wizard().StepName(), "INtro");
  EXPECT_EQ(text("txtName"), "");
  EXPECT_EQ(text("txtvorgabe", 3), "170");
  go_to("PatDat");
  enter_name();
  finish();
  EXPECT_EQ(read("patients\\P1.das"), "no database either");
  EXPECT_THAT(lines(wizard().report()), Contains("patient (the database could not be read)"));
}

}  // namespace
}  // namespace wizard::testing
