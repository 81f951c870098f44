#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/patient_arguments.h"
#include "apps/patientdb/tool_environment.h"
#include "database/creation/create_database.h"
#include "database/new_file.h"

namespace patientdb {
namespace {

constexpr std::string_view create_usage =
    "FILE [--name N] [--firstname F] [--diabetes-type T] [--therapy T] | FILE --empty";

constexpr console::Option create_options[] = {
    name_option,
    firstname_option,
    diabetes_type_option,
    therapy_option,
    {"--empty", "", "A database without tables and without a patient."},
    password_file_option,
    console::help_option,
};

/// The targets of a new patient, as the wizard presets them.
database::SettingsRecord initial_settings() {
  database::SettingsRecord settings;
  settings.BGHypo = 50;
  settings.BGHyper = 170;
  settings.BGTargetMin = 70;
  settings.BGTargetMax = 150;
  settings.BPTargetSysMin = 100;
  settings.BPTargetSysMax = 130;
  settings.BPTargetDiaMin = 70;
  settings.BPTargetDiaMax = 90;
  return settings;
}

void create_empty(const database::Environment& environment, const std::string& path) {
  database::NewFile file(environment, path, environment.password);
  // The engine writes the file only with the first change.
  engine::Transaction change(file.database());
  file.database().execute("CREATE TABLE first_change (id LONG)");
  file.database().execute("DROP TABLE first_change");
  change.commit();
  file.finish();
}

int run_create(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, 1, create_usage);
  const std::string& file = arguments.operands().front();
  const std::string path = database_path(file);
  ToolEnvironment tool(arguments, console);
  const database::Environment& environment = tool.get();
  const database::PatientRecord patient = patient_argument(arguments);
  check_new_password(environment.password);
  choose_maker(arguments, tool.get(), console.err);
  if (!arguments.has("--empty")) {
    database::create_patient_database(environment, path, environment.password, patient, initial_settings());
  } else {
    for (const console::Option& other : {name_option, firstname_option, diabetes_type_option, therapy_option}) {
      if (!arguments.has(other.name)) continue;
      throw console::UsageError("An empty database has no patient: " + std::string(other.name));
    }
    create_empty(environment, path);
  }
  console.out << file << " created\n";
  return console::exit_done;
}

}  // namespace

const Command create_command{"create", create_usage,   "Creates a patient database; an existing file is error 3204.",
                             "",       create_options, run_create};

}  // namespace patientdb
