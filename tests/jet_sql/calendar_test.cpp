#include "database/engine/embedded/jet_sql/calendar.h"

#include <gtest/gtest.h>

#include "database/engine/value.h"

namespace engine::embedded::jet_sql {
namespace {

TEST(Calendar, AgreesWithTheEngineOnEveryDay) {
  for (auto day = static_cast<std::int64_t>(first_day); day < static_cast<std::int64_t>(end_of_days); day += 13) {
    const Moment moment = to_moment(static_cast<double>(day));
    ASSERT_EQ(day, days_from_civil(moment.year, moment.month, moment.day));
    const Date date = date_from(static_cast<int>(moment.year), moment.month, moment.day);
    ASSERT_EQ(static_cast<double>(day), date.days);
  }
}

TEST(Calendar, AgreesWithTheEngineOnEverySecondBeforeAndAfterDayZero) {
  for (std::int64_t second = -2 * seconds_per_day; second < 2 * seconds_per_day; second += 7) {
    const double days = from_seconds(second);
    ASSERT_EQ(second, to_seconds(days));
    const Moment moment = to_moment(days);
    const CalendarTime time = calendar_time({days});
    ASSERT_EQ(time.day, moment.day) << days;
    ASSERT_EQ((time.hour * 60 + time.minute) * 60 + time.second,
              (moment.hour * 60 + moment.minute) * 60 + moment.second);
  }
}

TEST(Calendar, GivesTheVeryNumbersThatTheEngineStores) {
  for (int second = 0; second < seconds_per_day; second += 61) {
    for (const std::int64_t day : {0, 45358, -700}) {
      const Moment moment = to_moment(from_seconds(day * seconds_per_day + second));
      const Date date = date_from(static_cast<int>(moment.year), moment.month, moment.day, second / 3600,
                                  second / 60 % 60, second % 60);
      ASSERT_EQ(from_seconds(day * seconds_per_day + second), date.days);
    }
  }
}

TEST(Calendar, CarriesMonthsAndDaysOver) {
  EXPECT_EQ(days_from_civil(2024, 3, 1), days_from_civil(2024, 2, 30));
  EXPECT_EQ(days_from_civil(2025, 1, 1), days_from_civil(2024, 13, 1));
  EXPECT_EQ(days_from_civil(2023, 12, 31), days_from_civil(2024, 0, 31));
  EXPECT_EQ(days_from_civil(2022, 11, 30), days_from_civil(2024, -12, 0));
}

TEST(ParseDate, TakesTheOrderAskedForOrAFullYearFirst) {
  struct Row {
    const char* text;
    const char* order;
    const char* expected;  ///< "" for no date
  };
  constexpr Row rows[] = {
      {"3/7/2024", "mdy", "2024-03-07 00:00:00"},
      {"3/7/2024", "dmy", "2024-07-03 00:00:00"},
      {" 07.03.24  8:05 ", "dmy", "2024-03-07 08:05:00"},
      {"2024-03-07 23:59:59", "dmy", "2024-03-07 23:59:59"},
      {"12:30 am", "mdy", "1899-12-30 00:30:00"},
      {"12:30PM", "mdy", "1899-12-30 12:30:00"},
      {"2/29/2023", "mdy", ""},
      {"13/1/2024", "mdy", ""},
      {"1/1/0099", "mdy", ""},
      {"1/1", "mdy", ""},
      {"1/1/2024 25:00", "mdy", ""},
      {"13:00 pm", "mdy", ""},
      {"1:60", "mdy", ""},
      {"1/1/2024x", "mdy", ""},
      {"99999/1/1", "ymd", ""},
      {"", "mdy", ""},
  };
  for (const Row& row : rows) {
    const auto days = parse_date(row.text, row.order);
    EXPECT_EQ(row.expected, days ? iso_text({*days}) : "") << row.text;
  }
}

}  // namespace
}  // namespace engine::embedded::jet_sql
