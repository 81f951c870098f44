#include "bench/filled_file.h"

#include "bench/patient_file.h"
#include "bench/straight.h"

namespace bench {
namespace {

/// The rows of one table: their number in ten years, and the values of row `i` of `n`.
struct Filling {
  const char* columns;
  const char* values;
  int ten_years_rows;
};

// The days begin in 2015. Each kind is spread evenly over the days and over each day.
constexpr Filling fillings[] = {
    {"glucose(vDate, vTime, Value, Mark, Event, Method, Comment, ExtData, importid, flag, Bloodtype)",
     "42005 + i * 3650 / n, (i * 3650 % n) * 1.0 / n, 60 + i * 37 % 200, 0, i % 20, 0, NULL, NULL, i % 7, 0, "
     "iif(i % 5 < 4, 255, 0)",
     ten_years_of_glucose},
    {"insulinpump(vDate, vTime, Amount, Type, Profile, Temp, desc, Event, Comment, importid, flag)",
     "42005 + i * 3650 / n, (i * 3650 % n) * 1.0 / n, iif(i % 5 = 0, 4.5, 0.5 + i % 9 / 10.0), iif(i % 5 = 0, 2, 1), "
     "1, "
     "0, '60', 0, NULL, i % 7, 0",
     150'000},
    {"insulin(vDate, vTime, BolusIE, BasalIE, desc, Event, Method, Rapid, importid, flag)",
     "42005 + i * 3650 / n, (i * 3650 % n) * 1.0 / n, i % 12, iif(i % 3 = 0, 14, 0), 'Insulin', i % 20, 0, -(i % 2), i "
     "% "
     "7, 0",
     30'000},
    {"intakes(vDate, vTime, Value, Event, importid, flag)",
     "42005 + i * 3650 / n, (i * 3650 % n) * 1.0 / n, i % 8, i % 20, i % 7, 0", 15'000},
    {"pressure(vDate, vTime, BPSYS, BPDIA, importid, flag)",
     "42005 + i * 3650 / n, 0.3, 110 + i % 40, 60 + i % 30, 0, 0", 2'000},
    {"activities(vDate, vTime, value, importid, flag)", "42005 + i * 3650 / n, 0.7, i % 90, 0, 0", 2'000},
    {"medicaldata(vDate, vTime, value, importid, flag)", "42005 + i * 3650 / n, 0.3, i % 3, 0, 0", 2'000},
    {"eventlog(vDate, vTime, event, importid, flag)", "42005 + i * 3650 / n, 0.4, i % 30, 0, 0", 2'000},
    {"labvalues(vdate, vtime, value, type, importid, flag)",
     "42005 + i * 3650 / n, 0.3, 5 + i % 5, iif(i % 4 = 0, 1, 10 + i % 13), 0, 0", 2'000},
    {"callback(vDate, category)", "42005 + i * 3650 / n, i % 3", 2'000},
    {"Memos(vdate, vtime, Typ, mMemo)", "42005 + i * 3650 / n, 0.5, 1, 'Notiz'", 2'000},
    {"steps(vDate, vTime, total_ns, importid, flag)", "42005 + i * 3650 / n, 0.9, i % 20000, 0, 0", 2'000},
};

}  // namespace

FilledFile create_filled_file(const std::filesystem::path& path, int glucose_rows) {
  create_patient_file(path);
  FilledFile file{path.string(), derived_key(path.string(), database::default_password)};
  const StraightDatabase database = open_straight(file.path, file.key);
  execute(database.get(), "BEGIN");
  for (const Filling& filling : fillings) {
    const auto rows = std::int64_t{filling.ten_years_rows} * glucose_rows / ten_years_of_glucose;
    execute(database.get(), "WITH RECURSIVE numbers(i, n) AS (SELECT 0, " + std::to_string(rows) +
                                " UNION ALL SELECT i + 1, n FROM numbers WHERE i + 1 < n) INSERT INTO " +
                                filling.columns + " SELECT " + filling.values + " FROM numbers");
  }
  execute(database.get(), "COMMIT");
  return file;
}

}  // namespace bench
