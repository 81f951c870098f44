#include "tests/apps/program_run.h"

namespace apps_test {
namespace {

const std::string good_answers =
    "[Maßeinheit]\noptBGUnit=1\n"
    "[PatDat]\ntxtFirstName=Jörg\ntxtName=Müller\noptGender=1\ncbDiabetesTyp=2\ncbTherapie=4\n"
    "[Insulin]\ncbInsulin(0)=Ein Bolus-Insulin\n"
    "[Medikamente]\ntxtMedik(0)=Metformin\n"
    "[Therapie_BZ]\ntxtvorgabe(0)=4,4\ntxtvorgabe(1)=8,3\ntxtvorgabe(2)=3,5\ntxtvorgabe(3)=10\n"
    "[Therapie_BP]\ntxtvorgabe(0)=105\n"
    "[Pics]\noptThumb=trend|day\n"
    "[Eingabe]\noptDataEntry=1\n"
    "[sidebar]\noptShowSideBar=1\n";

/// An installation of the standard edition with five charts, and its hive.
class Batch : public testing::Test {
 protected:
  Batch() {
    folder_.write("vantrix.ini", "[setup]\r\nRegPath=vantrix\r\n");
    folder_.write("pelmar.ini",
                  "[CHARTS]\r\nday=5100^5101\r\ntrend=5102^5103\r\nrange=5104^5105\r\nhba1c=5112^5113\r\n"
                  "basal=5116^5117\r\n");
    folder_.write("home.ini", "[setup]\r\nhomepage=H\r\n[H]\r\nCHART1=0|0|range|1\r\nCHART2=\r\n");
  }

  Outcome run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--program-dir", folder_.file("."), "--registry", hive()});
    return run_batch(arguments);
  }
  Outcome run_with(const std::string& answers, std::vector<std::string> arguments = {}) const {
    arguments.insert(arguments.end(), {"--answers", outside_.write("answers.ini", answers)});
    return run(std::move(arguments));
  }
  std::string hive() const { return folder_.file("registry.reg"); }
  std::string database() const { return folder_.file("patients/Müller_Jörg.das"); }
  std::string query(const std::string& sql) const { return run_patientdb({"sql", database(), sql, "--json"}).out; }

