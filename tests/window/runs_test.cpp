// Whole runs, with checks of what registry, ini files and database hold at the end.
#include <windows.h>

#include <filesystem>
#include <fstream>

#include "support/host.h"
#include "support/win32/wide.h"
#include "tests/window/window_test.h"
#include "wizard/win32/problem_window.h"

namespace window_driver {
namespace {

struct Expected {
  std::string_view key, name, value;
};

using RunsTest = WindowTest;

std::string data_entry_key() { return std::string(user_key) + "\\DataEntry"; }

/// The run chose mmol/l, Jörg Müller with a pump, entry in tables, the side bar, and the insulin chart instead of the
/// trend.
void expect_standard_run(const DemoInstallation& demo) {
  const std::string entry_key = data_entry_key(), database = demo.path("patients\\Müller_Jörg.das");
  for (const auto& [key, name, value] : {
           Expected{user_key, "BGUnit", "1"},
           Expected{user_key, "ShowOutlookbar", "1"},
           Expected{user_key, "FirstRun", "0"},
           Expected{entry_key, "DefaultDataEntry", "EDIT_QUICKENTRY"},
           Expected{installation_key, "DataBaseName", database},
       }) {
    EXPECT_EQ(demo.value(key, name), value) << name;
  }
  EXPECT_EQ(demo.ini("home.ini", "Übersicht", "CHART1"), "0|0|day|1");
  EXPECT_EQ(demo.ini("home.ini", "Übersicht", "CHART3"), "0|1|insulin|14");
  const database::PatientRecord patient = demo.patient(database);
  EXPECT_EQ(patient.firstname + " " + patient.name, "Jörg Müller");
  EXPECT_EQ(patient.gender, 1);
  EXPECT_EQ(patient.therapy, 3);
  const database::SettingsRecord settings = demo.settings(database);
  // 4,4 mmol/l times 18.016; and 150 mg/dl after its way through 8,3 mmol/l.
  EXPECT_EQ(settings.BGTargetMin, 79);
  EXPECT_EQ(settings.BGTargetMax, 150);
}

TEST_F(RunsTest, AStandardRunByMouseIsWritten) {
  start();
  const auto click = [this](std::string_view path) { click_mouse(wizard().control(path)); };
  const auto turn_to = [&](std::string_view page) {
    click("Command1(0)");
    wizard().wait_for_page(page);
  };
  const auto click_option = [this](std::string_view path) {
    click_mouse(wizard().control(path), {20, 8});
    EXPECT_TRUE(wait_until([&] { return wizard().is_chosen(path); })) << path;
  };
  const auto fill = [&](std::string_view path, std::string_view text) {
    click(path);
    EXPECT_TRUE(wait_until([&] { return wizard().focus() == path; })) << path;
    press_key('A', VK_CONTROL);
    type_keys(text);
    EXPECT_TRUE(wait_until([&] { return wizard().text(path) == text; })) << wizard().text(path);
  };
  // As with old lists: the button is pressed on the field, moved over the open list, and released over the entry.
  const auto choose_by_mouse = [&](std::string_view path, int entry) {
    const HWND list = wizard().control(path);
    RECT closed;
    GetClientRect(list, &closed);
    const auto line = static_cast<LONG>(SendMessageW(list, CB_GETITEMHEIGHT, 0, 0));
    const auto is_open = [&] { return SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) != 0; };
    press_mouse(list, {closed.right / 2, closed.bottom / 2});
    EXPECT_TRUE(wait_until(is_open)) << path;
    // The list follows the pointer once it has seen it come from the field.
    LONG x = closed.right / 2;
    EXPECT_TRUE(wait_until([&] {
      draw_mouse(list, {++x, closed.bottom + entry * line + line / 2 + 1});
      return SendMessageW(list, CB_GETCURSEL, 0, 0) == entry;
    })) << path;
    release_mouse();
    EXPECT_TRUE(wait_until([&] { return !is_open(); })) << path;
    EXPECT_EQ(SendMessageW(list, CB_GETCURSEL, 0, 0), entry) << path;
  };
  turn_to("Maßeinheit");
  click_option("optBGUnit(1)");
  turn_to("PatDat");
  fill("txtFirstName", "Jörg");
  fill("txtName", "Müller");
  click_option("optGender(1)");
  choose_by_mouse("cbTherapie", 2);
  turn_to("Insulin");
  turn_to("Medikamente");
  turn_to("Therapie_BZ");
  fill("txtvorgabe(0)", "4,4");
  turn_to("Therapie_BP");
  turn_to("Pics");
  click("optThumb(1)");
  EXPECT_TRUE(wait_until([&] { return !wizard().is_chosen("optThumb(1)"); }));
  click("optThumb(3)");
  EXPECT_TRUE(wait_until([&] { return wizard().is_chosen("optThumb(3)"); }));
  turn_to("Eingabe");
  click_option("optDataEntry(1)");
  turn_to("sidebar");
  click_option("optShowSideBar(1)");
  turn_to("tip_navbar");
  click("cmdSkipTips(14)");
  wizard().wait_for_page("Fertig");
  click("Command1(0)");
  expect_end();
  expect_standard_run(demo_);
}

TEST_F(RunsTest, TheSameRunByKeyboardAloneIsWritten) {
  start();
  const auto enter = [this](std::string_view page) {
    press_key(VK_RETURN);
    wizard().wait_for_page(page);
  };
  const auto expect_focus = [this](std::string_view path) {
    EXPECT_TRUE(wait_until([&] { return wizard().focus() == path; })) << "not " << wizard().focus();
  };
  enter("Maßeinheit");
  expect_focus("optBGUnit(0)");
  press_key(VK_DOWN);
  expect_focus("optBGUnit(1)");
  // The group is one stop, then come the buttons, then the group again.
  for (const std::string_view stop : {"cmdWhy(2)", "Command1(1)", "Command1(0)", "Command1(2)", "optBGUnit(1)"}) {
    press_key(VK_TAB);
    expect_focus(stop);
  }
  enter("PatDat");
  expect_focus("txtFirstName");
  type_keys("Jörg");
  press_key(VK_TAB);
  expect_focus("txtName");
  type_keys("Müller");
  press_key('M', VK_MENU);
  expect_focus("optGender(1)");
  press_key('T', VK_MENU);
  expect_focus("cbTherapie");
  press_key(VK_HOME);
  press_key(VK_DOWN);
  press_key(VK_DOWN);
  enter("Insulin");
  enter("Medikamente");
  enter("Therapie_BZ");
  expect_focus("txtvorgabe(0)");
  type_keys("4,4");
  enter("Therapie_BP");
  enter("Pics");
  expect_focus("optThumb(0)");
  press_key(VK_RIGHT);
  expect_focus("optThumb(1)");
  press_key(VK_SPACE);
  press_key(VK_RIGHT);
  press_key(VK_RIGHT);
  expect_focus("optThumb(3)");
  press_key(VK_SPACE);
  enter("Eingabe");
  press_key('E', VK_MENU);
  expect_focus("optDataEntry(1)");
  enter("sidebar");
  press_key('M', VK_MENU);
  expect_focus("optShowSideBar(1)");
  for (const std::string_view page : {"tip_navbar", "tip_splits", "tip_stats", "Fertig"}) enter(page);
  press_key('F', VK_MENU);
  ASSERT_TRUE(wait_until([&] { return !wizard().is_shown("Command1(2)"); })) << "it says that all is done";
  // The temporary folder's name may be so long that a line goes on in the next one.
  const std::string_view break_in_line = "\r\n        ";
  std::string written = wizard().text("lblSummary");
  for (size_t at; (at = written.find(break_in_line)) != std::string::npos;) written.erase(at, break_in_line.size());
  for (const std::string_view place : {"patients\\Müller_Jörg.das", "home.ini", "User Configuration"})
    EXPECT_THAT(written, ::testing::HasSubstr(std::string(place)));
  EXPECT_THAT(wizard().text("lblPurpose(17)"), ::testing::HasSubstr("vantrix"));
  wizard().let_page_settle();
  press_key(VK_RETURN);
  EXPECT_EQ(wizard().process().wait_for_end(), 0u);
  expect_standard_run(demo_);
}

TEST_F(RunsTest, ASecondRunShowsWhatTheFirstHasWrittenAndKeepsIt) {
  start().go_to("Maßeinheit");
  SendMessageW(wizard().control("optBGUnit(1)"), BM_CLICK, 0, 0);
  enter_patient();
  wizard().choose("cbTherapie", 4);
  finish();
  const auto before = demo_.everything();

  start("vantrix|Müller_Jörg.das").go_to("Maßeinheit");
  EXPECT_TRUE(wizard().is_chosen("optBGUnit(1)"));
  wizard().go_to("PatDat");
  EXPECT_EQ(wizard().text("txtName"), "Müller");
  wizard().next();
  EXPECT_EQ(wizard().page(), "Medikamente") << "therapy without insulin";
  wizard().go_to("Therapie_BZ");
  EXPECT_EQ(wizard().text("txtvorgabe(0)"), "3,9");
  finish();
  EXPECT_THAT(demo_.changed_since(before), ::testing::IsSubsetOf({"patients/Müller_Jörg.das", "report.txt"}));
  EXPECT_EQ(demo_.patient(demo_.path("patients\\Müller_Jörg.das")).firstname, "Jörg");
}

BOOL CALLBACK note_field(HWND window, LPARAM data) {
  wchar_t name[32];
  if (IsWindowVisible(window) == 0 || GetClassNameW(window, name, 32) == 0 || lstrcmpiW(name, L"Edit") != 0)
    return TRUE;
  *reinterpret_cast<HWND*>(data) = window;
  return FALSE;
}

/// Types a folder into the system's dialog that chooses a folder.
void choose_in_dialog(const WizardProgram& wizard, const std::wstring& folder) {
  ASSERT_TRUE(wait_until([&] { return wizard.asks(); }));
  const HWND dialog = wizard.message_box();
  HWND field = nullptr;
  ASSERT_TRUE(wait_until([&] {
    EnumChildWindows(dialog, note_field, reinterpret_cast<LPARAM>(&field));
    return field != nullptr;
  }));
  SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(folder.c_str()));
  EXPECT_FALSE(wizard.is_topmost()) << "the dialog could be hidden";
  PostMessageW(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
  ASSERT_TRUE(wait_until([&] { return IsWindow(dialog) == 0; }));
}

TEST_F(RunsTest, AProfessionalRunUsesTheSharedFolderThatIsChosen) {
  demo_.set_value(support::RootKey::LocalMachine, "SOFTWARE\\Lumoraquant\\vantrix Pro", "LanguageDLL", "de");
  const std::string shared = demo_.path("gemeinsam");
  ASSERT_TRUE(support::host_file_system().create_folder(shared));
  start("vantrix Pro").go_to("netpath");
  EXPECT_TRUE(wizard().is_topmost());
  wizard().press("cmdPath(0)");
  choose_in_dialog(wizard(), support::wide(shared));
  EXPECT_TRUE(wait_until([&] { return wizard().text("lblFolder") == shared + "\\"; })) << wizard().text("lblFolder");
  EXPECT_TRUE(wait_until([&] { return wizard().is_topmost(); }));
  wizard().go_to("start");
  SendMessageW(wizard().control("optShowStart(2)"), BM_CLICK, 0, 0);
  finish();
  EXPECT_TRUE(support::host_file_system().file_size(shared + "\\index.mdb"));
  EXPECT_EQ(demo_.value("SOFTWARE\\Lumoraquant\\vantrix Pro\\Profiles\\default\\User Configuration", "RunOnStart"),
            "mnu_last");

  start("vantrix Pro").go_to("netpath");
  wizard().press("cmdPath(0)");
  choose_in_dialog(wizard(), support::wide(shared));
  EXPECT_THAT(wizard().message(), ::testing::HasSubstr("index.mdb")) << "it holds a shared database already";
  wizard().answer(IDOK);
}

TEST_F(RunsTest, AChangedSchemeSendsTheUsersToolbarsToTheRecycleBin) {
  demo_.set_ini("pelmar.ini", "setup", "display", "INtro|Patdat|Schema|Fertig");
  start();
  enter_patient();
  wizard().go_to("Schema");
  wizard().choose("cbSchema", 3);
  EXPECT_THAT(wizard().text("lblSchemaDesc"), ::testing::HasSubstr("Insulinpumpe.\r\nBasalrate"));
  finish();
  EXPECT_EQ(demo_.value(installation_key, "Scheme"), "3");
  for (const auto& [name, content] : demo_.everything()) EXPECT_FALSE(name.starts_with("user/")) << name;
}

TEST_F(RunsTest, AFinishThatCannotWriteEverythingSaysWhatIsMissing) {
  // A file lies where the patients' folder should be.
  std::ofstream(std::filesystem::path(support::wide_path(demo_.path("patients"))));
  start();
  enter_patient();
  wizard().go_to("Fertig");
  wizard().press("Command1(0)");
  ASSERT_TRUE(wait_until([&] { return wizard().asks(); }));
  const HWND box = wizard().message_box(), list = GetDlgItem(box, wizard::win32::problem_list_id);
  EXPECT_TRUE(IsWindowVisible(wizard().window())) << "the wizard is still there";
  EXPECT_FALSE(IsWindowEnabled(wizard().window()));
  const std::string german = "Die neue Patientendatenbank\r\nDatei oder Ordner ist schreibgeschützt";
  EXPECT_THAT(shown_text(list), ::testing::StartsWith(german));
  EXPECT_THAT(shown_text(list), ::testing::Not(::testing::HasSubstr("error")));
  SendMessageW(GetDlgItem(box, wizard::win32::details_button_id), BM_CLICK, 0, 0);
  EXPECT_THAT(shown_text(list), ::testing::AllOf(::testing::StartsWith(german), ::testing::HasSubstr("Müller_Jörg.das"),
                                                 ::testing::HasSubstr("error ")));
  wizard().answer(IDOK);
  EXPECT_EQ(wizard().process().wait_for_end(), 1u);
  EXPECT_EQ(demo_.value(user_key, "FirstRun"), "0") << "the rest is written";
}

/// What the session's registry holds of the wizard: nothing before the test and nothing after it.
struct EmptyKey {
  EmptyKey() { RegDeleteTreeW(HKEY_CURRENT_USER, L"SOFTWARE\\Lumoraquant"); }
  ~EmptyKey() { RegDeleteTreeW(HKEY_CURRENT_USER, L"SOFTWARE\\Lumoraquant"); }
};

TEST_F(RunsTest, WithoutAHiveTheRegistryItselfIsWritten) {
  const EmptyKey key;
  const auto registry = support::host_registry();
  ASSERT_TRUE(WriteRegString(*registry, support::RootKey::CurrentUser, installation_key, "LanguageDLL", "de"));
  std::string first_run, database;
  {
    const WizardProgram program("--program-dir \"" + demo_.path("") + "\" vantrix");
    program.go_to("PatDat");
    program.type("txtFirstName", "Jörg");
    program.type("txtName", "Müller");
    program.go_to("Fertig");
    program.press("Command1(0)");
    program.close_outcome();
    EXPECT_EQ(program.process().wait_for_end(), 0u);
  }
  ReadRegValue(*registry, support::RootKey::CurrentUser, user_key, "FirstRun", first_run);
  ReadRegValue(*registry, support::RootKey::CurrentUser, installation_key, "DataBaseName", database);
  EXPECT_EQ(first_run, "0");
  EXPECT_EQ(database, demo_.path("patients\\Müller_Jörg.das"));
}

}  // namespace
}  // namespace window_driver
