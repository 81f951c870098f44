// What a screen reader is told about every page, compared with a table, and about a finding.
#include <windows.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <utility>

#include "apps/ports/host_ports.h"
#include "support/hive_registry.h"
#include "support/host.h"
#include "tests/window/driver/accessible_tree.h"
#include "tests/window/window_test.h"
#include "wizard/win32/assistant_window.h"
#include "wizard/win32/com.h"
#include "wizard/win32/window_user.h"

namespace window_driver {
namespace {

std::string content(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

/// The wizard runs in this program: from another one, reading each property of each window takes several calls between
/// both, and the whole takes minutes on a busy machine.
class WizardHere {
 public:
  explicit WizardHere(const DemoInstallation& demo)
      : registry_(support::open_hive(demo.path("registry.reg"))),
        assistant_(apps::host_ports(*registry_, user_, demo.path("") + "\\", demo.path("") + "\\")),
        loaded_(assistant_.load("vantrix")),
        window_(GetModuleHandleW(nullptr), assistant_) {
    user_.set_owner(window_.handle());
  }
  ~WizardHere() { user_.set_owner(nullptr); }
  WizardHere(const WizardHere&) = delete;
  WizardHere& operator=(const WizardHere&) = delete;

  /// What is told about each page, below the page's name, as soon as the page is complete.
  std::string walk() {
    if (!loaded_) return "not loaded";
    walking_ = this;
    SetTimer(nullptr, 0, interval, look);
    window_.run();
    return table_;
  }

 private:
  static constexpr UINT interval = 20;  // milliseconds
  static constexpr int most_looks = 2000;

  /// Between two looks, the window has time for the parts that arrive later.
  static void CALLBACK look(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    if (++walking_->looks_ > most_looks) return PostQuitMessage(1);
    if (walking_->is_told()) walking_->turn_page();
    SetTimer(nullptr, 0, interval, look);
  }

  /// True if this look found the same as the one before, including the parts that arrive after the page.
  bool is_told() {
    if (std::exchange(told_, told_in(window_.handle())) != told_) return false;
    const auto is_told_of = [this](const std::string& name) { return told_.find(name) != std::string::npos; };
    if (!is_told_of(assistant_.form().at("lstSteps").caption())) return false;
    const bool has_charts = is_told_of("Verfügbare Diagramme");
    return !has_charts || std::ranges::all_of(assistant_.form().array("optThumb"), [&](const form::Control* chart) {
      return is_told_of("check box: " + chart->tooltip());
    });
  }

  void turn_page() {
    const std::string page = assistant_.StepName();
    table_ += "[" + page + "]\n" + told_;
    told_.clear();
    if (page == "Fertig") return PostQuitMessage(0);
    if (form::Control* name = assistant_.form().find("txtName")) name->set_text("Müller");
    if (form::Control* name = assistant_.form().find("txtFirstName")) name->set_text("Jörg");
    SendMessageW(GetDlgItem(window_.handle(), IDOK), BM_CLICK, 0, 0);
  }

  static inline WizardHere* walking_ = nullptr;

  std::unique_ptr<support::Registry> registry_;
  wizard::win32::WindowUser user_;
  wizard::frmAssistantFirstSteps assistant_;
  bool loaded_;
  wizard::win32::AssistantWindow window_;
  std::string told_, table_;
  int looks_ = 0;
};

using AccessibleTest = WindowTest;

/// After an intended change, read the differences in the table, and copy the new table over this one.
TEST_F(AccessibleTest, EveryPageTellsWhatTheTableSays) {
  const std::string found_file = BUILD_DIR "/accessible.txt", table_file = SOURCE_DIR "/tests/window/accessible.txt";
  const wizard::win32::ComSession com;
  const ScreenReader reader;
  support::set_user_locale(support::host_locale());
  demo_.set_ini("pelmar.ini", "setup", "display", every_page);
  std::string table = WizardHere(demo_).walk();
  // The test's folder is a different one each time.
  const std::string folder = demo_.path("");
  for (std::size_t at = 0; (at = table.find(folder)) != std::string::npos;)
    table.replace(at, folder.size(), "INSTALLATION");
  std::ofstream(found_file, std::ios::binary) << table;
  EXPECT_TRUE(table == content(table_file)) << "diff " << table_file << ' ' << found_file;
}

TEST_F(AccessibleTest, AFindingStandsAtItsFieldAndIsToldWithIt) {
  const wizard::win32::ComSession com;
  const ScreenReader reader;
  start();
  enter_patient();
  wizard().go_to("Therapie_BP");
  const auto field = [&] { return told_of(wizard().control("txtvorgabe(4)")); };
  const std::string name = "field: Oberer Wert (systolisch) von, mmHg";
  EXPECT_EQ(field(), name);
  wizard().type("txtvorgabe(4)", "7");
  EXPECT_EQ(told_in(wizard().window()).find("alert"), std::string::npos) << "it is still typed into";
  press_key(VK_TAB);
  EXPECT_TRUE(wait_until([&] { return field().starts_with(name + " (Achtung: "); })) << field();
  EXPECT_NE(told_in(wizard().window()).find("alert: Achtung: "), std::string::npos);
  RECT place, note;
  GetWindowRect(wizard().control("txtvorgabe(4)"), &place);
  const HWND below = GetWindow(wizard().control("txtvorgabe(4)"), GW_HWNDNEXT);
  GetWindowRect(below, &note);
  EXPECT_GE(note.top, place.bottom - 1);
  EXPECT_LT(note.top, place.bottom + place.bottom - place.top);
  wizard().type("txtvorgabe(4)", "110");
  EXPECT_TRUE(wait_until([&] { return field() == name; })) << field();
  EXPECT_EQ(told_in(wizard().window()).find("alert"), std::string::npos) << "it is mended";
}

}  // namespace
}  // namespace window_driver
