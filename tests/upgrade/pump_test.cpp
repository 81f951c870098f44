// Basal insulin of a period, the pump's statistics, and the days of `ip` that they read.
#include <algorithm>
#include <map>
#include <random>

#include "database/pump_days.h"
#include "database/pump_statistics.h"
#include "database/query_filter.h"
#include "tests/upgrade/old_layout.h"

namespace database::testing {
namespace {

struct PumpRow {
  std::string_view moment;  ///< "#m/d/yyyy#, #hh:mm:ss#"
  double amount;
  int type = 1;
  std::string_view description = "'3600'";
  std::string_view comment = "'Profil'";
};

class Pump : public OldLayout {
 protected:
  std::string database_with(const std::vector<PumpRow>& entries) {
    const std::string file = patient_database();
    const Opened opened = open(file);
    engine::Transaction transaction{*opened.database};
    for (const PumpRow& row : entries) {
      opened.database->execute("INSERT INTO insulinpump (vDate, vTime, Amount, [Type], [desc], Comment) VALUES (" +
                               std::string(row.moment) + ", " + std::to_string(row.amount) + ", " +
                               std::to_string(row.type) + ", " + std::string(row.description) + ", " +
                               std::string(row.comment) + ")");
    }
    transaction.commit();
    return file;
  }

