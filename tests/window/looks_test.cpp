// The look of every page with any font, resolution and language: nothing is cut, everything has a name.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <string_view>
#include <utility>

#include "support/encoding.h"
#include "support/host.h"
#include "tests/window/driver/control_look.h"
#include "tests/window/driver/misplaced_controls.h"
#include "tests/window/window_test.h"
#include "wizard/win32/com.h"
#include "wizard/win32/frame_window.h"
#include "wizard/win32/window_layout.h"

namespace window_driver {
namespace {

/// Sets the resolution for programs that are started from now on, and restores it at the end.
class Resolution {
 public:
  explicit Resolution(DWORD dpi) { set(dpi); }
  ~Resolution() { set(USER_DEFAULT_SCREEN_DPI); }
  Resolution(const Resolution&) = delete;
  Resolution& operator=(const Resolution&) = delete;

 private:
  static void set(DWORD dpi) {
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Control Panel\\Desktop", L"LogPixels", REG_DWORD, &dpi, sizeof dpi);
  }
};

/// A screen: the area that it leaves to programs, and its resolution.
struct Screen {
  int width, height;
  DWORD dpi;
};

constexpr Screen screens[] = {{800, 600, 96}, {1024, 600, 144}, {1920, 1080, 96}, {1920, 1080, 192}};

class LooksTest : public WindowTest {
 protected:
  LooksTest() { demo_.set_ini("pelmar.ini", "setup", "display", every_page); }

  /// Calls `look` for every control that can be seen, on every page.
  template <typename Look>
  void walk(Look look, std::string_view command_line = "vantrix") {
    start(command_line);
    for (;;) {
      for (const form::Control* control : wizard().seen()) look(*control);
      const std::string page = wizard().page();
      if (page == "Fertig") break;
      if (page == "PatDat") enter_patient();
      wizard().next();
    }
  }

  std::string cut_texts(const std::string& font, std::string_view command_line = "vantrix") {
    std::string cut;
    walk([&](const form::Control& control) { cut += cut_text(wizard(), control, font); }, command_line);
    return cut;
  }

