#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/patient_arguments.h"
#include "apps/patientdb/tool_environment.h"
#include "apps/patientdb/value_output.h"
#include "database/plan_summary.h"
#include "database/therapy_plan.h"

namespace patientdb {
namespace {

constexpr std::string_view plan_usage = "FILE [--date D] [--json]";

constexpr console::Option plan_options[] = {
    {"--date", "D", "The plan in force on this day, YYYY-MM-DD; else the newest one."},
    json_option,
    password_file_option,
    console::help_option,
};

void write_text(std::ostream& out, const database::TherapyPlan& plan, const std::string& summary) {
  out << "Plan " << plan.id << " of " << day_text(plan.vDate) << ", type " << plan.Type << '\n' << summary << "\n\n";
  console::TextTable table;
  table.add_column("Type", console::TextTable::Align::Right);
  table.add_column("Value", console::TextTable::Align::Right);
  table.add_column("Time slot", console::TextTable::Align::Right);
  table.add_column("Text");
  for (const auto& item : plan.items) {
    table.add_row({std::to_string(item.ItemType), support::plain_number(item.ItemValue), std::to_string(item.TimeSlot),
                   item.desc});
  }
  table.write(out);
}

void write_json_plan(std::ostream& out, const database::TherapyPlan& plan, const database::PlanSummary& summary) {
  support::JsonWriter json(out);
  json.begin_object().key("id").integer(plan.id).key("date").text(day_text(plan.vDate)).key("type").integer(plan.Type);
  json.key("summary").text(plan_summary_text(summary)).key("basal_per_kilogram");
  summary.basal_per_kilogram ? json.number(*summary.basal_per_kilogram) : json.null();
  json.key("insulins").begin_array();
  for (const std::string& insulin : summary.insulins) json.text(insulin);
  json.end_array().key("items").begin_array();
  for (const auto& item : plan.items) {
    json.begin_object().key("itemtype").integer(item.ItemType).key("itemvalue").number(item.ItemValue);
    json.key("timeslot").integer(item.TimeSlot).key("desc").text(item.desc).key("comment").text(item.Comment);
    json.end_object();
  }
  json.end_array().end_object();
  out << '\n';
}

int run_plan(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, 1, plan_usage);
  const auto date = day_argument(arguments, "--date");
  const ToolEnvironment environment(arguments, console);
  const OpenDatabase open = open_database(arguments, console, Access::ReadOnly);
  const SkippedStepLines skipped(console.err);
  database::PlanSummary summary;
  database::TherapyPlan plan;
  if (!database::db_GetPlanSummary(environment.get(), *open.database, date, summary) ||
      !database::db_GetTherapyPlan(environment.get(), *open.database, summary.id, plan)) {
    console.err << (date ? "No therapy plan is in force on this day.\n" : "The database holds no therapy plan.\n");
    return console::exit_failed;
  }
  if (arguments.has(json_option.name)) {
    write_json_plan(console.out, plan, summary);
  } else {
    write_text(console.out, plan, plan_summary_text(summary));
  }
  return skipped.count() == 0 ? console::exit_done : console::exit_failed;
}

}  // namespace

const Command plan_command{"plan", plan_usage,   "Shows the therapy plan in force, with its summary.",
                           "",     plan_options, run_plan};

}  // namespace patientdb