  TemporaryFolder folder_, outside_;
};

TEST_F(Batch, DoesTheWholeJobAndFindsItsResultTheNextTime) {
  const Outcome first = run_with(good_answers, {"--json"});
  ASSERT_EQ(first.code, 0) << first.err << first.out;
  EXPECT_EQ(first.err, "");
  EXPECT_THAT(first.out, AllOf(StartsWith(R"({"dry_run":false,"complete":true,"entries":[{"what":"registry",)"),
                               HasSubstr(R"("name":"BGUnit","value":"1","written":true,"problem":"")"),
                               HasSubstr(R"("what":"ini")"), HasSubstr(R"("name":"patient database")")));
  EXPECT_THAT(content_of(hive()),
              AllOf(HasSubstr("\"BGUnit\"=\"1\""), HasSubstr("\"DefaultDataEntry\"=\"EDIT_QUICKENTRY\""),
                    HasSubstr("\"ShowOutlookbar\"=\"1\""), HasSubstr("\"FirstRun\"=\"0\"")));
  EXPECT_THAT(query("SELECT name, firstname, gender, typ, therapy FROM patdat"),
              HasSubstr(R"("rows":[["Müller","Jörg",1,2,4]])"));
  EXPECT_THAT(
      query("SELECT BGTargetMin, BGTargetMax, BGHypo, BGHyper, BPTargetSysMin, BPTargetSysMax FROM patdat_setup"),
      HasSubstr(R"("rows":[[79,150,63,180,105,130]])"));
  EXPECT_THAT(query("SELECT count(*) AS n FROM therapieplan"), HasSubstr(R"("rows":[[1]])"));
  EXPECT_THAT(content_of(folder_.file("home.ini")),
              AllOf(HasSubstr("|day|"), HasSubstr("trend"), Not(HasSubstr("range"))));

  const Outcome second = run({"vantrix|Müller_Jörg.das"});
  ASSERT_EQ(second.code, 0) << second.err << second.out;
  EXPECT_THAT(second.out, AllOf(StartsWith("Written:\n"), Not(HasSubstr("patient database"))));
  EXPECT_THAT(query("SELECT name, firstname, gender, typ, therapy FROM patdat"),
              HasSubstr(R"("rows":[["Müller","Jörg",1,2,4]])"));
  EXPECT_THAT(query("SELECT count(*) AS n FROM therapieplan"), HasSubstr(R"("rows":[[1]])"));
}

TEST_F(Batch, ADryRunSaysWhatWouldBeWrittenAndWritesNothing) {
  const auto before = folder_.snapshot();
  const Outcome outcome = run_with(good_answers, {"--dry-run"});
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(outcome.out,
              AllOf(StartsWith("Would be written:\n"), HasSubstr("EDIT_QUICKENTRY"), HasSubstr("Müller_Jörg.das")));
  EXPECT_THAT(run_with(good_answers, {"--dry-run", "--json"}).out, Not(HasSubstr("\"written\":true")));
  EXPECT_EQ(folder_.snapshot(), before);
}

TEST_F(Batch, RefusesAnswersBeforeAnythingIsWritten) {
  struct Case {
    std::string answers;
    int code;
    std::string message;
  };
  const std::string named = "[PatDat]\ntxtFirstName=J\ntxtName=M\n";
  const Case cases[] = {
      {"[Patient]\n", 2, "answers.ini, line 1: there is no page [Patient]"},
      {"[PatDat]\n\ntxtNam=x", 2, "answers.ini, line 3: [PatDat] txtNam: the page has no such control"},
      {"[Intro]\ntxtName=x", 2, "[Intro] txtName: the page has no such control"},
      {"[Therapie_BP]\ntxtvorgabe(8)=1", 2, "txtvorgabe(8): the page has no such control"},
      {"[PatDat]\ntxtName(0)=x", 2, "txtName(0): the page has no such control"},
      {"[Insulin]\ncbInsulin=x", 2, "needs the index"},
      {"[Maßeinheit]\noptBGUnit(1)=1", 2, "answered as a whole: optBGUnit="},
      {"[Intro]\nlblIntro=x", 2, "takes no answer"},
      {"[Pics]\ncmdViwPic=1", 2, "takes no answer"},
      {"[Fertig]\nlblSummary=1", 2, "takes no answer"},
      {"[Maßeinheit]\noptBGUnit=2", 2, "there is no option \"2\""},
      {"[Maßeinheit]\noptBGUnit=", 2, "there is no option \"\""},
      {"[PatDat]\ncbTherapie=6", 2, "the list has no entry \"6\"; it has 1 ("},
      {"[PatDat]\ntxtName=" + std::string(51, 'x'), 2, "at most 50 characters"},
      {named + "cbTherapie=1\n[Insulin]\ncbInsulin(4)=x", 2, "[Insulin] cbInsulin(4): is not offered here"},
      {named + "[Pics]\noptThumb=day|nothing", 2, "there is no chart \"nothing\""},
      {named + "[Pics]\noptThumb=day|trend|range|hba1c|basal", 2, "the chart basal is one too many"},
      {"txtName=x", 2, "answers.ini, line 1: an answer before the first page"},
      {"", 3, "The page Patdat refuses its answers: "},
      {"[PatDat]\ntxtFirstName=J\ntxtName=", 3, "The page Patdat refuses its answers: "},
      {named + "[Therapie_BZ]\ntxtvorgabe(0)=viel", 3, "The page Therapie_bz refuses its answers: "},
      {named + "[Therapie_BZ]\ntxtvorgabe(0)=160", 3, "The page Therapie_bz refuses its answers: "},
  };
  const auto before = folder_.snapshot();
  for (const Case& row : cases) {
    const Outcome outcome = run_with(row.answers);
    EXPECT_EQ(outcome.code, row.code) << row.message << '\n' << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr(row.message));
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(folder_.snapshot(), before) << row.message;
  }
}