  /// Gives the window its first size on a screen, or the whole area that the screen leaves to programs.
  void fit_to(const Screen& screen, bool whole) {
    const SIZE first = wizard::win32::frame_size(wizard::win32::first_size, screen.dpi);
    const int width = whole ? screen.width : std::min<int>(first.cx, screen.width);
    const int height = whole ? screen.height : std::min<int>(first.cy, screen.height);
    SetWindowPos(wizard().window(), nullptr, 0, 0, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    SendMessageW(wizard().window(), WM_NULL, 0, 0);
  }

  std::string problems_of_page() {
    const auto seen = wizard().seen();
    std::string problems = misplaced(wizard(), seen);
    for (const form::Control* control : seen) problems += cut_text(wizard(), *control, "Tahoma");
    return problems.empty() ? problems : wizard().page() + ": " + problems + "\n";
  }

  /// Of a whole run, each page in both sizes.
  std::string problems_on(const Screen& screen, std::string_view language, std::string_view edition) {
    demo_.set_value(support::RootKey::CurrentUser, "SOFTWARE\\Lumoraquant\\" + std::string(edition), "LanguageDLL",
                    language);
    start(edition);
    EXPECT_EQ(wizard().resolution(), screen.dpi);
    std::string problems;
    for (;;) {
      for (const bool whole : {false, true}) {
        fit_to(screen, whole);
        problems += problems_of_page();
      }
      const std::string page = wizard().page();
      if (page == "Fertig") return problems;
      if (page == "PatDat") enter_patient();
      wizard().next();
    }
  }

  bool is_in_sight(std::string_view path) {
    const HWND window = wizard().control(path);
    RECT place, room;
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
    GetClientRect(GetParent(window), &room);
    return place.top >= 0 && place.bottom <= room.bottom;
  }

  int height_of(std::string_view path) {
    RECT place;
    GetWindowRect(wizard().control(path), &place);
    return place.bottom - place.top;
  }

  /// Makes the texts of the installation 40 % longer.
  void lengthen_texts() const;
};

/// A caption with 40 % more characters: its own repeated, without the characters that have a meaning.
std::string longer(const std::string& text) {
  const std::size_t tooltip = std::min(text.find('|'), text.size());
  std::string caption = text.substr(0, tooltip), plain = std::regex_replace(caption, std::regex("[&%\\\\][1-9n]?"), "");
  const std::size_t more = (support::character_count(plain) * 2 + 4) / 5;
  return caption + " " + std::string(support::first_characters(plain, more)) + text.substr(tooltip);
}

void LooksTest::lengthen_texts() const {
  const std::string file = demo_.path("texts\\de.ini");
  std::istringstream lines(support::host_file_system().read(file, 1 << 20).value_or(""));
  std::string table, line;
  while (std::getline(lines, line)) {
    const std::size_t equals = line.find('=');
    const bool has_text = equals != std::string::npos && line[0] != ';';
    table += (has_text ? line.substr(0, equals + 1) + longer(line.substr(equals + 1)) : line) + "\n";
  }
  std::ofstream(std::filesystem::path(support::utf16_from_utf8(file)), std::ios::binary) << table;
}

/// The window as it comes up on a screen, and as large as the screen: no control is cut, lies over another one or
/// outside the window, in either language and edition. Of these, everyday runs see the standard edition in German on
/// the smallest screen, and the professional one in English at the highest resolution.
TEST_F(LooksTest, EveryPageFitsEveryScreen) {
  const auto look = [this](const Screen& screen, std::string_view language, std::string_view edition) {
    const Resolution resolution(screen.dpi);
    EXPECT_EQ(problems_on(screen, language, edition), "")
        << screen.width << " x " << screen.height << " at " << screen.dpi << ", " << language << ", " << edition;
  };
  if (!all_cases()) {
    look(screens[0], "de", "vantrix");
    look(*std::rbegin(screens), "en", "vantrix Pro");
    return;
  }
  for (const Screen& screen : screens)
    for (const std::string_view language : {"de", "en"})
      for (const std::string_view edition : {"vantrix", "vantrix Pro"}) look(screen, language, edition);
}

/// Also beside a long description, which may need more room than the list.
TEST_F(LooksTest, TheChartsShowThreeRowsOfThemAndTwoOnAScreenThatIsLow) {
  demo_.set_ini("pelmar.ini", "setup", "display", "INtro|Patdat|pics|Fertig");
  for (const auto& [screen, last_seen] : {std::pair{screens[0], "optThumb(8)"}, {screens[1], "optThumb(5)"}}) {
    const Resolution resolution(screen.dpi);
    start();
    enter_patient();
    wizard().go_to("Pics");
    fit_to(screen, false);
    SendMessageW(wizard().control("optThumb(4)"), BM_CLICK, 0, 0);
    ASSERT_TRUE(wait_until([&] { return wizard().text("lblChartLimit") != "" && wizard().is_shown(last_seen); }));
    EXPECT_EQ(problems_of_page(), "");
    RECT first, last, frame;
    GetWindowRect(wizard().control("optThumb(0)"), &first);
    GetWindowRect(wizard().control(last_seen), &last);
    GetWindowRect(wizard().control("picFrame"), &frame);
    EXPECT_TRUE(first.top >= frame.top && last.bottom <= frame.bottom)
        << screen.width << " x " << screen.height << " at " << screen.dpi;
  }
}

/// At the smallest size that a user can give the window, pages scroll, and the buttons stay.
TEST_F(LooksTest, ASmallWindowScrollsItsPagesAndKeepsItsButtons) {
  start();
  enter_patient();
  SetWindowPos(wizard().window(), nullptr, 0, 0, 100, 100, SWP_NOZORDER | SWP_NOMOVE);
  EXPECT_EQ(problems_of_page(), "");
  RECT inside, next;
  GetClientRect(wizard().window(), &inside);
  GetWindowRect(wizard().control("Command1(0)"), &next);
  MapWindowPoints(nullptr, wizard().window(), reinterpret_cast<POINT*>(&next), 2);
  EXPECT_LE(next.bottom, inside.bottom);
  EXPECT_FALSE(is_in_sight("cbTherapie"));
  SetForegroundWindow(wizard().window());
  // The second and the third time, the field has the focus already.
  for (const WORD with : {WORD{VK_MENU}, WORD{VK_MENU}, WORD{VK_SHIFT}}) {
    turn_wheel(wizard().control("lblPurpose(3)"), -40);
    EXPECT_TRUE(wait_until([&] { return is_in_sight("cbTherapie") && !is_in_sight("txtFirstName"); }));
    press_key('V', with);
    EXPECT_TRUE(wait_until([&] { return wizard().focus() == "txtFirstName" && is_in_sight("txtFirstName"); })) << with;
  }
}

/// Sets the user's text size for the window and for what is measured here, and restores it at the end.
class TextSize {
 public:
  explicit TextSize(DWORD per_cent) {
    RegSetKeyValueW(HKEY_CURRENT_USER, key, L"TextScaleFactor", REG_DWORD, &per_cent, sizeof per_cent);
    wizard::win32::refresh_text_scale();
  }
  ~TextSize() {
    RegDeleteKeyValueW(HKEY_CURRENT_USER, key, L"TextScaleFactor");
    wizard::win32::refresh_text_scale();
  }
  TextSize(const TextSize&) = delete;
  TextSize& operator=(const TextSize&) = delete;

