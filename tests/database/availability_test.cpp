#include "database/availability.h"

#include <cmath>

#include "tests/database/database_test.h"

namespace database {
namespace {

class AvailabilityTest : public testing::DatabaseTest {
 public:
  AvailabilityTest() : file(patient_database()) {}

  /// "category count first last" of each category that is found.
  std::vector<std::string> found(const AvailabilityRequest& request = {}) const {
    std::vector<std::string> lines;
    for (const Availability& entry : find_availability(environment, file, request)) {
      lines.push_back(std::to_string(entry.category) + " " + std::to_string(entry.count) + " " +
                      engine::iso_text(entry.first).substr(0, 10) + " " + engine::iso_text(entry.last).substr(0, 10));
    }
    return lines;
  }

  std::string file;
};

using Lines = std::vector<std::string>;

const std::initializer_list<std::string_view> three_weeks = {
    // 4 March 2024 is a Monday (2).
    "INSERT INTO glucose (vdate, vtime, [value], event, bloodtype, importid) VALUES (#3/4/2024#, #06:00:00#, 100, 2, "
    "0, 1)",
    "INSERT INTO glucose (vdate, vtime, [value], event, bloodtype, importid) VALUES (#3/5/2024#, #12:00:00#, 140, 3, "
    "0, 1)",
    "INSERT INTO glucose (vdate, vtime, [value], event, bloodtype, importid) VALUES (#3/9/2024#, #23:30:00#, 180, 0, "
    "255, 2)",
    "INSERT INTO insulin (vdate, vtime, bolusie, basalie, rapid) VALUES (#3/4/2024#, #07:00:00#, 6, 0, 0)",
    "INSERT INTO insulin (vdate, vtime, bolusie, basalie, rapid) VALUES (#3/4/2024#, #22:00:00#, 0, 14, 0)",
    "INSERT INTO insulin (vdate, vtime, bolusie, basalie, rapid) VALUES (#3/6/2024#, #07:00:00#, 4, 0, -1)",
    "INSERT INTO insulin (vdate, vtime, bolusie, basalie, rapid) VALUES (#3/7/2024#, #07:00:00#, 3, 9, 0)",
    "INSERT INTO labvalues (vdate, vtime, [value], [type]) VALUES (#3/1/2024#, #08:00:00#, 7.1, 11)",
    "INSERT INTO labvalues (vdate, vtime, [value], [type]) VALUES (#3/2/2024#, #08:00:00#, 81, 1)",
    "INSERT INTO callback (vdate, category) VALUES (#3/8/2024#, 2)",
    "INSERT INTO memos (vdate, typ, mmemo) VALUES (#3/8/2024#, 1, 'x')",
    "INSERT INTO import (dateofimport) VALUES (#3/10/2024#)",
    "INSERT INTO glucose (vtime, [value]) VALUES (#06:00:00#, 90)",
};

TEST_F(AvailabilityTest, FindsEachCategoryThatHasRows) {
  EXPECT_EQ(found(), Lines{});
  execute(file, three_weeks);
  EXPECT_EQ(found(), (Lines{"0 3 2024-03-04 2024-03-09", "1 4 2024-03-04 2024-03-07", "9 1 2024-03-01 2024-03-01",
                            "11 1 2024-03-09 2024-03-09", "12 1 2024-03-02 2024-03-02", "13 1 2024-03-01 2024-03-01",
                            "14 1 2024-03-08 2024-03-08", "15 1 2024-03-04 2024-03-04", "16 1 2024-03-05 2024-03-05",
                            "17 1 2024-03-04 2024-03-04", "18 1 2024-03-04 2024-03-04", "19 1 2024-03-06 2024-03-06",
                            "20 1 2024-03-10 2024-03-10", "24 1 2024-03-07 2024-03-07", "25 1 2024-03-08 2024-03-08"}));
}

TEST_F(AvailabilityTest, NarrowsByMaskDaysTimesWeekdaysAndImport) {
  execute(file, three_weeks);
  AvailabilityRequest request;
  request.categories = 1 << 0 | 1 << 20;
  request.days = {engine::date_from(2024, 3, 5), engine::date_from(2024, 3, 10)};
  EXPECT_EQ(found(request), (Lines{"0 2 2024-03-05 2024-03-09", "20 1 2024-03-10 2024-03-10"}));
  request.weekdays = "7";
  EXPECT_EQ(found(request), (Lines{"0 1 2024-03-09 2024-03-09"}));
  request = {};
  request.categories = 1 << 0 | 1 << 1 | 1 << 14;
  request.import_id = 1;
  EXPECT_EQ(found(request), (Lines{"0 2 2024-03-04 2024-03-05", "14 1 2024-03-08 2024-03-08"}));
  request = {};
  request.categories = 1 << 0;
  request.days = {engine::date_from(2024, 3, 1), engine::date_from(2024, 3, 31)};
  request.times = {engine::date_from(1899, 12, 30, 5), engine::date_from(1899, 12, 30, 13)};
  EXPECT_EQ(found(request), (Lines{"0 2 2024-03-04 2024-03-05"}));
}

TEST_F(AvailabilityTest, LeavesOutEntriesWithoutATimeOfDayWhereTimesAreAskedFor) {
  execute(file, three_weeks);
  AvailabilityRequest request;
  request.days = {engine::date_from(2024, 3, 1), engine::date_from(2024, 3, 31)};
  EXPECT_EQ(categories_without_times(request), std::vector<std::int16_t>{});
  request.times = {engine::date_from(1899, 12, 30, 5), engine::date_from(1899, 12, 30, 13)};
  EXPECT_EQ(found(request),
            (Lines{"0 2 2024-03-04 2024-03-05", "1 3 2024-03-04 2024-03-07", "9 1 2024-03-01 2024-03-01",
                   "12 1 2024-03-02 2024-03-02", "13 1 2024-03-01 2024-03-01", "15 1 2024-03-04 2024-03-04",
                   "16 1 2024-03-05 2024-03-05", "17 1 2024-03-04 2024-03-04", "19 1 2024-03-06 2024-03-06",
                   "24 1 2024-03-07 2024-03-07"}));
  EXPECT_EQ(categories_without_times(request), (std::vector<std::int16_t>{20, 21, 25, 26}));
  request.categories = 1 << 21 | 1 << 0;
  EXPECT_EQ(categories_without_times(request), std::vector<std::int16_t>{21});
}

TEST_F(AvailabilityTest, LetsTimesCrossMidnight) {
  execute(file, three_weeks);
  AvailabilityRequest request;
  request.categories = 1 << 0 | 1 << 1;
  request.days = {engine::date_from(2024, 3, 1), engine::date_from(2024, 3, 31)};
  request.times = {engine::date_from(1899, 12, 30, 22), engine::date_from(1899, 12, 30, 6)};
  EXPECT_EQ(found(request), (Lines{"0 2 2024-03-04 2024-03-09", "1 1 2024-03-04 2024-03-04"}));
}

TEST_F(AvailabilityTest, GivesTheSameAsTheUnionItself) {
  execute(file, three_weeks);
  AvailabilityRequest request;
  request.weekdays = "2,3,4,5,6,7,1";
  const auto opened = open(file);
  const auto rows = opened.database->open_recordset(availability_query(request));
  const auto entries = find_availability(environment, file, request);
  std::size_t compared = 0;
  for (; !rows->eof(); rows->move_next()) {
    if (engine::to_int32(rows->value("ncount")) == 0) continue;
    ASSERT_LT(compared, entries.size());
    const Availability& entry = entries[compared++];
    EXPECT_EQ(entry.category, engine::to_int32(rows->value("typ")));
    EXPECT_EQ(entry.count, engine::to_int32(rows->value("ncount")));
    EXPECT_EQ(entry.first, engine::to_date(rows->value("mindate")));
    EXPECT_EQ(entry.last, engine::to_date(rows->value("maxdate")));
    const engine::Value checksum = rows->value("icrc");
    ASSERT_EQ(entry.checksum.has_value(), !engine::is_null(checksum)) << entry.category;
    if (entry.checksum) {
      EXPECT_DOUBLE_EQ(*entry.checksum, engine::to_double(checksum)) << entry.category;
    }
  }
  EXPECT_EQ(compared, entries.size());
}

TEST_F(AvailabilityTest, WritesALineACategory) {
  execute(file, three_weeks);
  AvailabilityRequest request;
  request.categories = 1 << 0 | 1 << 14 | 1 << 11;
  // The days are 1 and 5 days after the first; the times are 6, 12 and 23.5 hours of 24.
  const double mean = 41.5 / 3;
  const double hours = std::sqrt((std::pow(6 - mean, 2) + std::pow(12 - mean, 2) + std::pow(23.5 - mean, 2)) / 2);
  const double checksum = 140 + 3 + 0 + std::sqrt(7.0) + hours / 24;
  const std::string text = availability_summary(environment, file, request);
  const std::string start = "0|2024-03-04|2024-03-09|";
  ASSERT_EQ(text.substr(0, start.size()), start);
  EXPECT_NEAR(std::stod(text.substr(start.size())), checksum, 1e-6);
  EXPECT_EQ(text.substr(text.find('\r')),
            "\r\n11|2024-03-09|2024-03-09|\r\n14|2024-03-08|2024-03-08|2.00000000000\r\n");
}

TEST(AvailabilityQuery, IsOneUnionInCategoryOrder) {
  AvailabilityRequest request;
  request.categories = 1 << 8 | 1 << 11;
  request.import_id = 5;
  EXPECT_EQ(availability_query(request),
            "SELECT count(vdate) as nCount, 8 as typ,   (avg(typ)+count(vdate)) as iCRC, max(vdate) as maxdate, "
            "min(vdate) as mindate FROM patdat_doctor WHERE isnull(vdate)=0 " +
                std::string(11, ' ') +
                " UNION SELECT count(vdate) as nCount, 11 as typ,   "
                "(avg(value)+count(vdate)+typ+stdev(vdate)+stdev(vtime)) as iCRC, max(vdate) as maxdate, min(vdate) as "
                "mindate FROM glucose WHERE isnull(vdate)=0 " +
                std::string(7, ' ') + " AND (bloodtype=255)     AND (importid=5) ORDER BY typ ASC");
  request.import_id = 0;
  EXPECT_NE(availability_query(request).find("AND (importid=0)"), std::string::npos);
  request.categories = 1 << 20;
  request.days = {engine::date_from(2024, 3, 1), engine::date_from(2024, 3, 2)};
  request.weekdays = "1";
  const std::string import = availability_query(request);
  EXPECT_EQ(import.find("vdate"), std::string::npos) << import;
  EXPECT_NE(import.find("(weekday(dateofimport) IN (1))"), std::string::npos) << import;
}

}  // namespace
}  // namespace database
