// Pump data of ten years: their conversion, and their statistics.
#include <cmath>
#include <stdexcept>

#include "bench/jobs.h"
#include "bench/long_history.h"
#include "bench/pump_conversion.h"
#include "bench/straight.h"
#include "database/open_database.h"
#include "database/pump_statistics.h"
#include "database/version_record.h"

namespace bench {

void convert_straight(sqlite3* database) {
  execute(database, "DELETE FROM ip");
  execute(database,
          R"(UPDATE insulinpump SET "desc"=printf('%s%g', iif(CAST("desc" AS REAL)<0, '', ' '), CAST("desc" AS REAL)*60)
             WHERE "desc"<>'')");
  execute(database, R"(
    INSERT INTO ip(ID, vDate, vHour, TotalBolus, TotalBasal, PercentBolus, PercentBasal, NoBR, NoBls)
    WITH entry AS (
      SELECT vDate, ID, Amount, CAST(round((vDate+vTime)*86400) AS INTEGER) AS second, Comment<>'calc' AS counts
      FROM insulinpump
      WHERE Type=1 AND Amount>=0 AND length("desc")>0 AND ("desc"<>'-1' OR Amount=0) AND vTime BETWEEN 0 AND 86399/86400.0
    ), lasting AS (
      SELECT vDate, second, counts, Amount, row_number() OVER day AS place,
             lead(second, 1, CAST(vDate AS INTEGER)*86400+86399) OVER day-second AS seconds
      FROM entry WINDOW day AS (PARTITION BY vDate ORDER BY second, ID, Amount)
    ), summed AS (
      SELECT vDate, sum(round(Amount/3600*seconds, 3)) AS units, min(second)-CAST(vDate AS INTEGER)*86400 AS before,
             max(iif(place=1, Amount, NULL)) AS own_rate, max(iif(counts, second, NULL)) AS newest
      FROM lasting GROUP BY vDate
    ), started AS (
      SELECT s.vDate, s.units, s.before, s.own_rate,
             lag(s.newest) OVER days AS earlier, lag(l.Amount) OVER days AS earlier_rate
      FROM summed s LEFT JOIN (SELECT second, max(Amount) AS Amount FROM lasting WHERE counts GROUP BY second) l
        ON l.second=s.newest
      WINDOW days AS (ORDER BY s.vDate)
    ), basal AS (
      SELECT vDate, round(units+round(before*
          iif(earlier>=CAST(vDate AS INTEGER)*86400-7*86400, earlier_rate, own_rate)/3600, 3), 4) AS units
      FROM started
    ), bolus AS (
      SELECT vDate, total(iif(Type>1, Amount, NULL)) AS units, sum(Type>1) AS boluses, sum(Type=1) AS rates
      FROM insulinpump GROUP BY vDate
    )
    SELECT row_number() OVER (ORDER BY b.vDate), b.vDate, -1, b.units, ifnull(a.units, 0),
           iif(b.units+ifnull(a.units, 0)=0, 0, b.units*100/(b.units+ifnull(a.units, 0))),
           iif(b.units+ifnull(a.units, 0)=0, 0, ifnull(a.units, 0)*100/(b.units+ifnull(a.units, 0))), b.rates, b.boluses
    FROM bolus b LEFT JOIN basal a USING (vDate) ORDER BY b.vDate)");
}

namespace {

namespace fs = std::filesystem;

/// A file at 4.57, which has the conversion before it.
void prepare_conversion(LongHistory& history, const fs::path& file) {
  const fs::path converted = file.string() + ".57";
  if (!fs::exists(converted)) {
    history.copy_to(converted);
    database::Environment environment = willing_environment();
    environment.message_box = {};
    database::VersionRecord record;
    const std::string path = windows_path(converted);
    database::db_ReadDBInfo(environment, path, record);
    database::db_WriteDBInfo(environment, path, record);
    record.MinVersion = 57;
    const auto engine = engine::open_engine("DAO.DBEngine.36");
    const auto database = engine->open_database(path, false, false, database::connect_text(database::default_password));
    database->execute("UPDATE db_info SET MinVersion=57");
  }
  fs::copy_file(converted, file, fs::copy_options::overwrite_existing);
}

void convert_ours(const fs::path& file) {
  const database::Environment environment = willing_environment();
  database::VersionRecord record;
  const std::string path = windows_path(file);
  if (!database::db_ReadDBInfo(environment, path, record) || record.MinVersion != 57 ||
      database::db_WriteDBInfo(environment, path, record) != 1) {
    throw std::runtime_error("not converted");
  }
}

double sum_of_days(const fs::path& file, const std::string& key) {
  const StraightDatabase database = open_straight(file.string(), key);
  const StraightStatement sum = prepare(database.get(), "SELECT sum(TotalBasal+3*TotalBolus+7*NoBR+11*NoBls) FROM ip");
  sqlite3_step(sum.get());
  return sqlite3_column_double(sum.get(), 0);
}

/// Both ways must come to the same days.
void check_same_days(const fs::path& file, LongHistory& history, const std::string& key) {
  prepare_conversion(history, file);
  convert_ours(file);
  const double ours = sum_of_days(file, key);
  prepare_conversion(history, file);
  {
    const StraightDatabase database = open_straight(file.string(), key);
    convert_straight(database.get());
  }
  const double straight = sum_of_days(file, key);
  if (ours < 1000 || std::abs(ours - straight) > 0.01) {
    throw std::runtime_error("the conversions differ: " + std::to_string(ours) + ", " + std::to_string(straight));
  }
}

}  // namespace

Job pump_conversion_job(const fs::path& folder) {
  const auto history = std::make_shared<LongHistory>(folder, ten_years);
  const fs::path file = folder / "conversion.das";
  const auto key = std::make_shared<std::string>();
  return {"convert ten years of pump data",
          2,
          7,
          [file] { convert_ours(file); },
          [file, key] {
            const StraightDatabase database = open_straight(file.string(), *key);
            execute(database.get(), "BEGIN IMMEDIATE");
            convert_straight(database.get());
            execute(database.get(), "UPDATE db_info SET MinVersion=60");
            execute(database.get(), "COMMIT");
          },
          [=] {
            prepare_conversion(*history, file);
            if (!key->empty()) return;
            *key = derived_key(file.string(), database::default_password);
            check_same_days(file, *history, *key);
            prepare_conversion(*history, file);
          }};
}

Job pump_conversion_growth_job(const fs::path& folder) {
  const auto decade = std::make_shared<LongHistory>(folder, ten_years);
  const auto year = std::make_shared<LongHistory>(folder, one_year);
  const fs::path large = folder / "conversion.das", small = folder / "conversion1.das";
  return {"convert pump data, ten years beside one",
          11,
          5,
          [large] { convert_ours(large); },
          [small] { convert_ours(small); },
          [=] {
            prepare_conversion(*decade, large);
            prepare_conversion(*year, small);
          }};
}

namespace {

database::PumpPeriod all_days(const LongHistory& history) {
  database::PumpPeriod period;
  period.date_from = {40000};
  period.date_until = {40000.0 + history.days()};
  return period;
}

double statistics_ours(const fs::path& file, const LongHistory& history) {
  const auto statistics = database::db_GetIGPumpStats(willing_environment(), windows_path(file), all_days(history));
  if (statistics.hours.empty()) throw std::runtime_error("no statistics");
  return static_cast<double>(statistics.basal_total) + statistics.bolus_total + statistics.basal_entries +
         statistics.boluses + statistics.span_minutes;
}

double number(sqlite3* database, const char* sql, int column = 0) {
  const StraightStatement statement = prepare(database, sql);
  sqlite3_step(statement.get());
  return sqlite3_column_double(statement.get(), column);
}

/// The rates walked as the statements give them; the first day begins with its first rate.
double basal_straight(sqlite3* database, int days) {
  const StraightStatement rows = prepare(database, R"(
    SELECT vDate+vTime, Amount, "desc" FROM insulinpump
    WHERE Amount>=0 AND length("desc")>0 AND ("desc"<>'-1' OR Amount=0) AND vDate BETWEEN 40000 AND 40000+)" +
                                                       std::to_string(days) + R"( AND Type=1
      AND vTime BETWEEN 0 AND 86399/86400.0 ORDER BY vDate+vTime, ID, Amount)");
  double total = 0, rate = 0, duration = 0;
  std::int64_t begin = 40000LL * 86400;
  const auto close = [&](std::int64_t second) {
    const double lasted = second - begin > 86400 ? duration : static_cast<double>(second - begin);
    total += std::round(rate / 3600 * lasted * 1000) / 1000;
  };
  for (bool first = true; sqlite3_step(rows.get()) == SQLITE_ROW; first = false) {
    const std::int64_t second = std::llround(sqlite3_column_double(rows.get(), 0) * 86400);
    if (first) rate = sqlite3_column_double(rows.get(), 1);
    close(second);
    begin = second;
    rate = sqlite3_column_double(rows.get(), 1);
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(rows.get(), 2));
    duration = std::strtod(text, nullptr);
  }
  close((40000LL + days) * 86400 + 86399);
  return total;
}