 private:
  static constexpr wchar_t key[] = L"Software\\Microsoft\\Accessibility";
};

/// In pixels at 96 to the inch of the first window: the user's text size makes everything larger.
TEST_F(LooksTest, TheUsersTextSizeMakesTextsLargerAndCutsNone) {
  start().go_to("PatDat");
  const int usual = height_of("txtName");
  const TextSize larger(175);
  start().go_to("PatDat");
  EXPECT_GE(height_of("txtName"), usual * 7 / 5) << "all but the field's edge";
  std::string problems;
  walk([&](const form::Control& control) { problems += cut_text(wizard(), control, "Tahoma"); });
  EXPECT_EQ(problems, "");
}

/// For the page that is shown at that moment and for later ones, and back again.
TEST_F(LooksTest, AChangeOfTheTextSizeTakesEffectAtOnceAndKeepsWhatIsTyped) {
  start();
  enter_patient("Jörg", "Müller-Lüdenscheidt");
  const int usual = height_of("txtName");
  const auto tell = [this] { SendMessageW(wizard().window(), WM_SETTINGCHANGE, 0, 0); };
  const auto expect_all_kept = [this] {
    EXPECT_EQ(wizard().text("txtName"), "Müller-Lüdenscheidt");
    EXPECT_EQ(wizard().focus(), "txtFirstName");
    EXPECT_EQ(problems_of_page(), "");
  };
  {
    const TextSize larger(150);
    tell();
    EXPECT_GE(height_of("txtName"), usual * 5 / 4);
    expect_all_kept();
    wizard().next();
    EXPECT_EQ(problems_of_page(), "");
    wizard().back();
  }
  tell();
  EXPECT_EQ(height_of("txtName"), usual);
  expect_all_kept();
}

/// Everyday runs see the professional edition, which has more texts.
TEST_F(LooksTest, NoTextIsCutWhereTextsAreFortyPerCentLonger) {
  lengthen_texts();
  if (all_cases()) {
    EXPECT_EQ(cut_texts("Tahoma"), "");
  }
  EXPECT_EQ(cut_texts("Tahoma", "vantrix Pro"), "");
  EXPECT_THAT(wizard().text("Command1(2)"), ::testing::StartsWith("&Abbrechen Abbr"));
}

TEST_F(LooksTest, AFontThatDoesNotExistIsReplaced) {
  demo_.set_ini("setup.ini", "setup", "font", "Diese Schrift gibt es nicht");
  EXPECT_EQ(cut_texts("Diese Schrift gibt es nicht"), "");
}

TEST_F(LooksTest, AScreenReaderHasANameForEveryControl) {
  const wizard::win32::ComSession com;
  const ScreenReader reader;
  std::string unnamed;
  walk([&](const form::Control& control) {
    // A page is named by what lies on it, and a label without a text needs no name.
    const bool is_name_itself = control.kind() == form::Kind::Frame || control.kind() == form::Kind::Label;
    if (!is_name_itself && accessible_name(wizard().control(control.path())).empty()) unnamed += control.path() + " ";
  });
  EXPECT_EQ(unnamed, "");
}

}  // namespace
}  // namespace window_driver
