#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/patient_arguments.h"
#include "apps/patientdb/tool_environment.h"
#include "apps/patientdb/value_output.h"
#include "database/availability.h"

namespace patientdb {
namespace {

constexpr std::string_view summary_usage =
    "FILE [--mask M] [--from D --until D [--time-from T --time-until T]] [--weekdays LIST] [--import-id N] [--json]";

constexpr std::string_view summary_details =
    "An until time before the from time crosses midnight: late and early on each day. With times, categories whose\n"
    "entries have no time of day are left out, and named.";

constexpr console::Option summary_options[] = {
    {"--mask", "M", "The categories: bit n selects category n; -1, the default, all."},
    from_option,
    until_option,
    {time_from_option.name, "T", "Earliest time of day, HH:MM or HH:MM:SS; only with days."},
    time_until_option,
    weekdays_option,
    {"--import-id", "N", "Rows of this import only."},
    json_option,
    password_file_option,
    console::help_option,
};

database::AvailabilityRequest request_of(const console::Arguments& arguments) {
  database::AvailabilityRequest request;
  request.categories = arguments.number("--mask", -1, INT32_MIN, INT32_MAX);
  request.days = day_range(arguments, from_option.name, until_option.name);
  request.times = time_range(arguments, time_from_option.name, time_until_option.name);
  if (request.times && !request.days) throw console::UsageError("Times of day need --from and --until.");
  request.weekdays = weekdays_argument(arguments, weekdays_option.name);
  request.import_id = arguments.number("--import-id", -1, 0, INT32_MAX);
  return request;
}

void write_text(std::ostream& out, const std::vector<database::Availability>& found) {
  using Align = console::TextTable::Align;
  console::TextTable table;
  for (const std::string_view title : {"Category", "Rows"}) table.add_column(title, Align::Right);
  for (const std::string_view title : {"First day", "Last day"}) table.add_column(title);
  table.add_column("Checksum", Align::Right);
  for (const auto& entry : found) {
    table.add_row({std::to_string(entry.category), std::to_string(entry.count), day_text(entry.first),
                   day_text(entry.last), entry.checksum ? support::plain_number(*entry.checksum) : ""});
  }
  table.write(out);
}

void write_json_lines(std::ostream& out, const std::vector<database::Availability>& found) {
  support::JsonWriter json(out);
  json.begin_array();
  for (const auto& entry : found) {
    json.begin_object().key("typ").integer(entry.category).key("count").integer(entry.count);
    json.key("first").text(day_text(entry.first)).key("last").text(day_text(entry.last)).key("checksum");
    entry.checksum ? json.number(*entry.checksum) : json.null();
    json.end_object();
  }
  json.end_array();
  out << '\n';
}

void tell_what_is_left_out(std::ostream& err, const std::vector<std::int16_t>& categories) {
  if (categories.empty()) return;
  err << "Left out, since their entries have no time of day: categories";
  for (const std::int16_t number : categories) err << ' ' << number;
  err << '\n';
}

int run_summary(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, 1, summary_usage);
  const database::AvailabilityRequest request = request_of(arguments);
  const ToolEnvironment environment(arguments, console);
  const OpenDatabase open = open_database(arguments, console, Access::ReadOnly);
  tell_what_is_left_out(console.err, database::categories_without_times(request));
  const SkippedStepLines skipped(console.err);
  const auto found = database::find_availability(environment.get(), *open.database, request);
  arguments.has(json_option.name) ? write_json_lines(console.out, found) : write_text(console.out, found);
  return skipped.count() == 0 ? console::exit_done : console::exit_failed;
}

}  // namespace

const Command summary_command{
    "summary",       summary_usage,   "Tells which kinds of data a database holds, with their days and checksums.",
    summary_details, summary_options, run_summary};

}  // namespace patientdb
