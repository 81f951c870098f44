// What moves on the pages and what is drawn there.
#include <algorithm>
#include <set>
#include <vector>

#include "support/win32/wide.h"
#include "tests/window/driver/window_picture.h"
#include "tests/window/window_test.h"

namespace window_driver {
namespace {

using PagesTest = WindowTest;

TEST_F(PagesTest, AFifthChartIsUntickedByMouseAndBySpaceBar) {
  start();
  enter_patient();
  wizard().go_to("Pics");
  EXPECT_EQ(wizard().text("lblPics"), "4/4") << "the home page's charts are ticked";
  const auto still_unticked = [&](std::string_view chart) {
    return wait_until([&] { return wizard().text("lblChartInfoTitle") != ""; }) && !wizard().is_chosen(chart);
  };
  SendMessageW(wizard().control("optThumb(3)"), BM_CLICK, 0, 0);
  EXPECT_TRUE(still_unticked("optThumb(3)"));
  SetForegroundWindow(wizard().window());
  press_key(VK_SPACE);
  EXPECT_TRUE(still_unticked("optThumb(3)"));
  EXPECT_EQ(wizard().text("lblPics"), "4/4");
  EXPECT_THAT(wizard().text("lblChartLimit"), ::testing::HasSubstr("schon 4 gewählt"));
  EXPECT_TRUE(wizard().is_enabled("cmdViwPic")) << "it has a screenshot";
  SendMessageW(wizard().control("optThumb(1)"), BM_CLICK, 0, 0);
  EXPECT_EQ(wizard().text("lblPics"), "3/4");
  EXPECT_EQ(wizard().text("lblChartLimit"), "") << "one tick less: nothing is refused any more";
}

TEST_F(PagesTest, AChartReachedByKeysIsScrolledTo) {
  start();
  enter_patient();
  wizard().go_to("Pics");
  const auto lies_in_frame = [&] {
    RECT chart, frame, common;
    GetWindowRect(wizard().control("optThumb(9)"), &chart);
    GetWindowRect(wizard().control("picFrame"), &frame);
    return IntersectRect(&common, &chart, &frame) != 0 && EqualRect(&common, &chart) != 0;
  };
  ASSERT_TRUE(wait_until([&] { return wizard().is_shown("optThumb(9)"); }));
  EXPECT_FALSE(lies_in_frame());
  struct Step {
    WORD key;
    std::string_view chart;
  };
  // The charts are in rows of three; at an edge the focus stays.
  for (const auto& [key, chart] :
       {Step{VK_UP, "optThumb(0)"}, Step{VK_RIGHT, "optThumb(1)"}, Step{VK_DOWN, "optThumb(4)"},
        Step{VK_LEFT, "optThumb(3)"}, Step{VK_DOWN, "optThumb(6)"}, Step{VK_DOWN, "optThumb(9)"},
        Step{VK_DOWN, "optThumb(9)"}}) {
    press_key(key);
    EXPECT_TRUE(wait_until([&] { return wizard().focus() == chart; })) << wizard().focus() << ", not " << chart;
  }
  EXPECT_TRUE(wait_until(lies_in_frame));
  EXPECT_TRUE(wait_until([&] { return wizard().text("lblChartInfoTitle") == "Kohlenhydrate"; })) << "told of";
}

std::string copied_text() {
  std::string text;
  if (OpenClipboard(nullptr) == 0) return text;
  if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT)) {
    text = support::narrow(static_cast<const wchar_t*>(GlobalLock(memory)));
    GlobalUnlock(memory);
  }
  CloseClipboard();
  return text;
}

