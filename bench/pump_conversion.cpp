// Converts ten years of pump data: by the ladder, and by statements with window functions.
#include "bench/pump_conversion.h"

#include <cmath>
#include <stdexcept>

#include "bench/jobs.h"
#include "bench/long_history.h"
#include "bench/patient_file.h"
#include "bench/straight.h"
#include "database/open_database.h"
#include "database/upgrade/ladder.h"
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

void mark_as_current(sqlite3* database) {
  execute(database, "UPDATE db_info SET MinVersion=" + std::to_string(database::current_minor_version));
}

namespace {

namespace fs = std::filesystem;

/// The last layout without a summary of the pump's days.
constexpr std::int16_t version_before = 57;

/// Puts a file of this layout in place; its conversion is still to be done.
void prepare_conversion(LongHistory& history, const fs::path& file) {
  const fs::path converted = file.string() + ".before";
  if (!fs::exists(converted)) {
    history.copy_to(converted);
    const database::Environment environment = willing_environment();
    database::VersionRecord record;
    const std::string path = windows_path(converted);
    database::db_ReadDBInfo(environment, path, record);
    database::db_WriteDBInfo(environment, path, record);
    const auto engine = database::create_engine(environment, false);
    const auto database = engine->open_database(path, false, false, database::connect_text(database::default_password));
    database->execute("UPDATE db_info SET MinVersion=" + std::to_string(version_before));
  }
  fs::copy_file(converted, file, fs::copy_options::overwrite_existing);
}

void convert_ours(const fs::path& file) {
  const database::Environment environment = willing_environment();
  database::VersionRecord record;
  const std::string path = windows_path(file);
  if (!database::db_ReadDBInfo(environment, path, record) || record.MinVersion != version_before ||
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

/// Checks that both ways give the same days.
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

Job conversion_of(const fs::path& folder, int days) {
  const auto history = std::make_shared<LongHistory>(folder, days);
  const fs::path file = folder / ("conversion" + std::to_string(days) + ".das");
  const auto key = std::make_shared<std::string>();
  return {"convert ten years of pump data", 2, [file] { convert_ours(file); },
          [file, key] {
            const StraightDatabase database = open_straight(file.string(), *key);
            execute(database.get(), "BEGIN IMMEDIATE");
            convert_straight(database.get());
            mark_as_current(database.get());
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

}  // namespace

Job pump_conversion_job(const fs::path& folder) { return conversion_of(folder, ten_years); }

GrowthJob pump_conversion_growth_job(const fs::path& folder) {
  return {"convert pump data, ten years beside one", conversion_of(folder, ten_years), conversion_of(folder, one_year)};
}

}  // namespace bench