double statistics_straight(const fs::path& file, const std::string& key, int days) {
  const StraightDatabase database = open_straight(file.string(), key);
  const std::string period = "vDate BETWEEN 40000 AND 40000+" + std::to_string(days);
  const double minutes = number(database.get(), (R"(
    SELECT CAST(round(max(until)*1440) AS INTEGER)-CAST(round(min(begin)*1440) AS INTEGER) FROM (
      SELECT vDate+vTime AS begin, vDate+vTime+CAST("desc" AS REAL)/1440 AS until FROM insulinpump
      WHERE )" + period + R"( AND (Type=1 OR "desc"<>'') GROUP BY 1, 2))")
                                                    .c_str());
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

}  // namespace

Job pump_statistics_job(const fs::path& folder) {
  const auto history = std::make_shared<LongHistory>(folder, ten_years);
  const fs::path file = folder / "statistics.das";
  const auto key = std::make_shared<std::string>();
  return {
      "pump statistics of ten years",
      1.2,
      7,
      [=] { statistics_ours(file, *history); },
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

Job pump_statistics_growth_job(const fs::path& folder) {
  const auto decade = std::make_shared<LongHistory>(folder, ten_years);
  const auto year = std::make_shared<LongHistory>(folder, one_year);
  const fs::path large = folder / "statistics.das", small = folder / "statistics1.das";
  return {"pump statistics, ten years beside one",
          11,
          7,
          [=] { statistics_ours(large, *decade); },
          [=] { statistics_ours(small, *year); },
          [=] {
            if (!fs::exists(large)) decade->copy_to(large);
            if (!fs::exists(small)) year->copy_to(small);
          }};
}

}  // namespace bench