/// Where a line is too long, in whichever width.
TEST_F(PagesTest, ALongLineOfTheSummaryGoesOnIndentedAndIsCopiedWhole) {
  const std::string name = std::string(25, 'W') + " " + std::string(24, 'W');
  start();
  enter_patient("Jörg", name);
  wizard().go_to("Fertig");
  const HWND summary = wizard().control("lblSummary");
  std::vector<LRESULT> lines;
  for (const int width : {1200, 700}) {
    SetWindowPos(wizard().window(), nullptr, 0, 0, width, 560, SWP_NOZORDER | SWP_NOMOVE);
    const std::string text = shown_text(summary);
    EXPECT_EQ(SendMessageW(summary, EM_GETLINECOUNT, 0, 0), std::ranges::count(text, '\n') + 1)
        << "the field itself breaks no line";
    lines.push_back(SendMessageW(summary, EM_GETLINECOUNT, 0, 0));
    SendMessageW(summary, EM_SETSEL, 0, -1);
    SendMessageW(summary, WM_COPY, 0, 0);
    EXPECT_THAT(copied_text(), ::testing::HasSubstr("\r\n    Name: Jörg " + name + "\r\n"));
  }
  EXPECT_LT(lines[0], lines[1]);
  EXPECT_THAT(shown_text(summary), ::testing::HasSubstr("\r\n        W"));
}

TEST_F(PagesTest, ThumbnailsComeInWithoutBeingAskedFor) {
  start();
  enter_patient();
  wizard().go_to("Pics");
  const auto colours = [&](std::string_view chart) { return count_colours(wizard().control(chart)); };
  EXPECT_TRUE(wait_until([&] { return colours("optThumb(0)") > 8 && colours("optThumb(2)") > 8; }));
}

TEST_F(PagesTest, EnterGoesOnWhereAPageHasButtonsOnly) {
  demo_.set_ini("pelmar.ini", "setup", "display", "INtro|netpath|Fertig");
  start();
  wizard().next();
  ASSERT_EQ(wizard().page(), "netpath");
  ASSERT_TRUE(wait_until([&] { return wizard().focus() == "Command1(0)"; })) << wizard().focus();
  press_key(VK_RETURN);
  EXPECT_TRUE(wait_until([&] { return wizard().page() == "Fertig"; })) << wizard().page();
}

/// Tested on pages where nothing blinks.
TEST_F(PagesTest, APictureShowsWhatIsChosen) {
  demo_.set_ini("pelmar.ini", "setup", "display", "INtro|eingabe|Darstellung|Fertig");
  start();
  struct Case {
    std::string_view page, options, picture;
    int count;
  };
  for (const auto& [page, options, picture, count] : {Case{"Eingabe", "optDataEntry", "imgDataEntry", 3},
                                                      Case{"Darstellung", "optDisplayStyle", "imgDisplayStyle", 2}}) {
    wizard().go_to(page);
    std::set<std::size_t> pictures;
    for (int option = 0; option < count; ++option) {
      SendMessageW(wizard().control(std::string(options) + "(" + std::to_string(option) + ")"), BM_CLICK, 0, 0);
      const auto is_new = [&] { return pictures.insert(checksum(wizard().control(picture))).second; };
      EXPECT_TRUE(wait_until(is_new)) << page << ' ' << option;
    }
  }
}

/// The places of all images of a page, and which of them are shown.
std::string picture_state(const WizardProgram& wizard) {
  std::string state;
  for (const form::Control* control : wizard.seen()) {
    if (control->kind() != form::Kind::Image) continue;
    RECT place;
    GetWindowRect(wizard.control(control->path()), &place);
    state += control->path() + "@" + std::to_string(place.left) + "," + std::to_string(place.top) + " ";
  }
  return state;
}

TEST_F(PagesTest, TipsMoveAndOtherPagesStandStill) {
  demo_.set_ini("pelmar.ini", "setup", "display", "INtro|sidebar|start|tip_navbar|tip_splits|tip_stats|eingabe|Fertig");
  start();
  for (const std::string_view page : {"sidebar", "start", "tip_navbar", "tip_splits", "tip_stats"}) {
    wizard().next();
    ASSERT_EQ(wizard().page(), page);
    std::set<std::string> states;
    EXPECT_TRUE(wait_until([&] {
      Sleep(250);  // a look at all images takes long
      return states.insert(picture_state(wizard())), states.size() >= 2;
    })) << page;
  }
  wizard().next();
  const std::string state = picture_state(wizard());
  Sleep(700);  // longer than the shortest interval of a tip
  EXPECT_EQ(picture_state(wizard()), state);
}

}  // namespace
}  // namespace window_driver