TEST_F(Batch, RefusesADamagedInstallationAndTouchesNothing) {
  const std::string patient = folder_.file("patients/P.das");
  folder_.write("patients/text.das", "no database");
  ASSERT_EQ(run_patientdb({"create", patient}, {{"PATIENTDB_PASSWORD", "another"}}).code, 0);
  struct Case {
    std::vector<std::string> arguments;
    std::string file, content;
    int code;
    std::string message;
  };
  const std::string huge(5 << 20, ';'), binary("[setup]\n\0\1\2", 11);
  const Case cases[] = {
      {{"--locale", "xx"}, "", "", 2, "no locale \"xx\""},
      {{"vantrix", "more"}, "", "", 2, "one argument too many"},
      {{"--answers", outside_.file("none.ini")}, "", "", 2, "none.ini cannot be read: there is no such file."},
      {{"--answers", outside_.write("huge.ini", huge)}, "", "", 2, "huge.ini is too large: more than 1 MiB."},
      {{}, "vantrix.ini", "", 2, "No installation is named"},
      {{}, "vantrix.ini", binary, 2, "vantrix.ini: this is no text file"},
      {{}, "pelmar.ini", huge, 2, "pelmar.ini: too large"},
      {{}, "registry.reg", "REGEDIT4\r\n[HKEY_CURRENT_USER\\X\r\n", 2, "registry.reg"},
      {{"vantrix|P.das"}, "", "", 1, "error 3031: "},
      {{"vantrix|text.das"}, "", "", 1, "error 3343: "},
  };
  const auto intact = folder_.snapshot();
  const std::string answers = outside_.write("answers.ini", good_answers);
  for (const Case& row : cases) {
    std::string kept;
    if (!row.file.empty()) {
      kept = content_of(folder_.file(row.file));
      folder_.write(row.file, row.content);
    }
    const auto before = folder_.snapshot();
    std::vector<std::string> arguments = row.arguments;
    if (arguments.empty() || arguments.front() != "--answers")
      arguments.insert(arguments.end(), {"--answers", answers});
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.code, row.code) << row.message << '\n' << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr(row.message));
    EXPECT_EQ(folder_.snapshot(), before) << row.message;
    if (!row.file.empty()) folder_.write(row.file, kept);
    if (kept.empty() && row.file == "registry.reg") std::filesystem::remove(folder_.path() / row.file);
  }
  EXPECT_EQ(folder_.snapshot(), intact);
  const Outcome nowhere = run_batch({"--program-dir", outside_.file("nowhere")});
  EXPECT_EQ(nowhere.code, 2);
  EXPECT_THAT(nowhere.err, HasSubstr("nowhere cannot be read: "));
}

TEST_F(Batch, TellsWhatCouldNotBeWrittenAndGoesOn) {
  // A file lies where the patients' folder should be.
  folder_.write("patients", "in the way");
  const Outcome outcome = run_with(good_answers);
  EXPECT_EQ(outcome.code, 1) << outcome.err;
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("\nNot written:\n"), HasSubstr("patient database: error 3")));
  EXPECT_THAT(content_of(hive()), HasSubstr("\"FirstRun\"=\"0\""));
  EXPECT_EQ(content_of(folder_.file("patients")), "in the way");
}

TEST_F(Batch, TellsWhichFileASettingCouldNotBeWrittenTo) {
  using std::filesystem::perm_options;
  ASSERT_EQ(run_with(good_answers).code, 0);
  const auto before = content_of(hive());
  std::filesystem::permissions(hive(), std::filesystem::perms::owner_write, perm_options::remove);
  const Outcome outcome = run_with("[PatDat]\ntxtName=N\ntxtFirstName=J\n");
  std::filesystem::permissions(hive(), std::filesystem::perms::owner_write, perm_options::add);
  EXPECT_EQ(outcome.code, 1) << outcome.err;
  EXPECT_THAT(outcome.out, AllOf(HasSubstr("DataBaseName: error 75: Cannot write "), HasSubstr("registry.reg: ")));
  EXPECT_EQ(content_of(hive()), before);
}