  static PumpPeriod days(int from, int until) {
    PumpPeriod period;
    period.date_from = engine::date_from(2020, 5, from);
    period.date_until = engine::date_from(2020, 5, until);
    return period;
  }
  static PumpPeriod whole_days(int from, int until) {
    PumpPeriod period = days(from, until);
    period.times.emplace(database::time_of_day(0, 0), database::time_of_day(23, 59, 59));
    return period;
  }
};

TEST_F(Pump, SumsBasalRatesUpFromEntryToEntry) {
  struct Case {
    std::string_view what;
    std::vector<PumpRow> entries;
    PumpPeriod period;
    float units;
  };
  const Case cases[] = {
      {"nothing", {}, whole_days(4, 4), 0},
      {"one rate all day, a second short of it", {{"#5/4/2020#, #00:00:00#", 1.2}}, whole_days(4, 4), 28.8F},
      {"the rate of the day before until the first entry",
       {{"#5/3/2020#, #22:00:00#", 0.5}, {"#5/4/2020#, #12:00:00#", 1}},
       whole_days(4, 4),
       18},
      {"its own first rate where none is before", {{"#5/4/2020#, #12:00:00#", 1}}, whole_days(4, 4), 24},
      {"a rate eight days old does not count",
       {{"#5/3/2020#, #12:00:00#", 2}, {"#5/12/2020#, #12:00:00#", 1}},
       whole_days(12, 12),
       24},
      {"a rate seven days old does, and of two at once the larger",
       {{"#5/5/2020#, #00:00:00#", 2}, {"#5/5/2020#, #00:00:00#", 3}, {"#5/12/2020#, #12:00:00#", 1}},
       whole_days(12, 12),
       48},
      {"calculated entries and entries without comment are no earlier rates, but count themselves",
       {{"#5/3/2020#, #20:00:00#", 2, 1, "'60'", "'Calc'"},
        {"#5/3/2020#, #21:00:00#", 3, 1, "'60'", "Null"},
        {"#5/3/2020#, #19:00:00#", 1},
        {"#5/4/2020#, #12:00:00#", 4, 1, "'60'", "'calc'"}},
       whole_days(4, 4),
       59.999F},
      {"marked, undescribed and negative entries and boluses are no rates",
       {{"#5/4/2020#, #00:00:00#", 1},
        {"#5/4/2020#, #06:00:00#", 9, 1, "'-1'"},
        {"#5/4/2020#, #06:00:00#", 9, 1, "Null"},
        {"#5/4/2020#, #06:00:00#", 9, 1, "''"},
        {"#5/4/2020#, #06:00:00#", -1},
        {"#5/4/2020#, #06:00:00#", 9, 2}},
       whole_days(4, 4),
       24},
      {"a pause of the pump is marked with no amount",
       {{"#5/4/2020#, #00:00:00#", 1}, {"#5/4/2020#, #12:00:00#", 0, 1, "'-1'"}},
       whole_days(4, 4),
       12},
      {"more than a day: the seconds of the description",
       {{"#5/4/2020#, #00:00:00#", 1, 1, "' 7200'"}, {"#5/6/2020#, #12:00:00#", 2}},
       whole_days(4, 6),
       25.999F},
      {"units of an interval have three decimals",
       {{"#5/4/2020#, #00:00:00#", 0.05}, {"#5/4/2020#, #00:01:00#", 0.05}, {"#5/4/2020#, #00:02:00#", 0}},
       whole_days(4, 4),
       0.002F},
      {"without times the last day is not in the period", {{"#5/4/2020#, #00:00:00#", 1}}, days(4, 5), 24},
  };
  for (const Case& row : cases) {
    EXPECT_FLOAT_EQ(db_IP_CalcBasal(environment, database_with(row.entries), row.period), row.units) << row.what;
  }
}

TEST_F(Pump, CountsOnlyTheDaysAndTimesOfThePeriod) {
  const std::string file = database_with({{"#5/3/2020#, #18:00:00#", 1},  // a Sunday
                                          {"#5/4/2020#, #06:00:00#", 2},
                                          {"#5/4/2020#, #09:00:00#", 3},
                                          {"#5/4/2020#, #18:00:00#", 4}});
  PumpPeriod period = days(4, 4);
  period.times.emplace(database::time_of_day(8, 0), database::time_of_day(10, 0));
  EXPECT_FLOAT_EQ(db_IP_CalcBasal(environment, file, period), 2 + 3);
  period = whole_days(3, 4);
  period.weekdays = "2";
  // Sunday's rate is in force from its start for more than a day: the hour of its description. It is no entry itself.
  EXPECT_FLOAT_EQ(db_IP_CalcBasal(environment, file, period), 1 + 6 + 27 + 23.999F);
  EXPECT_FLOAT_EQ(db_IP_CalcBasal(environment, path("missing.das"), period), 0);
}

/// Random entries: many at one moment, days without any, marks and calculated ones.
std::vector<PumpRow> random_entries(std::mt19937& random, std::vector<std::string>& moments) {
  std::vector<PumpRow> entries;
  moments.reserve(200);
  const auto any = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
  for (int i = 0; i < 200; ++i) {
    moments.push_back("#5/" + std::to_string(1 + any(28)) + "/2020#, #" + std::to_string(any(24)) + ":" +
                      std::to_string(any(4) * 15) + ":00#");
    PumpRow row{moments.back(), any(30) / 10.0, 1 + any(8) / 5};
    if (any(10) == 0) row.description = "'-1'";
    if (any(6) == 0) row.comment = "'calc'";
    if (any(6) == 0) row.comment = "Null";
    entries.push_back(row);
  }
  return entries;
}

TEST_F(Pump, HasForEachDayWhatThePeriodOfThatDayHas) {
  std::mt19937 random{20};
  for (int round = 0; round < 5; ++round) {
    std::vector<std::string> moments;
    const std::string file = database_with(random_entries(random, moments));
    const Opened opened = open(file);
    const std::vector<PumpDay> found = pump_days(*opened.database);
    EXPECT_GT(found.size(), 20U);
    for (const PumpDay& day : found) {
      PumpPeriod period = whole_days(1, 1);
      period.date_from = period.date_until = day.day;
      EXPECT_FLOAT_EQ(day.basal, db_IP_CalcBasal(environment, *opened.database, period)) << engine::iso_text(day.day);
      const auto sums =
          rows(file, "SELECT count(*), sum(amount) FROM insulinpump WHERE [Type]>1 AND vDate=" + date_literal(day.day));
      const auto boluses =
          engine::to_text(day.boluses) + "|" + (day.boluses == 0 ? "Null" : engine::to_text(day.bolus));
      EXPECT_EQ(sums, std::vector<std::string>{boluses});
    }
  }
}

TEST_F(Pump, GathersItsStatistics) {
  const std::string file = database_with({{"#5/4/2020#, #06:00:00#", 1, 1, "'90'"},
                                          {"#5/4/2020#, #06:30:00#", 2, 1, "'30'"},
                                          {"#5/5/2020#, #22:00:00#", 0.5, 1, "'180'"},
                                          {"#5/4/2020#, #12:00:00#", 4, 2, "''"},
                                          {"#5/4/2020#, #12:59:59#", 6, 2, "''"},
                                          {"#5/5/2020#, #12:00:00#", 5, 3, "''"},
                                          {"#5/6/2020#, #12:00:00#", 0, 2, "''"}});
  const PumpStatistics statistics = db_GetIGPumpStats(environment, file, days(4, 6));
  ASSERT_TRUE(statistics.first && statistics.last);
  EXPECT_EQ(engine::iso_text(*statistics.first), "2020-05-04 06:00:00");
  EXPECT_EQ(engine::iso_text(*statistics.last), "2020-05-06 01:00:00");
  EXPECT_EQ(statistics.span_minutes, 43 * 60);
  EXPECT_EQ(statistics.basal_days, 2);
  EXPECT_EQ(statistics.basal_entries, 3);
  EXPECT_EQ(statistics.bolus_days, 2);
  EXPECT_EQ(statistics.boluses, 3);
  EXPECT_DOUBLE_EQ(statistics.bolus_total, 15);
  EXPECT_DOUBLE_EQ(statistics.bolus_per_day, 7.5);
  // 6.5 hours of 1, 39.5 of 2, and 26 hours, more than a day, of 0.5: the 180 of the description as seconds.
  EXPECT_FLOAT_EQ(statistics.basal_total, 6.5F + 0.017F + 0.025F);
  std::string hours;
  for (const auto& hour : statistics.hours) {
    hours += std::to_string(hour.hour) + "/" + std::to_string(hour.type) + ": " + std::to_string(hour.entries) + " " +
             engine::to_text(hour.total) + " " + engine::to_text(hour.average) + "\n";
  }
  EXPECT_EQ(hours, "6/1: 2 3 1,5\n12/2: 2 10 5\n12/3: 1 5 5\n22/1: 1 0,5 0,5\n");

  PumpPeriod evening = days(4, 6);
  evening.times.emplace(database::time_of_day(20, 0), database::time_of_day(23, 59, 59));
  EXPECT_EQ(db_GetIGPumpStats(environment, file, evening).basal_entries, 1);
  evening.weekdays = "2";
  EXPECT_EQ(db_GetIGPumpStats(environment, file, evening).basal_entries, 0);
}

constexpr std::int64_t day_length = 86400;

struct PlainEntry {
  std::int64_t second = 0;  ///< counted from the first day's midnight
  double amount = 0;
  bool basal = true;
};

/// A period as the plain model sees it: the days from the first on, and the times of day on each.
struct PlainPeriod {
  std::int64_t first = 0, last = 0;
  std::int64_t from = 0, until = day_length - 1;
  bool has_times = true;
  std::string weekdays = {};

