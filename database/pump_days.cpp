#include "database/pump_days.h"

#include <memory>
#include <optional>
#include <utility>

#include "database/basal_sum.h"

namespace database {
namespace {

/// The days with their boluses and counts, still without basal insulin.
std::vector<PumpDay> days_without_basal(engine::Database& database) {
  const auto rows = database.open_forward_only(
      "SELECT vdate, sum(iif(type>1,amount,null)), sum(iif(type>1,1,0)), sum(iif(type=1,1,0)) FROM insulinpump "
      "WHERE isnull(vdate)=0 GROUP BY vdate ORDER BY vdate");
  std::vector<PumpDay> days;
  for (; !rows->eof(); rows->move_next()) {
    PumpDay& day = days.emplace_back();
    day.day = engine::to_date(rows->value(0));
    const engine::Value bolus = rows->value(1);
    if (!engine::is_null(bolus)) day.bolus = engine::to_double(bolus);
    day.boluses = engine::to_int32(rows->value(2));
    day.basal_entries = engine::to_int32(rows->value(3));
  }
  return days;
}

/// Walks the basal entries of all days once, and gives for each day what db_IP_CalcBasal would give.
class BasalByDay {
 public:
  explicit BasalByDay(engine::Database& database)
      : rows_(database.open_forward_only(
            "SELECT vdate, vdate+vtime, amount, iif(comment<>'calc',1,0) FROM insulinpump WHERE amount>=0 AND "
            "len(desc)>0 AND (desc<>'-1' or amount=0) AND type=1 AND isnull(vdate)=0 AND "
            "vtime BETWEEN #00:00:00# AND #23:59:59# ORDER BY vdate, vdate+vtime, id, amount")) {}

  /// Call it for each day of the table once, in order of time. No interval within a day is longer than a day, so
  /// durations do not count.
  float units_of(engine::Date day) {
    const std::int64_t start = basal::seconds(day);
    basal::Sum sum;
    bool started = newest_ && newest_->second >= start - basal::look_back;
    if (started) sum.add(start, newest_->rate, 0);
    for (; !rows_->eof() && engine::to_date(rows_->value(0)) == day; rows_->move_next()) {
      const Entry entry{basal::seconds(engine::to_date(rows_->value(1))), engine::to_double(rows_->value(2))};
      if (!std::exchange(started, true)) sum.add(start, entry.rate, 0);
      sum.add(entry.second, entry.rate, 0);
      const bool calculated = engine::to_int32(rows_->value(3)) == 0;
      if (!calculated) note(entry);
    }
    return static_cast<float>(sum.total(start + basal::end_of_day));
  }

 private:
  struct Entry {
    std::int64_t second;
    double rate;
  };

  /// Of two entries in the same second the larger one counts.
  void note(const Entry& entry) {
    if (!newest_ || entry.second > newest_->second || entry.rate > newest_->rate) newest_ = entry;
  }

  std::unique_ptr<engine::Recordset> rows_;
  std::optional<Entry> newest_;
};

double percent(double part, double whole) { return whole == 0 ? 0 : part * 100 / whole; }

}  // namespace

std::vector<PumpDay> pump_days(engine::Database& database) {
  std::vector<PumpDay> days = days_without_basal(database);
  BasalByDay entries{database};
  for (PumpDay& day : days) day.basal = entries.units_of(day.day);
  return days;
}

void append_pump_day(engine::Recordset& ip, const PumpDay& day) {
  const double whole = day.bolus + static_cast<double>(day.basal);
  const std::pair<std::string_view, engine::Value> columns[] = {
      {"vDate", day.day},
      {"TotalBolus", day.bolus},
      {"TotalBasal", day.basal},
      {"PercentBolus", percent(day.bolus, whole)},
      {"PercentBasal", percent(static_cast<double>(day.basal), whole)},
      {"NoBR", day.basal_entries},
      {"NoBls", day.boluses},
  };
  ip.add_new();
  for (const auto& [name, value] : columns) ip.set_value(name, value);
  ip.update();
}

}  // namespace database
