#include <algorithm>
#include <array>
#include <charconv>

#include "apps/patientdb/command.h"
#include "apps/patientdb/database_file.h"
#include "apps/patientdb/date_arguments.h"
#include "apps/patientdb/patient_arguments.h"
#include "apps/patientdb/tool_environment.h"
#include "database/create_database.h"
#include "database/index_database.h"

namespace patientdb {
namespace {

constexpr std::string_view usage =
    "INDEX create | INDEX refresh ID FILE | INDEX write ID --name N --firstname F … | INDEX delete ID | INDEX upgrade";

constexpr std::string_view details =
    "refresh fills the patient's row from the patient's database; an ID of 0 adds a row.\n"
    "write fills it from the options. delete removes it and releases the patient's devices.\n"
    "upgrade brings the index, and where that is due every patient database, up to date, and removes rows whose\n"
    "patient database is gone.";

constexpr console::Option options[] = {
    {"--data-dir", "DIR", "The folder with meters.mdb and, where they do not lie beside the index, the patients."},
    name_option,
    firstname_option,
    {"--birthday", "D", "The patient's birthday, YYYY-MM-DD."},
    {"--external-id", "X", "The patient's number in another system."},
    diabetes_type_option,
    therapy_option,
    password_file_option,
    console::help_option,
};

struct Call {
  const console::Arguments& arguments;
  console::Console& console;
  database::Environment environment;
  std::string index;
};

database::PatientRecord patient_of(const Call& call) {
  const std::string& text = call.arguments.operands()[2];
  database::PatientRecord patient = patient_argument(call.arguments);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), patient.index_id);
  if (error != std::errc() || end != text.data() + text.size() || patient.index_id < 0) {
    throw console::UsageError("The patient's number is a whole number from 0, not \"" + text + "\".");
  }
  patient.birthday = day_argument(call.arguments, "--birthday");
  patient.external_id = call.arguments.value("--external-id").value_or("");
  return patient;
}

int create(Call& call) {
  if (database::CreateIndexDatabase(call.environment, call.index) != 1) return console::exit_failed;
  call.console.out << call.arguments.operands().front() << " created\n";
  return console::exit_done;
}

/// The index must open before a patient's file is touched.
void require_index(const Call& call) {
  const OpenDatabase open = open_database(call.arguments, call.console, Access::ReadWrite);
}

int process(Call& call, std::int16_t action, std::string_view patient_database) {
  require_index(call);
  database::PatientRecord patient = patient_of(call);
  const std::int32_t id = database::db_ProcessIndex(call.environment, call.index, patient, action, patient_database);
  if (id == 0 && action != database::index_action::remove) return console::exit_failed;
  call.console.out << "patient " << (id != 0 ? id : patient.index_id) << '\n';
  return console::exit_done;
}

int refresh(Call& call) {
  const std::string file = database_path(call.arguments.operands()[3]);
  if (!support::file_test(support::host_file_system(), file)) throw support::RuntimeError(3024, "File not found.");
  return process(call, database::index_action::refresh, file);
}

int write(Call& call) { return process(call, database::index_action::write, ""); }

int remove(Call& call) { return process(call, database::index_action::remove, ""); }

int upgrade(Call& call) {
  const auto show = [&](const std::string& caption) { call.console.out << caption << '\n'; };
  return database::db_UpgradeIndexDatabase(call.environment, call.index, show) ? console::exit_done
                                                                               : console::exit_failed;
}

struct Action {
  std::string_view name;
  std::size_t operands;
  int (*run)(Call& call);
};

constexpr std::array<Action, 5> actions = {{{"create", 2, create},
                                            {"refresh", 4, refresh},
                                            {"write", 3, write},
                                            {"delete", 3, remove},
                                            {"upgrade", 2, upgrade}}};

int run(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(2, 4, usage);
  const std::string& name = arguments.operands()[1];
  const auto action = std::ranges::find(actions, std::string_view(name), &Action::name);
  if (action == actions.end()) throw console::UsageError("The index has no action \"" + name + "\".");
  arguments.expect_operands(action->operands, action->operands, usage);
  ToolEnvironment environment(arguments, console);
  if (const auto folder = arguments.value("--data-dir")) environment.get().data_folder = database_path(*folder);
  const SkippedStatementLines skipped(console.err);
  Call call{arguments, console, environment.get(), database_path(arguments.operands().front())};
  return action->run(call);
}

}  // namespace

const Command index_command{"index", usage, "Keeps the patient index database.", details, options, run};

}  // namespace patientdb
