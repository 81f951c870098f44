// The progress line, and the commands that end when Ctrl+C is pressed meanwhile.
#include <gmock/gmock.h>

#include <sstream>
#include <thread>

#include "apps/console/progress_line.h"
#include "support/encoding.h"

namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

class Line : public testing::Test {
 protected:
  std::string shown() {
    const std::string text = err_.str();
    err_.str("");
    return text;
  }
  std::ostringstream out_, err_;
  console::Console console_{out_, err_, {}, {}, true, nullptr, 0ms};
};

TEST_F(Line, ShowsBarCountAndTheTimeThatIsLeft) {
  console::ProgressLine line(console_);
  line.start("glucose", 200);
  EXPECT_EQ(shown(), "\r[..............................] glucose 0/200");
  line.set_value(50);
  EXPECT_EQ(shown(), "\r[#######.......................] glucose 50/200");
  std::this_thread::sleep_for(510ms);
  line.set_value(100);
  EXPECT_EQ(shown(), "\r[###############...............] glucose 100/200, 0:01 left");
  line.set_value(200);
  EXPECT_EQ(shown(), "\r[##############################] glucose 200/200           ");
  line.clear();
  EXPECT_THAT(shown(), AllOf(MatchesRegex("\r *\r")));
  line.start("rows", 0);
  line.set_value(7);
  EXPECT_THAT(shown(), EndsWith("\r[..............................] rows 7"));
}

TEST_F(Line, StaysOnOneLineWhateverItsCaptionHolds) {
  console::ProgressLine line(console_);
  line.start(std::string(60, 'w') + "ä\n\x1b[2J", 10);
  const std::string text = shown();
  EXPECT_EQ(support::character_count(text), 80U);
  EXPECT_THAT(text, AllOf(EndsWith("… 0/10"), Not(HasSubstr("\n")), Not(HasSubstr("\x1b"))));
}

TEST_F(Line, SaysNothingOfQuickWorkOrWhereNobodyLooks) {
  const auto work = [](console::Console& console) {
    console::ProgressLine line(console);
    line.start("glucose", 2);
    line.upgrade_step(25, "patdat");
    line.set_value(2);
    line.finish();
  };
  console_.progress_delay = 1h;
  work(console_);
  console_.progress_delay = 0ms;
  console_.err_is_terminal = false;
  work(console_);
  EXPECT_EQ(shown(), "");
}

TEST_F(Line, WaitsForItsDelayAndThenShowsWhatIsBeingDone) {
  console_.progress_delay = 30ms;
  console::ProgressLine line(console_);
  line.start("glucose", 2);
  EXPECT_EQ(shown(), "");
  std::this_thread::sleep_for(35ms);
  line.set_value(1);
  EXPECT_THAT(shown(), EndsWith("] glucose 1/2"));
}

TEST(Duration, IsReadAsAClock) {
  EXPECT_EQ(console::duration_text(7s), "0:07");
  EXPECT_EQ(console::duration_text(12min + 30s), "12:30");
  EXPECT_EQ(console::duration_text(1h + 2min + 3s), "1:02:03");
}

}  // namespace
