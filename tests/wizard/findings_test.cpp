// The findings about the choices and the surroundings, and where they are shown.
#include <filesystem>

#include "support/host.h"
#include "tests/wizard/wizard_test.h"

namespace wizard::testing {
namespace {

class FindingsTest : public WizardTest {
 protected:
  /// "number:value|value" of each finding on the last page, with "~" before a note.
  std::vector<std::string> found() { return as_lines(wizard().findings()); }
  std::vector<std::string> found_on_page() { return as_lines(wizard().page_findings()); }
  static std::vector<std::string> as_lines(const Findings& findings) {
    std::vector<std::string> list;
    for (const Finding& finding : findings) {
      std::string line = (finding.severity == Severity::Note ? "~" : "") + std::to_string(finding.text);
      for (std::size_t n = 0; n < finding.values.size(); ++n) line += (n == 0 ? ":" : "|") + finding.values[n];
      list.push_back(line);
    }
    return list;
  }
  std::vector<std::string> found_at_the_end() {
    go_to("Fertig");
    return found();
  }
};

TEST_F(FindingsTest, AnOrdinaryRunHasNone) {
  start();
  enter_name();
  EXPECT_THAT(found_at_the_end(), IsEmpty());
  known_database();
  start("vantrix|known.das");
  EXPECT_THAT(found_at_the_end(), IsEmpty());
}

struct Typed {
  const char* text;
  int field;
  std::vector<std::string> found;
};

TEST_F(FindingsTest, ABloodPressureIsStoredAsTypedOrToldOf) {
  // The presets are 100 to 130 and 70 to 90.
  for (const auto& [text, field, expected] : {
           Typed{"abc", 4, {"4864:T4761|abc|100"}},
           Typed{"", 6, {"4869:T4763|70"}},
           Typed{"99999", 5, {"4865:T4762|99999|130"}},
           Typed{"-40000", 5, {"4865:T4762|-40000|130"}},
           Typed{"110,6", 4, {"~4866:T4761|110,6|111"}},
           Typed{"140", 4, {"4867:T4761|140|T4762|130"}},
           Typed{"130", 4, {"4867:T4761|130|T4762|130"}},
           Typed{"95", 6, {"4867:T4763|95|T4764|90"}},
           Typed{"131", 7, {"4867:T4764|131|T4762|130"}},
           Typed{"7", 4, {"4868:T4761|7"}},
           Typed{"300", 5, {"4868:T4762|300"}},
           Typed{"12", 6, {"4868:T4763|12"}},
           Typed{" 105 ", 4, {}},
           Typed{"1234567890", 4, {"4865:T4761|1234567890|100", "4861:T4761|10"}},
       }) {
    start();
    enter_name();
    go_to("Therapie_BP");
    type("txtvorgabe", text, field);
    EXPECT_EQ(found_on_page(), expected) << text;
    for (const Finding& finding : wizard().page_findings())
      EXPECT_EQ(finding.control, "txtvorgabe(" + std::to_string(field) + ")") << text;
    EXPECT_EQ(found_at_the_end(), expected) << text;
  }
}

TEST_F(FindingsTest, AGlucoseTargetInTheWrongUnitIsAskedAbout) {
  struct Case {
    int unit;
    std::array<const char*, 4> targets;
    std::vector<std::string> found;
  };
  for (const Case& row : {
           Case{1,
                {"70", "150", "50", "170"},
                {"4870:T4756|70|mmol/l", "4870:T4757|150|mmol/l", "4870:T4758|50|mmol/l", "4870:T4759|170|mmol/l"}},
           Case{0,
                {"4", "8", "3", "10"},
                {"4871:T4756|4|mg/dl", "4871:T4757|8|mg/dl", "4871:T4758|3|mg/dl", "4871:T4759|10|mg/dl"}},
           Case{0, {"70", "150", "50", "900"}, {"4872:T4759|900|mg/dl"}},
           Case{1, {"4,4", "8,3", "1", "10"}, {"4872:T4758|1|mmol/l"}},
           Case{1, {"4,44", "8,3", "2,8", "10,0"}, {"~4866:T4756|4,44|4,4"}},
           Case{0, {"70,4", "150", "50", "170"}, {"~4866:T4756|70,4|70"}},
           Case{1, {"4,4", "8,3", "2,8", "10"}, {}},
       }) {
    start();
    enter_name();
    choose("optBGUnit", row.unit);
    go_to("Therapie_BZ");
    for (int field = 0; field < 4; ++field) type("txtvorgabe", row.targets[static_cast<std::size_t>(field)], field);
    EXPECT_EQ(found_at_the_end(), row.found) << row.targets[0];
  }
}

TEST_F(FindingsTest, APatientWhoseDetailsDoNotGoTogether) {
  start();
  enter_name("Ayşe", "Şahinoğlu");
  go_to("PatDat");
  select("cbDiabetesTyp", 3);
  EXPECT_THAT(found_on_page(), ElementsAre("~4862:Sahinoglu_Ayse.das"));
  choose("optGender", 1);
  EXPECT_EQ(found_on_page().size(), 2u);
  type("txtCity", std::string(50, 'x'));
  EXPECT_THAT(found_at_the_end(), ElementsAre("4860:T4813|T4747", "~4862:Sahinoglu_Ayse.das", "4861:T4744|50"));
  EXPECT_THAT(text("lblSummary"), HasSubstr("T4857\r\n  - T4704: T4855\r\n  - T4704: T4856"));
  choose("optGender", 0);
  type("txtCity", std::string(49, 'x'));
  enter_name();
  back();
  EXPECT_THAT(found_at_the_end(), IsEmpty());
}

TEST_F(FindingsTest, AnInsulinThatThePlanDoesNotHold) {
  start();
  enter_name();
  type("cbInsulin", "Actrapid|30", 0);
  type("cbInsulin", "Apidra", 4);
  EXPECT_THAT(found_at_the_end(), ElementsAre("~4890:Actrapid|30|Actrapid 30"));
  select("cbTherapie", 2);
  back();
  EXPECT_THAT(found_at_the_end(), ElementsAre("~4890:Actrapid|30|Actrapid 30", "4889:Apidra|T4822"));
  select("cbTherapie", 5);
  back();
  EXPECT_THAT(found_at_the_end(), ElementsAre("4889:Actrapid|30|T4825", "4889:Apidra|T4825"));

  const std::string database = known_database();
  execute(database, "UPDATE patdat SET therapy = 5");
  start("vantrix|known.das");
  EXPECT_THAT(found_at_the_end(), ElementsAre("~4891:Novorapid|T4825")) << "the plan has it, nobody typed it";
}

/// Files of which some cannot be written, on a disk with little room.
class Walls : public support::FileSystem {
 public:
  std::string protected_folder, protected_file;
  std::optional<std::uint64_t> room;

