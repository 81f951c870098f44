#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/patient_arguments.h"
#include "apps/patientdb/tool_environment.h"
#include "apps/patientdb/value_output.h"

namespace patientdb {
namespace {

int run_basal(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, 1, pump_period_usage);
  const database::PumpPeriod period = pump_period(arguments);
  const ToolEnvironment environment(arguments, console);
  const OpenDatabase open = open_database(arguments, console, Access::ReadOnly);
  const SkippedStepLines skipped(console.err);
  const engine::Value units = database::db_IP_CalcBasal(environment.get(), *open.database, with_whole_days(period));
  if (arguments.has(json_option.name)) {
    support::JsonWriter json(console.out);
    json.begin_object();
    write_json(json.key("basal"), units);
    json.end_object();
    console.out << '\n';
  } else {
    console.out << cell(units) << '\n';
  }
  return skipped.count() == 0 ? console::exit_done : console::exit_failed;
}

}  // namespace

const Command basal_command{"basal",
                            pump_period_usage,
                            "Tells how much basal insulin the pump delivered in a period.",
                            pump_period_details,
                            pump_period_options,
                            run_basal};

}  // namespace patientdb
