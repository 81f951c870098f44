// What turns a page and what does not: clicks that come too early, keys that are held down, the question of Cancel, and
// a second start.
#include <span>

#include "tests/window/window_test.h"
#include "wizard/win32/running_wizard.h"

namespace window_driver {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Uses a double-click time as users have it.
class PageChangesTest : public WindowTest {
 protected:
  static constexpr UINT usual_time = 500;

  /// Turns the pages one after the other with `turn`. Expects that it turns one page each time, and does not turn the
  /// last one. Everyday runs have five pages.
  template <typename Turn>
  void expect_one_page_each(Turn turn) {
    static constexpr std::string_view few_pages[] = {"Intro", "PatDat", "Pics", "tip_navbar", "Fertig"};
    std::span<const std::string_view> pages = standard_pages;
    if (!all_cases()) {
      pages = few_pages;
      demo_.set_ini("pelmar.ini", "setup", "display", "INtro|Patdat|pics|tip_navbar|Fertig");
    }
    const auto before = demo_.everything();
    start();
    for (auto page = pages.begin(); page + 1 != pages.end(); ++page) {
      wizard().wait_for_page(*page);
      if (*page == "PatDat") enter_patient();
      turn();
      wizard().wait_for_page(*(page + 1));
    }
    EXPECT_TRUE(wizard().process().is_running());
    EXPECT_THAT(demo_.changed_since(before), IsEmpty());
  }

 private:
  const DoubleClickTime time_{usual_time};
};

TEST_F(PageChangesTest, ADoubleClickOnNextTurnsOnePage) {
  expect_one_page_each([this] { double_click_mouse(wizard().control("Command1(0)")); });
}

TEST_F(PageChangesTest, AHeldEnterTurnsOnePage) {
  constexpr int longer_than_double_click = 35;
  expect_one_page_each([] { hold_key(VK_RETURN, longer_than_double_click); });
}

TEST_F(PageChangesTest, AHeldAccessKeyTurnsOnePageForthAndBack) {
  start();
  hold_key('W', 60, VK_MENU);
  wizard().wait_for_page("Maßeinheit");
  wizard().next();
  enter_patient();
  hold_key('Z', 60, VK_MENU);
  wizard().wait_for_page("Maßeinheit");
}

TEST_F(PageChangesTest, ASecondEnterSoonAfterThePageCameUpIsForTheOneBefore) {
  start();
  press_key(VK_RETURN);
  press_key(VK_RETURN);
  wizard().wait_for_page("Maßeinheit");
  EXPECT_EQ(wizard().page(), "Maßeinheit") << "still, once it has settled";
  press_key(VK_RETURN);
  wizard().wait_for_page("PatDat");
}

TEST_F(PageChangesTest, EnterAtTheQuestionOfCancelKeepsTheWizard) {
  start().go_to("Maßeinheit");
  for (const WORD key : {WORD{VK_ESCAPE}, WORD{0}}) {
    key != 0 ? press_key(key) : click_mouse(wizard().control("Command1(2)"));
    EXPECT_THAT(wizard().message(), HasSubstr("abbrechen"));
    const HWND box = wizard().message_box();
    ASSERT_TRUE(wait_until([&] { return GetForegroundWindow() == box; }));
    press_key(VK_RETURN);
    EXPECT_TRUE(wait_until([&] { return IsWindow(box) == 0; }));
    EXPECT_EQ(wizard().page(), "Maßeinheit");
  }
  EXPECT_TRUE(wizard().process().is_running());
}

class StartsTest : public WindowTest {
 protected:
  std::string command_line(std::string_view arguments) const {
    return "\"" PROGRAMS_DIR "/firststeps.exe\" " + demo_.arguments(arguments);
  }
};

TEST_F(StartsTest, ASecondStartBringsTheFirstWindowToTheFrontAndEnds) {
  start().go_to("Maßeinheit");
  for (const std::string_view name : {"vantrix", "VANTRIX|other.das", ""}) {
    ShowWindow(wizard().window(), SW_MINIMIZE);
    ASSERT_TRUE(wait_until([&] { return IsIconic(wizard().window()) != 0; }));
    const Process second(command_line(name));
    EXPECT_EQ(second.wait_for_end(), 4u) << name;
    EXPECT_TRUE(wait_until([&] {
      return IsIconic(wizard().window()) == 0 && GetForegroundWindow() == wizard().window();
    })) << name;
  }
  wizard().press("Command1(2)");
  wizard().message();
  const Process third(command_line("vantrix"));
  EXPECT_EQ(third.wait_for_end(), 4u);
  EXPECT_EQ(GetForegroundWindow(), wizard().message_box()) << "the question that is open";
}

TEST_F(StartsTest, AWizardInAnotherSessionOfTheUserIsToldOf) {
  const auto before = demo_.everything();
  const std::string claimed = std::string(installation_key) + "|" + demo_.path("registry.reg");
  const Handle other_session(CreateMutexW(nullptr, FALSE, wizard::win32::claim_of_all_sessions(claimed).c_str()));
  const Process second(command_line("vantrix"));
  ASSERT_TRUE(wait_until([&] { return second.find_window(L"#32770") != nullptr; }));
  const HWND box = second.find_window(L"#32770");
  constexpr int text_of_message_box = 0xFFFF;
  EXPECT_THAT(shown_text(GetDlgItem(box, text_of_message_box)), HasSubstr("in einer anderen Sitzung"));
  PostMessageW(box, WM_CLOSE, 0, 0);
  EXPECT_EQ(second.wait_for_end(), 4u);
  EXPECT_THAT(demo_.changed_since(before), IsEmpty());
}

TEST_F(StartsTest, AnotherInstallationHasAWizardOfItsOwnAndSoHasTheNextRun) {
  start();
  { const WizardProgram other(demo_.arguments("andere")); }
  wizard().press("Command1(2)");
  wizard().message();
  wizard().answer(IDYES);
  expect_end();
  start();
  EXPECT_EQ(wizard().page(), "Intro");
}

TEST_F(StartsTest, F1OpensTheHelpFileOnEveryPage) {
  // As the help file a program is used, because it can be seen to open.
  demo_.set_value(support::RootKey::LocalMachine, installation_key, "Helpfile", PROGRAMS_DIR "\\bare_window.exe");
  start();
  enter_patient();
  wizard().back();
  wizard().back();
  for (const std::string_view page : standard_pages) {
    wizard().go_to(page);
    SetForegroundWindow(wizard().window());
    ASSERT_TRUE(wait_until([&] { return !wizard().focus().empty(); })) << page;
    EXPECT_TRUE(wait_until([&] { return wizard().is_topmost(); })) << page;
    press_key(VK_F1);
    HWND help = nullptr;
    ASSERT_TRUE(wait_until([&] { return (help = FindWindowW(L"FirstStepsBare", nullptr)) != nullptr; })) << page;
    EXPECT_FALSE(wizard().is_topmost()) << "what it has opened would stand behind it";
    // The wizard stands on top again when the user comes back to it; so it must have been left.
    SetForegroundWindow(help);
    ASSERT_TRUE(wait_until([&] { return GetForegroundWindow() == help && wizard().focus().empty(); })) << page;
    PostMessageW(help, WM_CLOSE, 0, 0);
    ASSERT_TRUE(wait_until([&] { return IsWindow(help) == 0; }));
  }
}

}  // namespace
}  // namespace window_driver