  bool can_create_in(std::string_view folder) const override {
    return folder != protected_folder && host_.can_create_in(folder);
  }
  bool can_write(std::string_view path) const override { return path != protected_file && host_.can_write(path); }
  std::optional<std::uint64_t> free_space(std::string_view folder) const override {
    return room ? room : host_.free_space(folder);
  }
  std::optional<std::uint64_t> file_size(std::string_view path) const override { return host_.file_size(path); }
  bool folder_exists(std::string_view path) const override { return host_.folder_exists(path); }
  bool create_folder(std::string_view path) override { return host_.create_folder(path); }
  std::vector<std::string> files(std::string_view folder, std::string_view pattern) const override {
    return host_.files(folder, pattern);
  }
  std::optional<std::string> read(std::string_view path, std::uint64_t limit) const override {
    return host_.read(path, limit);
  }
  bool rename_without_replacing(std::string_view source, std::string_view target) override {
    return host_.rename_without_replacing(source, target);
  }
  bool remove(std::string_view path) override { return host_.remove(path); }
  std::string host_path(std::string_view path) const override { return host_.host_path(path); }
  std::string windows_path(std::string_view path) const override { return host_.windows_path(path); }

 private:
  support::FileSystem& host_ = support::host_file_system();
};

class SurroundingFindings : public FindingsTest {
 protected:
  void adapt(Ports& ports) override {
    ports.files = &walls;
    ports.local_data = path("local");
  }
  Walls walls;
};

TEST_F(SurroundingFindings, TellWhatKeepsANewDatabaseFromBeingMade) {
  const std::string folder = path("patients\\"), taken = folder + "Muster_Max.das";
  struct Case {
    std::function<void()> prepare;
    std::vector<std::string> found;
  };
  const std::string here = support::host_file_system().windows_path(".");
  for (const Case& row : {
           Case{[&] { walls.protected_folder = folder; }, {"4893:" + folder}},
           Case{[&] { support::host_file_system().create_folder(folder); }, {"4894:" + folder}},
           Case{[&] { walls.protected_folder.clear(), walls.room = 1 << 20; }, {"4895:" + folder + "|4|1"}},
           Case{[&] { walls.room.reset(), write("patients\\Muster_Max.das", ""); }, {"4896:" + taken + "|_1.|" + here}},
       }) {
    row.prepare();
    const auto before = everything();
    start();
    enter_name();
    EXPECT_EQ(found_at_the_end(), row.found);
    EXPECT_EQ(everything(), before) << "a look changes nothing";
  }
  write("file", "in the way");
  set_value(support::RootKey::LocalMachine, installation_key, "PatientData", path("file\\below\\"));
  start();
  enter_name();
  EXPECT_THAT(found_at_the_end(), ElementsAre("4893:" + path("file\\below\\")));
}

TEST_F(SurroundingFindings, TellOfTheCopyThatOlderProgramsHaveOfAFolder) {
  const std::string folder = path("patients\\");
  const std::string twin = path("local") + "\\VirtualStore" + folder.substr(2);
  support::host_file_system().create_folder(folder);
  support::host_file_system().create_folder(twin);
  write(twin.substr(path("").size()) + "old.das", "x");
  start();
  enter_name();
  EXPECT_THAT(found_at_the_end(), ElementsAre("4912:" + folder + "|" + twin));
}

TEST_F(SurroundingFindings, TellWhatIsWrongWithAKnownDatabase) {
  const std::string database = known_database();
  walls.protected_file = database;
  start("vantrix|known.das");
  EXPECT_THAT(found_at_the_end(), ElementsAre("4902:" + database));
  write("patients\\other.das", "no database");
  start("vantrix|other.das");
  enter_name();
  EXPECT_THAT(found_at_the_end(), ElementsAre("4900:" + path("patients\\other.das") + "|T6024"));
  next();
  EXPECT_THAT(lines(wizard().report()), Contains("patient (the database could not be read)"));
  EXPECT_EQ(read("patients\\other.das"), "no database");
}

TEST_F(SurroundingFindings, TellWhatTheHomePageLacks) {
  write("pelmar.ini", "[CHARTS]\nday=1^2\n");
  known_database();
  start("vantrix|known.das");
  go_to("pics");
  tick(0);
  EXPECT_THAT(found_at_the_end(), ElementsAre("4904:" + path("home.ini")));
  write("home.ini", "[setup]\nhomepage=h\n[h]\n");
  walls.protected_file = path("home.ini");
  back();
  EXPECT_THAT(found_at_the_end(), ElementsAre("4902:" + path("home.ini")));
}

TEST_F(SurroundingFindings, TellWhatTheIndexOfTheProfessionalEditionLacks) {
  set_value(support::RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\Pro", "PatientData", path("old\\"));
  write("old\\index.mdb", "no database");
  start("Pro");
  EXPECT_THAT(found_at_the_end(), ElementsAre("4905:" + path("old\\index.mdb") + "|T6024"));
  for (const auto& entry : wizard().preview().entries) EXPECT_NE(entry.name, "patient index") << "none was written";

  start("Pro");
  go_to("netpath");
  support::host_file_system().create_folder(path("new"));
  user.chosen_folder = path("new");
  wizard().click("cmdPath", 0);
  EXPECT_EQ(found_on_page().size(), 1u);
  EXPECT_THAT(found_at_the_end(), ElementsAre("4892:" + path("new\\") + "|" + path("old\\")));
  EXPECT_THAT(text("lblSummary"), Not(HasSubstr("T4849"))) << "nothing promises that the folder is stored";
}

TEST_F(SurroundingFindings, TellWhatTheRegistryCannotHold) {
  write("Şahin\\x", "");
  set_value(support::RootKey::CurrentUser, installation_key, "User", "p");
  start();
  enter_name();
  EXPECT_THAT(found_at_the_end(), IsEmpty());
  const std::string hive = support::host_file_system().host_path(path("hive.reg"));
  std::filesystem::permissions(hive, std::filesystem::perms::owner_read);
  back();
  EXPECT_THAT(found_at_the_end(), ElementsAre("4903:HKEY_CURRENT_USER\\" + std::string(installation_key)));
  std::filesystem::permissions(hive, std::filesystem::perms::owner_all);
}

TEST_F(SurroundingFindings, AreLookedAtAgainBeforeTheFinishAndShownOnce) {
  const std::string folder = path("patients\\");
  start();
  enter_name();
  EXPECT_THAT(found_at_the_end(), IsEmpty());
  write("patients\\Muster_Max.das", "");
  next();
  ASSERT_EQ(wizard().state(), frmAssistantFirstSteps::State::Running);
  EXPECT_THAT(text("lblSummary"), ::testing::StartsWith("T4858\r\n\r\nT4857\r\n  - T4855"));
  EXPECT_THAT(found(), Contains(::testing::StartsWith("4896:")));
  EXPECT_EQ(value(user_key, "BGUnit"), std::nullopt) << "nothing is written yet";
  walls.room = 0;  // another change, which does not delay the finish again
  walls.protected_folder = folder;
  support::host_file_system().remove(folder + "Muster_Max.das");
  next();
  EXPECT_EQ(wizard().state(), frmAssistantFirstSteps::State::Finished);
  EXPECT_THAT(found(), ElementsAre("4894:" + folder)) << "the report tells of what was found last";
  EXPECT_EQ(value(installation_key, "DataBaseName"), folder + "Muster_Max.das");
}

class Changing : public FindingsTest {
 protected:
  std::vector<std::string> offered_pages() {
    std::vector<std::string> names;
    for (const auto& item : control("cbChange").items()) names.push_back(item.text);
    return names;
  }
  void change(const char* heading) {
    for (std::size_t n = 0; n < control("cbChange").items().size(); ++n)
      if (control("cbChange").items()[n].text == heading) control("cbChange").set_list_index(static_cast<int>(n));
    ASSERT_EQ(text("cbChange"), heading);
    wizard().click("cmdChange");
  }
};

TEST_F(Changing, LeadsFromTheLastPageToEachAndBack) {
  start();
  enter_name();
  go_to("Fertig");
  EXPECT_THAT(offered_pages(), ::testing::IsSupersetOf({"T4703", "T4704", "T4707", "T4709"}));
  EXPECT_THAT(offered_pages(), Not(Contains("T4702"))) << "a page of the other edition";
  for (const char* heading : {"T4703", "T4709", "T4713"}) {
    change(heading);
    EXPECT_NE(wizard().StepName(), "Fertig");
    EXPECT_EQ(caption("Command1", 0), "T905");
    next();
    EXPECT_EQ(wizard().StepName(), "Fertig") << heading;
  }
  change("T4708");
  type("txtvorgabe", "abc", 4);
  next();
  EXPECT_EQ(text("cbChange"), "T4708") << "the page with a warning is suggested";
  change("T4708");
  back();
  EXPECT_EQ(wizard().StepName(), "Therapie_bz");
  next();
  EXPECT_EQ(wizard().StepName(), "Therapie_bp") << "after Zurück the pages follow each other again";
}

TEST_F(Changing, PassesOverNoCheckOnTheWayBack) {
  start();
  enter_name();
  type("txtvorgabe", "100", 0);
  type("txtvorgabe", "101", 1);
  type("txtvorgabe", "60", 2);
  go_to("Fertig");
  change("T4703");
  choose("optBGUnit", 1);  // both show 5,6 now
  next();
  EXPECT_EQ(wizard().StepName(), "Therapie_bz");
  EXPECT_EQ(user.log.back(), "message T608 4112 T4650");
  EXPECT_TRUE(control("contstep", 6).visible());
  type("txtvorgabe", "6", 1);
  next();
  EXPECT_EQ(wizard().StepName(), "Fertig");
  change("T4704");
  type("txtName", "");
  next();
  EXPECT_EQ(wizard().StepName(), "Patdat");
}

TEST_F(Changing, IsNotOfferedWhereNoPageIsBeforeTheLast) {
  write("pelmar.ini", "[setup]\ndisplay=Patdat\n");
  start();
  EXPECT_EQ(wizard().StepName(), "Fertig");
  EXPECT_FALSE(control("cmdChange").enabled());
  wizard().click("cmdChange");
  EXPECT_EQ(wizard().StepName(), "Fertig");
}

}  // namespace
}  // namespace wizard::testing
