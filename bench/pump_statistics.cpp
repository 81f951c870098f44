// Pump statistics of ten years, compared with the same figures by statements and one walk over the rates.
#include "database/pump_statistics.h"

#include <cmath>
#include <stdexcept>
#include <utility>

#include "bench/jobs.h"
#include "bench/long_history.h"
#include "bench/patient_file.h"
#include "bench/straight.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t seconds_of_day = 86400;

database::PumpPeriod all_days(const LongHistory& history) {
  database::PumpPeriod period;
  period.date_from = {first_day};
  period.date_until = {static_cast<double>(first_day + history.days())};
  return period;
}

double statistics_ours(const fs::path& file, const LongHistory& history) {
  const auto statistics = database::db_GetIGPumpStats(willing_environment(), windows_path(file), all_days(history));
  if (statistics.hours.empty()) throw std::runtime_error("no statistics");
  return static_cast<double>(statistics.basal_total) + statistics.bolus_total + statistics.basal_entries +
         statistics.boluses + statistics.span_minutes;
}

double number(sqlite3* database, const std::string& sql) {
  const StraightStatement statement = prepare(database, sql);
  sqlite3_step(statement.get());
  return sqlite3_column_double(statement.get(), 0);
}

std::string days_clause(int days) {
  return "vDate BETWEEN " + std::to_string(first_day) + " AND " + std::to_string(first_day + days);
}

/// Walks over the rates in the order of the statement. The first day begins with its first rate.
double basal_straight(sqlite3* database, int days) {
  const StraightStatement rows = prepare(database, R"(
    SELECT vDate+vTime, Amount, "desc" FROM insulinpump
    WHERE Amount>=0 AND length("desc")>0 AND ("desc"<>'-1' OR Amount=0) AND )" +
                                                       days_clause(days) + R"( AND Type=1
      AND vTime BETWEEN 0 AND 86399/86400.0 ORDER BY vDate+vTime, ID, Amount)");
  double total = 0, rate = 0, duration = 0;
  std::int64_t begin = first_day * seconds_of_day;
  const auto close = [&](std::int64_t second) {
    const double lasted = second - begin > seconds_of_day ? duration : static_cast<double>(second - begin);
    total += std::round(rate / 3600 * lasted * 1000) / 1000;
  };
  for (bool first = true; sqlite3_step(rows.get()) == SQLITE_ROW; first = false) {
    const std::int64_t second = std::llround(sqlite3_column_double(rows.get(), 0) * seconds_of_day);
    if (first) rate = sqlite3_column_double(rows.get(), 1);
    close(second);
    begin = second;
    rate = sqlite3_column_double(rows.get(), 1);
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(rows.get(), 2));
    duration = std::strtod(text, nullptr);
  }
  close((first_day + days + 1) * seconds_of_day - 1);
  return total;
}

double statistics_straight(const fs::path& file, const std::string& key, int days) {
  const StraightDatabase database = open_straight(file.string(), key);
  const std::string period = days_clause(days);
  const double minutes = number(database.get(), R"(
    SELECT CAST(round(max(until)*1440) AS INTEGER)-CAST(round(min(begin)*1440) AS INTEGER) FROM (
      SELECT vDate+vTime AS begin, vDate+vTime+CAST("desc" AS REAL)/1440 AS until FROM insulinpump
      WHERE )" + period + R"( AND (Type=1 OR "desc"<>'') GROUP BY 1, 2))");
  const auto by_day = [&](const std::string& type) {
    const StraightStatement sums =
        prepare(database.get(),
                "SELECT count(vDate), sum(n), avg(s), sum(s) FROM (SELECT vDate, count(Amount) AS n, sum(Amount) "
                "AS s FROM insulinpump WHERE Type" +
                    type + " AND Amount>0 AND " + period + " GROUP BY vDate)");
    sqlite3_step(sums.get());
    return std::pair(sqlite3_column_double(sums.get(), 1), sqlite3_column_double(sums.get(), 3));
  };
  const auto rates = by_day("=1"), boluses = by_day(">1");
  const StraightStatement hours =
      prepare(database.get(),
              "SELECT CAST(vTime*24+1e-7 AS INTEGER), Type, sum(Amount), avg(Amount), count(Amount) FROM "
              "insulinpump WHERE Amount>0 AND " +
                  period + " GROUP BY 1, 2");
  while (sqlite3_step(hours.get()) == SQLITE_ROW) {
  }
  return basal_straight(database.get(), days) + boluses.second + rates.first + boluses.first + minutes;
}

Job statistics_of(const fs::path& folder, int days) {
  const auto history = std::make_shared<LongHistory>(folder, days);
  const fs::path file = folder / ("statistics" + std::to_string(days) + ".das");
  const auto key = std::make_shared<std::string>();
  return {
      "pump statistics of ten years", 1.2, [=] { statistics_ours(file, *history); },
      [=] { statistics_straight(file, *key, history->days()); },
      [=] {
        if (!key->empty()) return;
        history->copy_to(file);
        *key = derived_key(file.string(), database::default_password);
        const double ours = statistics_ours(file, *history);
        const double straight = statistics_straight(file, *key, history->days());
        if (std::abs(ours - straight) > 1) {
          throw std::runtime_error("the statistics differ: " + std::to_string(ours) + ", " + std::to_string(straight));
        }
      }};
}

}  // namespace

Job pump_statistics_job(const fs::path& folder) { return statistics_of(folder, ten_years); }

GrowthJob pump_statistics_growth_job(const fs::path& folder) {
  return {"pump statistics, ten years beside one", statistics_of(folder, ten_years), statistics_of(folder, one_year)};
}

}  // namespace bench
