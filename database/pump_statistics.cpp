#include "database/pump_statistics.h"

#include <fmt/core.h>

#include <charconv>
#include <cmath>
#include <string_view>

#include "database/basal_sum.h"
#include "database/columns.h"
#include "database/open_database.h"
#include "database/query_filter.h"
#include "support/encoding.h"

namespace database {
namespace {

/// The number at the text's beginning; 0 where there is none.
double leading_number(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t");
  if (begin == std::string_view::npos) return 0;
  double number = 0;
  std::from_chars(text.data() + begin, text.data() + text.size(), number);
  return number;
}

/// A basal entry of the table.
struct BasalEntry {
  std::int64_t second = 0;
  double rate = 0, duration = 0;
};

/// Basal entries of a query that selects all columns. The positions of the columns are looked up once.
class BasalEntries {
 public:
  BasalEntries(engine::Database& database, const std::string& selection)
      : rows_(database.open_forward_only(selection)) {
    for (std::int32_t i = 0; i < rows_->field_count(); ++i) {
      for (std::size_t column = 0; column < std::size(columns); ++column) {
        if (support::equal_ignoring_case(rows_->field_name(i), columns[column])) places_[column] = i;
      }
    }
  }

  bool eof() const { return rows_->eof(); }
  void move_next() { rows_->move_next(); }
  engine::Date day() const { return engine::to_date(rows_->value(places_[0])); }
  BasalEntry entry() const {
    return {basal::seconds({day().days + engine::to_double(rows_->value(places_[1]))}),
            engine::to_double(rows_->value(places_[2])), leading_number(engine::to_text(rows_->value(places_[3])))};
  }