TEST_F(Batch, WarnsOfWhatIsStoredOtherwiseAndStoresItAllTheSame) {
  const std::string named = "[PatDat]\ntxtFirstName=Jörg\ntxtName=Müller\n";
  EXPECT_THAT(run_with(named, {"--dry-run", "--json"}).out, HasSubstr(R"("warnings":[],"messages":[])"));
  EXPECT_THAT(run_with(named, {"--dry-run"}).out, Not(HasSubstr("Warnings")));

  const std::string answers = named + "[Therapie_BP]\ntxtvorgabe(0)=abc\ntxtvorgabe(1)=140,4\n";
  const std::string warnings =
      R"json("warnings":[{"severity":"warning","page":"Therapie_BP","control":"txtvorgabe(4)","text":)json"
      R"json("„Oberer Wert (systolisch) von“: „abc“ ist keine Zahl, mit der das Programm rechnen kann. Es bleibt bei 100."},)json"
      R"json({"severity":"note","page":"Therapie_BP","control":"txtvorgabe(5)","text":)json"
      R"json("„Oberer Wert (systolisch) bis“: Statt 140,4 wird 140 gespeichert."}],)json";
  EXPECT_THAT(run_with(answers, {"--dry-run", "--json"}).out, HasSubstr(warnings));
  EXPECT_THAT(run_with(answers, {"--dry-run"}).out,
              HasSubstr("\nWarnings:\n  warning: [Therapie_BP] txtvorgabe(4): „Oberer Wert"));
  const Outcome outcome = run_with(answers, {"--json"});
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr(warnings));
  EXPECT_THAT(query("SELECT BPTargetSysMin, BPTargetSysMax FROM patdat_setup"), HasSubstr("[[100,140]]"));
  // A rehearsal finds the same surroundings as the run.
  EXPECT_THAT(run_with(named, {"--dry-run", "--json"}).out, HasSubstr("Müller_Jörg.das gibt es schon"));
}

TEST_F(Batch, SaysWhichAnswersWereOfNoUse) {
  const Outcome outcome = run_with("[PatDat]\ntxtName=M\ntxtFirstName=J\ncbTherapie=5\n[Insulin]\ncbInsulin(0)=x\n");
  EXPECT_EQ(outcome.code, 0) << outcome.err;
  EXPECT_THAT(outcome.err, HasSubstr("answers for the page Insulin were not used"));
}

TEST_F(Batch, ReadsNumbersInTheLocaleAskedFor) {
  const std::string answers =
      "[Maßeinheit]\noptBGUnit=1\n[PatDat]\ntxtName=M\ntxtFirstName=J\n[Therapie_BZ]\ntxtvorgabe(1)=8.3\n";
  ASSERT_EQ(run_with(answers, {"--locale", "en_US"}).code, 0);
  const std::string settings =
      run_patientdb({"sql", folder_.file("patients/M_J.das"), "SELECT BGTargetMax FROM patdat_setup", "--json"}).out;
  EXPECT_THAT(settings, HasSubstr("[[150]]"));
}

TEST_F(Batch, AProfessionalInstallationTakesAFolderAsAnswer) {
  folder_.write("vantrix.ini", "[setup]\r\nRegPath=vantrix Pro\r\n");
  const std::filesystem::path shared = outside_.path() / "shared";
  std::filesystem::create_directories(shared);
  const std::string page = "[netpath]\ncmdPath(0)=";
  EXPECT_THAT(run_with(page + outside_.file("none")).err, HasSubstr("[netpath] cmdPath(0): there is no folder"));
  EXPECT_FALSE(std::filesystem::exists(folder_.path() / "patients"));
  const Outcome outcome = run_with(page + outside_.file("shared") + "\n[start]\noptShowStart=2\n");
  ASSERT_EQ(outcome.code, 0) << outcome.err << outcome.out;
  EXPECT_TRUE(std::filesystem::exists(shared / "index.mdb"));
  EXPECT_THAT(outcome.out, HasSubstr("mnu_last"));
  const Outcome again = run_with(page + outside_.file("shared"));
  EXPECT_EQ(again.code, 3);
  EXPECT_THAT(again.err, HasSubstr("The page netpath refuses its answers: "));
}

}  // namespace
}  // namespace apps_test