  bool holds_day(std::int64_t second) const {
    const std::int64_t weekday = (second / day_length + 5) % 7 + 1;  // 1 May 2020 was a Friday
    return weekdays.empty() || weekdays.find(std::to_string(weekday)) != std::string::npos;
  }
  bool holds_time(std::int64_t second) const {
    const std::int64_t time = second % day_length;
    return from <= until ? time >= from && time <= until : time >= from || time <= until;
  }
  bool holds_entry(std::int64_t second) const {
    const std::int64_t day = second / day_length;
    return day >= first && day <= last && holds_day(second) && holds_time(second);
  }
  std::int64_t start() const { return first * day_length + from; }
  std::int64_t end() const { return (from > until && first == last ? last + 1 : last) * day_length + until; }
};

/// Sums the rates of the entries; each rate begins at its second.
double plain_basal(const std::vector<PlainEntry>& sorted, const PlainPeriod& period) {
  const std::int64_t start = period.start(), end = period.end();
  std::vector<PlainEntry> rates;
  const PlainEntry* newest = nullptr;
  const PlainEntry* first = nullptr;
  for (const PlainEntry& entry : sorted) {
    if (!entry.basal) continue;
    const bool within = entry.second >= start && entry.second <= end;
    if (entry.second < start && entry.second >= start - 7 * day_length) newest = &entry;
    if (!first && within) first = &entry;
    if (within && period.holds_time(entry.second) && period.holds_day(entry.second)) rates.push_back(entry);
  }
  if (!newest) newest = first;
  if (newest && (rates.empty() || rates[0].second != start)) rates.insert(rates.begin(), {start, newest->amount});
  double units = 0;
  for (std::size_t i = 0; i < rates.size(); ++i) {
    const std::int64_t lasted = (i + 1 < rates.size() ? rates[i + 1].second : end) - rates[i].second;
    units += rates[i].amount / 3600 * static_cast<double>(lasted > day_length ? 3600 : lasted);
  }
  return units;
}

PlainPeriod plain_period(std::mt19937& random) {
  PlainPeriod period;
  period.first = static_cast<std::int64_t>(random() % 11);
  period.last = period.first + static_cast<std::int64_t>(random() % 3);
  if (random() % 4 == 0) period.weekdays = random() % 2 == 0 ? "1,7" : "2,3,4,5,6";
  period.has_times = random() % 4 != 0;
  if (!period.has_times) return period;
  period.from = static_cast<std::int64_t>(random() % 96) * 900;
  period.until = static_cast<std::int64_t>(random() % 96) * 900;
  if (period.until == 0) period.until = 900;
  return period;
}

/// One entry at each moment. Some moments are a second before the hour, because bounds are whole minutes or have
/// seconds.
std::vector<PlainEntry> plain_entries(std::mt19937& random) {
  std::map<std::int64_t, PlainEntry> entries;
  for (int i = 0; i < 120; ++i) {
    const std::int64_t second =
        static_cast<std::int64_t>(random() % (12 * 96)) * 900 - static_cast<std::int64_t>(random() % 2);
    entries[std::abs(second)] = {std::abs(second), static_cast<double>(random() % 30) / 10, random() % 3 != 0};
  }
  std::vector<PlainEntry> sorted;
  for (const auto& [second, entry] : entries) sorted.push_back(entry);
  return sorted;
}

std::string moment_literals(std::int64_t second) {
  const engine::Date time{static_cast<double>(second % day_length) / day_length};
  return "#5/" + std::to_string(1 + second / day_length) + "/2020#, " + time_literal(time);
}

/// The sums of the entries of one kind, by day and by hour.
struct PlainFigures {
  std::map<std::int64_t, double> days;
  std::map<std::int64_t, std::pair<int, double>> hours;
  int entries = 0;
  double total = 0;
};

PlainFigures plain_figures(const std::vector<PlainEntry>& entries, const PlainPeriod& period, bool basal) {
  PlainFigures figures;
  for (const PlainEntry& entry : entries) {
    if (entry.basal != basal || entry.amount <= 0 || !period.holds_entry(entry.second)) continue;
    ++figures.entries;
    figures.total += entry.amount;
    figures.days[entry.second / day_length] += entry.amount;
    auto& [count, sum] = figures.hours[entry.second % day_length / 3600];
    ++count;
    sum += entry.amount;
  }
  return figures;
}

void expect_figures(const PumpStatistics& found, const PlainFigures& basal, const PlainFigures& bolus) {
  EXPECT_EQ(found.basal_entries, basal.entries);
  EXPECT_EQ(found.basal_days, static_cast<std::int32_t>(basal.days.size()));
  EXPECT_EQ(found.boluses, bolus.entries);
  EXPECT_EQ(found.bolus_days, static_cast<std::int32_t>(bolus.days.size()));
  EXPECT_NEAR(found.bolus_total, bolus.total, 1e-6);
  EXPECT_NEAR(found.bolus_per_day * static_cast<double>(bolus.days.size()), bolus.total, 1e-6);
  EXPECT_EQ(found.hours.size(), basal.hours.size() + bolus.hours.size());
  for (const PumpStatistics::Hour& hour : found.hours) {
    const auto& hours = hour.type == 1 ? basal.hours : bolus.hours;
    const auto known = hours.find(hour.hour);
    ASSERT_NE(known, hours.end()) << hour.hour;
    EXPECT_EQ(hour.entries, known->second.first);
    EXPECT_NEAR(hour.total, known->second.second, 1e-6);
    EXPECT_NEAR(hour.average * hour.entries, hour.total, 1e-6);
  }
}

TEST_F(Pump, CountsAnyPeriodAsAPlainModelDoes) {
  std::mt19937 random{31};
  for (int round = 0; round < 4; ++round) {
    const std::vector<PlainEntry> entries = plain_entries(random);
    std::vector<std::string> moments;
    for (const PlainEntry& entry : entries) moments.push_back(moment_literals(entry.second));
    std::vector<PumpRow> stored;
    for (std::size_t i = 0; i < entries.size(); ++i) {
      stored.push_back({moments[i], entries[i].amount, entries[i].basal ? 1 : 2});
    }
    const std::string file = database_with(stored);
    const Opened opened = open(file);
    for (int i = 0; i < 50; ++i) {
      const PlainPeriod plain = plain_period(random);
      SCOPED_TRACE(std::to_string(round) + "/" + std::to_string(i) + " days " + std::to_string(plain.first) + "-" +
                   std::to_string(plain.last) + ", " + std::to_string(plain.from) + "-" + std::to_string(plain.until) +
                   ", weekdays " + plain.weekdays);
      PumpPeriod period = days(static_cast<int>(plain.first) + 1, static_cast<int>(plain.last) + 1);
      period.weekdays = plain.weekdays;
      if (plain.has_times) {
        period.times.emplace(engine::Date{static_cast<double>(plain.from) / day_length},
                             engine::Date{static_cast<double>(plain.until) / day_length});
      }
      const PumpStatistics found = db_GetIGPumpStats(environment, *opened.database, period);
      EXPECT_NEAR(found.basal_total, plain_basal(entries, plain), 0.05);
      expect_figures(found, plain_figures(entries, plain, true), plain_figures(entries, plain, false));
    }
  }
}

TEST_F(Pump, CountsANightFromItsEveningToItsMorning) {
  const std::string file = database_with({{"#5/3/2020#, #12:00:00#", 1},
                                          {"#5/4/2020#, #03:00:00#", 9},
                                          {"#5/4/2020#, #12:00:00#", 1},
                                          {"#5/5/2020#, #03:00:00#", 2},
                                          {"#5/5/2020#, #12:00:00#", 9},
                                          {"#5/5/2020#, #23:00:00#", 9}});
  for (const int last : {4, 5}) {
    PumpPeriod night = days(4, last);
    night.times.emplace(database::time_of_day(22, 0), database::time_of_day(6, 0));
    EXPECT_FLOAT_EQ(db_IP_CalcBasal(environment, file, night), 5 + 3 * 2) << last;
  }
}

TEST_F(Pump, FindsNothingButTheBasalTotalForAProfile) {
  const std::string file = database_with({{"#5/4/2020#, #00:00:00#", 1}, {"#5/4/2020#, #12:00:00#", 4, 2}});
  const PumpStatistics statistics = db_GetIGPumpStats(environment, file, days(4, 4), 1);
  EXPECT_FALSE(statistics.first);
  EXPECT_EQ(statistics.basal_entries + statistics.boluses, 0);
  EXPECT_TRUE(statistics.hours.empty());
  EXPECT_FLOAT_EQ(statistics.basal_total, 24);
}

}  // namespace
}  // namespace database::testing