 private:
  static constexpr std::string_view columns[] = {"vdate", "vtime", "amount", "desc"};
  std::unique_ptr<engine::Recordset> rows_;
  std::int32_t places_[std::size(columns)] = {};
};

std::string entries_between(std::string_view beginning, engine::Date from, engine::Date until) {
  return std::string(beginning) + date_literal(from, true) + " AND " + date_literal(until, true) + ") ORDER BY ";
}

/// The newest entry before the start. Calculated entries do not count.
std::optional<BasalEntry> entry_before(engine::Database& database, std::int64_t start) {
  const BasalEntries entries{
      database, entries_between("SELECT * from insulinpump WHERE comment <> 'calc' and amount>=0 AND len(desc) >0 AND "
                                "(desc<>'-1' or amount=0) AND type=1 AND ( vdate+vtime BETWEEN ",
                                basal::moment_of(start - basal::look_back), basal::moment_of(start - 1)) +
                    "vdate+vtime DESC, amount desc"};
  if (entries.eof()) return {};
  return entries.entry();
}

/// The first entry within the period. The query sorts by day only, so the first entry of that day is looked for here.
std::optional<BasalEntry> entry_within(engine::Database& database, std::int64_t start, std::int64_t end) {
  BasalEntries entries{database,
                       entries_between("SELECT * from insulinpump WHERE  amount>=0 AND len(desc) >0 AND (desc<>'-1' or "
                                       "amount=0) AND type=1 AND ( vdate+vtime between ",
                                       basal::moment_of(start), basal::moment_of(end)) +
                           "vdate ASC"};
  if (entries.eof()) return {};
  const engine::Date day = entries.day();
  BasalEntry first = entries.entry();
  for (; !entries.eof() && entries.day() == day; entries.move_next()) {
    const BasalEntry entry = entries.entry();
    if (entry.second < first.second) first = entry;
  }
  return first;
}

/// The seconds in which a period begins and ends.
struct Span {
  std::int64_t start = 0, end = 0;
  bool contains(std::int64_t second) const { return second >= start && second <= end; }
};

/// The day at this time of day; at midnight where no time is given.
std::int64_t moment_in(engine::Date day, const engine::Date* time) {
  return basal::seconds(day) + (time ? basal::seconds(*time) : 0);
}

bool crosses_midnight(const PumpPeriod& period) {
  return period.times && period.times->second.days < period.times->first.days;
}

Span span_of(const PumpPeriod& period) {
  Span span{moment_in(period.date_from, period.times ? &period.times->first : nullptr),
            moment_in(period.date_until, period.times ? &period.times->second : nullptr)};
  if (crosses_midnight(period) && span.end < span.start) span.end += basal::seconds_of_day;
  return span;
}

std::string basal_selection(const PumpPeriod& period, const Span& span) {
  Filter filter;
  filter.date_from = period.date_from;
  filter.date_until = period.date_until;
  if (crosses_midnight(period)) filter.date_until = basal::moment_of(span.end - span.end % basal::seconds_of_day);
  filter.weekdays = period.weekdays;
  std::string text = "SELECT * from insulinpump WHERE  amount>=0 AND len(desc) >0 AND (desc<>'-1' or amount=0) AND (" +
                     filter_text(filter) + ") AND type=1 ";
  if (period.times) {
    text += " AND " + times_condition(period.times->first, period.times->second) + " ";
  }
  return text + " ORDER BY vdate+vtime ASC, id ASC, amount ASC";
}

/// The query selects days and times of day. It does not know that the period begins in the evening of its first day.
void pass_over_earlier(BasalEntries& entries, const PumpPeriod& period, const Span& span) {
  if (!crosses_midnight(period)) return;
  while (!entries.eof() && entries.entry().second < span.start) entries.move_next();
}

}  // namespace

float db_IP_CalcBasal(const Environment& environment, const Target& target, const PumpPeriod& period) {
  support::Procedure procedure{"sql!db_IP_CalcBasal"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Read};
  const Span span = span_of(period);
  std::optional<BasalEntries> entries;
  bool begins_with_entry = false;
  procedure.step([&] {
    entries.emplace(opened.database(), basal_selection(period, span));
    pass_over_earlier(*entries, period, span);
    begins_with_entry = !entries->eof() && entries->entry().second == span.start;
  });
  std::optional<BasalEntry> at_start;
  // Such an entry leaves no time to the rate before it. Finding that rate takes two queries.
  if (!begins_with_entry) {
    procedure.step([&] { at_start = entry_before(opened.database(), span.start); });
    if (!at_start) procedure.step([&] { at_start = entry_within(opened.database(), span.start, span.end); });
  }
  basal::Sum sum;
  if (at_start) sum.add(span.start, at_start->rate, at_start->duration);
  procedure.step([&] {
    for (; entries && !entries->eof(); entries->move_next()) {
      procedure.step([&] {
        const BasalEntry entry = entries->entry();
        if (crosses_midnight(period) && !span.contains(entry.second)) return;
        sum.add(entry.second, entry.rate, entry.duration);
      });
    }
  });
  return static_cast<float>(sum.total(span.end));
}

namespace {

std::string day_literal(engine::Date date) {
  const engine::CalendarTime at = engine::calendar_time(date);
  return fmt::format("#{:02}/{:02}/{:04}#", at.month, at.day, at.year);
}

std::string minute_literal(engine::Date time) {
  const engine::CalendarTime at = engine::calendar_time(time);
  return fmt::format("#{:02}:{:02}#", at.hour, at.minute);
}

std::string statistics_filter(const PumpPeriod& period, std::optional<std::int32_t> profile) {
  std::string text =
      " (vdate BETWEEN " + day_literal(period.date_from) + " AND " + day_literal(period.date_until) + ") ";
  if (period.times) {
    text += " AND " + times_condition(period.times->first, period.times->second, minute_literal) + " ";
  }
  // The form of this clause is fixed; the AND stands inside the parentheses.
  if (profile) text += fmt::format(" (AND profile ={}) ", *profile);
  if (!period.weekdays.empty() && period.weekdays != "0") text += " AND (weekday(vdate) IN (" + period.weekdays + ")) ";
  return text;
}

std::string span_selection(const std::string& filter) {
  return "SELECT  max(vdat) as maxd, min(vdat) as mind, max(vdat2) as maxd2 FROM (SELECT vdate+vtime as "
         "vdat,dateadd(\"n\",val(desc),vdate+vtime) as vdat2  from insulinpump WHERE  " +
         filter + " AND (type=1 or desc<>'')  group by vdate+vtime,dateadd(\"n\",val(desc),vdate+vtime) )";
}

std::string basal_days_selection(const std::string& filter) {
  return "SELECT count(vdate) as tage, sum(nc) as Anzahl, avg(isum) as Mittel, sum(isum) as gesamt  from (SELECT "
         "vdate, count(amount) as nc, sum(amount) as isum from insulinpump where type=1 and amount >0 AND " +
         filter + " group by vdate)";
}

std::string bolus_days_selection(const std::string& filter) {
  return "SELECT count(vdate) as tage, sum(nc) as Anzahl, avg(isum) as Mittel, sum(isum) as gesamt FROM (SELECT vdate, "
         "count(amount) as nc, sum(amount) as isum from insulinpump where type>1 and amount >0 AND " +
         filter + " group by vdate)";
}

std::string hours_selection(const std::string& filter) {
  return "SELECT hour(vtime) as iHour, type, sum(amount) as total, avg(amount) as avgRate, count(amount) as nRates "
         "from "
         "insulinpump where amount>0 AND" +
         filter + " group by hour(vtime), type";
}

constexpr Column<PumpStatistics> basal_columns[] = {
    {"anzahl", &PumpStatistics::basal_entries},
    {"tage", &PumpStatistics::basal_days},
};

constexpr Column<PumpStatistics> bolus_columns[] = {
    {"tage", &PumpStatistics::bolus_days},
    {"anzahl", &PumpStatistics::boluses},
    {"mittel", &PumpStatistics::bolus_per_day},
    {"gesamt", &PumpStatistics::bolus_total},
};

constexpr Column<PumpStatistics::Hour> hour_columns[] = {
    {"total", &PumpStatistics::Hour::total},     {"type", &PumpStatistics::Hour::type},
    {"ihour", &PumpStatistics::Hour::hour},      {"nRates", &PumpStatistics::Hour::entries},
    {"avgRate", &PumpStatistics::Hour::average},
};

/// Difference of the minutes on the clock, not of full minutes.
std::int32_t minutes_between(engine::Date from, engine::Date until) {
  const auto minute = [](engine::Date moment) { return std::floor(static_cast<double>(basal::seconds(moment)) / 60); };
  return static_cast<std::int32_t>(minute(until) - minute(from));
}

void read_span(support::Procedure& procedure, const OpenedTarget& opened, const std::string& filter,
               PumpStatistics& statistics) {
  const auto row = try_open_row(procedure, opened, span_selection(filter));
  if (!row || engine::is_null(row->value("mind"))) return;
  procedure.step([&] { statistics.first = engine::to_date(row->value("mind")); });
  procedure.step([&] { statistics.last = engine::to_date(row->value("maxd2")); });
  if (statistics.first && statistics.last) {
    statistics.span_minutes = minutes_between(*statistics.first, *statistics.last);
  }
}

/// Reads days, counts and sums. Over no rows the sums are Null and stay 0.
void read_days(support::Procedure& procedure, const OpenedTarget& opened, const std::string& selection,
               std::span<const Column<PumpStatistics>> columns, PumpStatistics& statistics) {
  const auto row = try_open_row(procedure, opened, selection);
  if (!row) return;
  for (const auto& column : columns) {
    procedure.step([&] {
      const engine::Value value = row->value(column.name);
      if (!engine::is_null(value)) assign_column(statistics, column, value);
    });
  }
}

void read_hours(support::Procedure& procedure, const OpenedTarget& opened, const std::string& filter,
                PumpStatistics& statistics) {
  const auto rows = try_open_row(procedure, opened, hours_selection(filter));
  if (!rows) return;
  do {
    read_columns<PumpStatistics::Hour>(procedure, *rows, hour_columns, statistics.hours.emplace_back());
  } while (next_row(procedure, *rows));
}

}  // namespace

PumpPeriod with_whole_days(PumpPeriod period) {
  if (!period.times) period.times.emplace(basal::moment_of(0), basal::moment_of(basal::end_of_day));
  return period;
}

PumpStatistics db_GetIGPumpStats(const Environment& environment, const Target& target, const PumpPeriod& period,
                                 std::optional<std::int32_t> profile) {
  support::Procedure procedure{"sql!db_GetIGPumpStats"};
  const OpenedTarget opened{environment, target, OpenedTarget::Access::Read};
  PumpStatistics statistics;
  if (!opened.get()) return statistics;
  const std::string filter = statistics_filter(period, profile);
  read_span(procedure, opened, filter, statistics);
  read_days(procedure, opened, basal_days_selection(filter), basal_columns, statistics);
  read_days(procedure, opened, bolus_days_selection(filter), bolus_columns, statistics);
  read_hours(procedure, opened, filter, statistics);
  statistics.basal_total = db_IP_CalcBasal(environment, *opened.get(), with_whole_days(period));
  return statistics;
}

}  // namespace database
