#include "database/query_filter.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/database/database_test.h"

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

class PumpEvents : public testing::DatabaseTest {
 protected:
  /// Events of the diary at one moment: each code with 1000 added, and one that no selector has.
  PumpEvents() : file(patient_database()) {
    std::string codes = "77";
    for (const int code : {100, 101, 110, 111, 114, 115}) {
      codes += "," + std::to_string(code) + "," + std::to_string(code + 1000);
    }
    const testing::Opened opened = open(file);
    std::istringstream list(codes);
    for (std::string code; std::getline(list, code, ',');) insert(*opened.database, "#3/7/2024#", "#07:00:00#", code);
    insert(*opened.database, "#1/1/2024#", "#07:00:00#", "100");
    insert(*opened.database, "#3/7/2024#", "#09:00:01#", "100");
  }
  static void insert(engine::Database& database, const std::string& day, const std::string& time,
                     const std::string& code) {
    database.execute("INSERT INTO insulin (vdate, vtime, [event]) VALUES (" + day + "," + time + "," + code + ")");
  }
  /// The codes of the rows that the statement selects, in their order.
  std::string selected(const std::string& statement) const {
    const testing::Opened opened = open(file);
    std::string codes;
    for (const auto rows = opened.database->open_recordset(statement); !rows->eof(); rows->move_next()) {
      codes += (codes.empty() ? "" : " ") + testing::text_of(rows->value("event"));
    }
    return codes;
  }
  std::string file;
};

TEST_F(PumpEvents, AreSelectedByTheirCodes) {
  const std::pair<int, std::string_view> selectors[] = {
      {0, "114 1114"},          {1, "115 1115"}, {2, "114 1114 115 1115"}, {3, "110 1110"}, {4, "111 1111"},
      {5, "110 1110 111 1111"}, {6, "100 1100"}, {7, "101 1101"},          {8, "77"},       {-1, "77"},
  };
  Filter filter = march();
  filter.time_from = at(6, 0), filter.time_until = at(9, 0);
  for (const auto& [selector, codes] : selectors) {
    EXPECT_EQ(selected(SQL_GetPumpEvents(filter, selector, 77)), codes) << selector;
  }
}

TEST(PumpEventsText, CrossesMidnightUpTo2359) {
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
