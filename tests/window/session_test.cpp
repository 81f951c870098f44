// The end of the user's session, and long work during which the window goes on answering.
#include "tests/window/window_test.h"
#include "wizard/win32/progress_window.h"

namespace window_driver {
namespace {

using ::testing::IsEmpty;

using SessionTest = WindowTest;

bool may_end_session(HWND window) { return SendMessageW(window, WM_QUERYENDSESSION, 0, 0) != 0; }

TEST_F(SessionTest, ItsEndOnAPageIsCancelWithoutAQuestion) {
  const auto before = demo_.everything();
  for (const bool question_is_open : {false, true}) {
    start();
    enter_patient();
    wizard().go_to("Fertig");
    if (question_is_open) {
      wizard().press("Command1(2)");
      wizard().message();
    }
    EXPECT_TRUE(may_end_session(wizard().window()));
    EXPECT_TRUE(wizard().process().is_running()) << "another program may still keep the session";
    SendMessageW(wizard().window(), WM_ENDSESSION, TRUE, 0);
    expect_end();
    EXPECT_THAT(demo_.changed_since(before), IsEmpty());
  }
}

TEST_F(SessionTest, ItsEndWaitsUntilTheFinishIsWhole) {
  demo_.set_ini("pelmar.ini", "setup", "display", "INtro|Patdat|Schema|Fertig");
  start();
  enter_patient();
  wizard().go_to("Schema");
  wizard().choose("cbSchema", 3);
  wizard().go_to("Fertig");
  wizard().press("Command1(0)");
  ASSERT_TRUE(wait_until([&] { return wizard().asks(); })) << "the shell's question, in the midst of the finish";
  EXPECT_FALSE(may_end_session(wizard().window()));
  answer_with_yes();
  expect_end();
  EXPECT_EQ(demo_.value(installation_key, "Scheme"), "3");
}

constexpr UINT request = WM_APP + 1;
int answered_requests = 0;

LRESULT CALLBACK count_requests(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == request) ++answered_requests;
  return DefWindowProcW(window, message, first, second);
}

class LongWorkTest : public ::testing::Test {
 protected:
  LongWorkTest() {
    WNDCLASSW description{};
    description.lpfnWndProc = count_requests;
    description.lpszClassName = L"FirstStepsOwner";
    RegisterClassW(&description);
    owner_ = CreateWindowW(L"FirstStepsOwner", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr, nullptr,
                           nullptr, nullptr);
    progress_.set_owner(owner_, "vantrix", "Tahoma");
    answered_requests = 0;
  }
  ~LongWorkTest() override { DestroyWindow(owner_); }

  /// Half a second of work that reports often that it goes on.
  void work() {
    for (int step = 0; step < 50; ++step) {
      progress_.at_work();
      Sleep(10);
    }
  }
  static HWND shown() { return FindWindowW(L"FirstStepsProgress", nullptr); }

  HWND owner_;
  wizard::win32::ProgressWindow progress_;
};

TEST_F(LongWorkTest, LetsTheWindowsAnswerButTakeNoInput) {
  progress_.start("Speichern", 0);
  PostMessageW(owner_, request, 0, 0);
  work();
  EXPECT_EQ(answered_requests, 1);
  EXPECT_FALSE(IsWindowEnabled(owner_));
  EXPECT_NE(shown(), nullptr);
  EXPECT_FALSE(may_end_session(shown()));
  progress_.finish();
  EXPECT_TRUE(IsWindowEnabled(owner_));
  EXPECT_EQ(shown(), nullptr);
  EXPECT_FALSE(progress_.cancelled());
}

TEST_F(LongWorkTest, IsCancelledByTheEndOfTheSessionWhereItCanBe) {
  progress_.start("Aktualisieren", 100);
  progress_.offer_cancel("Abbrechen");
  work();
  EXPECT_FALSE(may_end_session(shown())) << "not before it has come to its next whole step";
  EXPECT_TRUE(progress_.cancelled());
}

}  // namespace
}  // namespace window_driver
