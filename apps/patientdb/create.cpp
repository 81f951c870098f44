#include <random>

#include "apps/patientdb/command.h"
#include "apps/patientdb/database_file.h"
#include "apps/patientdb/tool_environment.h"
#include "database/create_database.h"
#include "database/new_file.h"
#include "database/open_database.h"
#include "support/file_system.h"

namespace patientdb {
namespace {

constexpr std::string_view usage = "FILE [--name N] [--firstname F] [--diabetes-type T] [--therapy T] | FILE --empty";

constexpr console::Option options[] = {
    {"--name", "N", "The patient's name."},
    {"--firstname", "F", "The patient's first name."},
    {"--diabetes-type", "T", "1 type 1, 2 type 2, 3 gestational, 4 other."},
    {"--therapy", "T", "1 conventional, 2 intensified, 3 pump, 4 insulin and tablets, 5 without insulin."},
    {"--empty", "", "A database without tables and without a patient."},
    password_file_option,
    console::help_option,
};

/// Where a new patient's targets start, as the wizard presets them.
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

void create_with_password(const database::Environment& environment, const std::string& path,
                          const database::PatientRecord& patient) {
  support::RuntimeError failure(51, "the database could not be created");
  if (database::CreatePatientDatabase(environment, path, patient, initial_settings(), &failure) != 1) throw failure;
}

/// A patient database is born with a password: it is taken off before the file appears under its name.
void create_without_password(database::Environment environment, const std::string& path,
                             const database::PatientRecord& patient) {
  support::FileSystem& files = support::host_file_system();
  const std::string unfinished = path + "." + std::to_string(std::random_device{}());
  const std::string& word = environment.password = database::default_password;
  if (files.file_size(path)) throw support::RuntimeError(3204, "Database already exists.");
  create_with_password(environment, unfinished, patient);
  try {
    const auto engine = database::create_engine(environment, false);
    const auto database = engine->open_database(unfinished, true, false, database::connect_text(word));
    database->new_password(word, "");
    database->close();
    if (!files.rename_without_replacing(unfinished, path))
      throw support::RuntimeError(3204, "Database already exists.");
  } catch (const support::RuntimeError&) {
    files.remove(unfinished);
    throw;
  }
}

void create_empty(const database::Environment& environment, const std::string& path) {
  database::NewFile file(environment, path, environment.password);
  // The engine writes the file with the first change.
  engine::Transaction change(file.database());
  file.database().execute("CREATE TABLE first_change (id LONG)");
  file.database().execute("DROP TABLE first_change");
  change.commit();
  file.finish();
}

database::PatientRecord patient_of(const console::Arguments& arguments) {
  database::PatientRecord patient;
  patient.name = arguments.value("--name").value_or("");
  patient.firstname = arguments.value("--firstname").value_or("");
  patient.typ = static_cast<std::int16_t>(arguments.number("--diabetes-type", 0, 1, 4));
  patient.therapy = static_cast<std::int16_t>(arguments.number("--therapy", 0, 1, 5));
  return patient;
}

int run(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, 1, usage);
  const std::string& file = arguments.operands().front();
  const std::string path = database_path(file);
  const ToolEnvironment tool(arguments, console);
  const database::Environment& environment = tool.get();
  const database::PatientRecord patient = patient_of(arguments);
  check_new_password(environment.password);
  if (!arguments.has("--empty")) {
    environment.password.empty() ? create_without_password(environment, path, patient)
                                 : create_with_password(environment, path, patient);
  } else {
    for (const std::string_view other : {"--name", "--firstname", "--diabetes-type", "--therapy"}) {
      if (arguments.has(other)) throw console::UsageError("An empty database has no patient: " + std::string(other));
    }
    create_empty(environment, path);
  }
  console.out << file << " created\n";
  return console::exit_done;
}

}  // namespace

const Command create_command{"create", usage,   "Creates a patient database; an existing file is error 3204.",
                             "",       options, run};

}  // namespace patientdb
