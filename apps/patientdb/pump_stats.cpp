#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/patient_arguments.h"
#include "apps/patientdb/tool_environment.h"
#include "apps/patientdb/value_output.h"

namespace patientdb {
namespace {

constexpr std::string_view pump_stats_details =
    "Entries count by their day and time of day: without times to the end of the last day, with an until time before\n"
    "the from time late and early on each day. The basal units count from the first moment to the last: from 22:00\n"
    "until 06:00 of one day ends on the next.";

struct StatisticsLine {
  std::string_view key, title;
  engine::Value value;
};

std::vector<StatisticsLine> statistics_lines(const database::PumpStatistics& statistics) {
  return {
      {"first", "First entry", date_or_null(statistics.first)},
      {"last", "Latest end", date_or_null(statistics.last)},
      {"minutes", "Minutes", statistics.span_minutes},
      {"basal_days", "Days with basal rates", statistics.basal_days},
      {"basal_entries", "Basal rates", statistics.basal_entries},
      {"basal_total", "Basal units", statistics.basal_total},
      {"bolus_days", "Days with boluses", statistics.bolus_days},
      {"boluses", "Boluses", statistics.boluses},
      {"bolus_total", "Bolus units", statistics.bolus_total},
      {"bolus_per_day", "Bolus units a day", statistics.bolus_per_day},
  };
}

void write_text(std::ostream& out, const database::PumpStatistics& statistics) {
  using Align = console::TextTable::Align;
  console::TextTable figures;
  figures.add_column("Figure");
  figures.add_column("Value", Align::Right);
  for (const StatisticsLine& line : statistics_lines(statistics))
    figures.add_row({std::string(line.title), cell(line.value)});
  figures.write(out);
  if (statistics.hours.empty()) return;
  console::TextTable hours;
  for (const std::string_view title : {"Hour", "Type", "Entries", "Total", "Average"}) {
    hours.add_column(title, Align::Right);
  }
  for (const auto& hour : statistics.hours) {
    hours.add_row({cell(hour.hour), cell(hour.type), cell(hour.entries), cell(hour.total), cell(hour.average)});
  }
  out << '\n';
  hours.write(out);
}

void write_json_object(std::ostream& out, const database::PumpStatistics& statistics) {
  support::JsonWriter json(out);
  json.begin_object();
  for (const StatisticsLine& line : statistics_lines(statistics)) write_json(json.key(line.key), line.value);
  json.key("hours").begin_array();
  for (const auto& hour : statistics.hours) {
    json.begin_object().key("hour").integer(hour.hour).key("type").integer(hour.type);
    json.key("entries").integer(hour.entries).key("total").number(hour.total);
    json.key("average").number(hour.average).end_object();
  }
  json.end_array().end_object();
  out << '\n';
}

/// Times are compared without their seconds.
void tell_of_seconds(console::Console& console, const database::PumpPeriod& period) {
  if (!period.times) return;
  for (const engine::Date time : {period.times->first, period.times->second}) {
    const std::string text = engine::iso_text(time).substr(11);
    if (text.ends_with(":00")) continue;
    console.err << "Times count without their seconds here: " << text << " is taken as " << text.substr(0, 5)
                << ":00 (the basal units take it as it is).\n";
  }
}

int run_pump_stats(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, 1, pump_period_usage);
  const database::PumpPeriod period = pump_period(arguments);
  const ToolEnvironment environment(arguments, console);
  const OpenDatabase open = open_database(arguments, console, Access::ReadOnly);
  tell_of_seconds(console, period);
  const SkippedStepLines skipped(console.err);
  const auto statistics = database::db_GetIGPumpStats(environment.get(), *open.database, period);
  arguments.has(json_option.name) ? write_json_object(console.out, statistics) : write_text(console.out, statistics);
  return skipped.count() == 0 ? console::exit_done : console::exit_failed;
}

}  // namespace

const Command pump_stats_command{
    "pump-stats",       pump_period_usage,   "Gathers what the pump delivered in a period.",
    pump_stats_details, pump_period_options, run_pump_stats};

}  // namespace patientdb
