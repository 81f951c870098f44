#include "database/query_filter.h"

#include <gtest/gtest.h>

namespace database {
namespace {

engine::Date day(int year, int month, int number) { return engine::date_from(year, month, number); }
engine::Date at(int hour, int minute, int second = 0) { return engine::date_from(1899, 12, 30, hour, minute, second); }

Filter march() {
  Filter filter;
  filter.date_from = day(2024, 3, 7);
  filter.date_until = day(2024, 12, 31);
  return filter;
}

constexpr std::string_view days = "(vdate BETWEEN #3/7/2024# AND #12/31/2024#) ";

TEST(Literals, AreInUsOrderWhateverTheLocale) {
  EXPECT_EQ(date_literal(day(2024, 3, 7)), "#3/7/2024#");
  EXPECT_EQ(date_literal(engine::date_from(2024, 3, 7, 6, 5, 4), true), "#3/7/2024 06:05:04#");
  EXPECT_EQ(time_literal(engine::date_from(2024, 3, 7, 6)), "#06:00:00#");
}

struct FilterCase {
  const char* what;
  void (*set)(Filter& filter);
  std::string_view after_days;
};

TEST(FilterText, AddsTimesHoursAndWeekdaysAsTheyAreGiven) {
  const FilterCase cases[] = {
      {"days only", [](Filter&) {}, ""},
      {"a range of times", [](Filter& f) { f.time_from = at(6, 0), f.time_until = at(9, 30); },
       " AND (vtime BETWEEN #06:00:00# AND #09:30:00#) "},
      {"times across midnight", [](Filter& f) { f.time_from = at(22, 0), f.time_until = at(6, 0); },
       " AND ( (vtime BETWEEN #22:00:00# AND #23:59:59#) OR (vtime BETWEEN #00:00:00# AND #06:00:00#) ) "},
      {"no until, no time filter", [](Filter& f) { f.time_from = at(6, 0); }, ""},
      {"hours", [](Filter& f) { f.hour_from = 5, f.hour_until = 22; }, " AND (vtime BETWEEN 5 AND 22) "},
      {"hours before times",
       [](Filter& f) { f.hour_from = 0, f.hour_until = 0, f.time_from = at(6, 0), f.time_until = at(7, 0); },
       " AND (vtime BETWEEN 0 AND 0) "},
      {"hours across midnight", [](Filter& f) { f.hour_from = 22, f.hour_until = 5; },
       " AND ( (vtime BETWEEN 22 AND 23 ) OR (vtime BETWEEN 0 AND 5) ) "},
      {"weekdays", [](Filter& f) { f.weekdays = "1,7"; }, " AND (weekday(vdate) IN (1,7)) "},
      {"all weekdays", [](Filter& f) { f.weekdays = "0"; }, ""},
  };
  for (const FilterCase& row : cases) {
    Filter filter = march();
    row.set(filter);
    EXPECT_EQ(filter_text(filter), std::string(days) + std::string(row.after_days)) << row.what;
  }
}

TEST(FilterText, TakesOtherColumnsForDayAndTime) {
  Filter filter = march();
  filter.hour_from = 1, filter.hour_until = 2;
  EXPECT_EQ(filter_text(filter, "dateofimport", "hour(vtime)"),
            "(dateofimport BETWEEN #3/7/2024# AND #12/31/2024#)  AND (hour(vtime) BETWEEN 1 AND 2) ");
}

TEST(PumpEvents, AreSelectedByTheirCodes) {
  const std::pair<int, std::string_view> selectors[] = {
      {0, " AND (event =114 or event= 1114) "},
      {1, " AND (event =115 or event= 1115) "},
      {2, " AND (event =114 or event = 115 or event =1114 or event = 1115) "},
      {3, " AND (event =110 or event= 1110) "},
      {4, " AND (event =111 or event= 1111) "},
      {5, " AND (event =110 or event = 111 or event =1110 or event = 1111) "},
      {6, " AND (event =100 or event = 1100) "},
      {7, " AND (event =101 or event = 1101) "},
      {8, " AND (event = 77) "},
      {-1, " AND (event = 77) "},
  };
  Filter filter = march();
  filter.time_from = at(6, 0), filter.time_until = at(9, 0);
  for (const auto& [selector, criterion] : selectors) {
    EXPECT_EQ(SQL_GetPumpEvents(filter, selector, 77),
              "SELECT * from insulin WHERE (vdate BETWEEN #3/7/2024# AND #12/31/2024#) AND  (vtime BETWEEN #06:00:00# "
              "AND #09:00:00#) " +
                  std::string(criterion) + " ORDER by vdate, vtime");
  }
}

TEST(PumpEvents, CrossMidnightUpTo2359) {
  Filter filter = march();
  filter.time_from = at(22, 0), filter.time_until = at(6, 0), filter.weekdays = "2";
  EXPECT_EQ(
      SQL_GetPumpEvents(filter, 6, 0),
      "SELECT * from insulin WHERE (vdate BETWEEN #3/7/2024# AND #12/31/2024#) AND ( (vtime BETWEEN #22:00:00# AND "
      "#23:59:00#) OR  (vtime BETWEEN #00:00:00# AND #06:00:00#) )  AND (weekday(vdate) IN (2) ) AND (event =100 "
      "or event = 1100)  ORDER by vdate, vtime");
}

}  // namespace
}  // namespace database
