#include "database/engine/embedded/share_patience.h"

#include <gtest/gtest.h>

namespace engine::test {
namespace {

using embedded::SharePatience;
using std::chrono::milliseconds;
using std::chrono::seconds;

TEST(SharePatience, WaitsForTheRestOfTheCacheTimeAndOncePerChange) {
  const SharePatience::Time now{seconds(1'000'000)};
  const struct {
    seconds age;
    seconds wait;
  } rows[] = {{seconds(0), seconds(10)},
              {seconds(4), seconds(6)},
              {seconds(10), seconds(0)},
              {seconds(86'400), seconds(0)},
              // The other computer's clock is ahead, so the age is not known.
              {seconds(-3'600), seconds(10)}};
  for (const auto& row : rows) {
    SharePatience patience(seconds(10));
    EXPECT_EQ(patience.wait_before_reading(now - row.age, now), milliseconds(row.wait)) << row.age.count();
    EXPECT_EQ(patience.wait_before_reading(now - row.age, now + seconds(1)), milliseconds(0)) << row.age.count();
  }
}

TEST(SharePatience, DoesNotWaitForItsOwnChangesAndForgetsThemInTime) {
  SharePatience patience(seconds(10));
  const SharePatience::Time now{seconds(1'000'000)};
  patience.changed_here(now, now);
  EXPECT_EQ(patience.wait_before_reading(now, now + seconds(2)), milliseconds(0));
  EXPECT_EQ(patience.wait_before_reading(now + seconds(2), now + seconds(3)), milliseconds(9'000)) << "somebody else's";
  // By then it does not have to wait because of its age, and its place in memory is free.
  patience.changed_here(now + seconds(60), now + seconds(60));
  EXPECT_EQ(patience.wait_before_reading(now, now + seconds(61)), milliseconds(0));
}

}  // namespace
}  // namespace engine::test
