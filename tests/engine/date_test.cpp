#include "database/engine/date.h"

#include "database/engine/date_text.h"
#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

TEST(Dates, CountOverTheWholeCalendar) {
  struct Case {
    double days;
    const char* text;
  };
  for (const Case& row :
       {Case{0, "1899-12-30 00:00:00"}, Case{-1.25, "1899-12-29 06:00:00"}, Case{-657434, "0100-01-01 00:00:00"},
        Case{2958465, "9999-12-31 00:00:00"}, Case{60, "1900-02-28 00:00:00"}, Case{36585, "2000-02-29 00:00:00"},
        Case{45000.999999, "2023-03-16 00:00:00"}}) {
    EXPECT_EQ(iso_text(Date{row.days}), row.text);
  }
  for (double days = -657434; days <= 2958465; days += 371.5) {
    const CalendarTime time = calendar_time(Date{days});
    ASSERT_EQ(date_from(time.year, time.month, time.day, time.hour, time.minute, time.second), Date{days});
  }
  EXPECT_EQ(date_from(2023, 14, 31), date_from(2024, 3, 2)) << "months and days beyond the end run on";
  EXPECT_EQ(date_from(2024, -12, 0), date_from(2022, 11, 30));
  EXPECT_EQ(error_number([] { date_from(99, 12, 31); }), 6);
  for (const double days : {1e300, 2958466.0, -657435.0}) {
    EXPECT_EQ(error_number([=] { iso_text(Date{days}); }), 6) << days;
  }
}

TEST(Dates, KeepEverySecondBeforeAndAfterDayZero) {
  for (std::int64_t second = -2 * seconds_per_day; second < 2 * seconds_per_day; second += 7) {
    ASSERT_EQ(seconds_of(date_of_seconds(second)), second);
  }
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
    const auto date = parse_date(row.text, row.order);
    EXPECT_EQ(row.expected, date ? iso_text(*date) : "") << row.text;
  }
}

}  // namespace
}  // namespace engine::test
