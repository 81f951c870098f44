#include <fmt/core.h>

#include <algorithm>
#include <array>

#include "apps/console/progress_line.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/patient_arguments.h"
#include "apps/patientdb/tool_environment.h"
#include "database/creation/create_database.h"
#include "database/index/index_database.h"
#include "database/index/index_upgrade.h"
#include "support/encoding.h"
#include "support/text.h"

namespace patientdb {
namespace {

constexpr std::string_view index_usage =
    "INDEX create | INDEX refresh ID FILE | INDEX write ID --name N --firstname F … | INDEX delete ID | INDEX upgrade";

constexpr std::string_view index_details =
    R"(refresh fills the patient's row from the patient's database; an ID of 0 adds a row.
write fills it from the options; an ID of 0 adds a row. delete removes it and releases the patient's devices.
upgrade brings the index, and where that is due every patient database, up to date, and removes rows whose
patient database is gone. Ctrl+C ends it between two patients; the next upgrade goes on there.

refresh and upgrade bring a patient database of an older layout up to the current one. First a copy is made beside
it, checked, and named with the old layout. Ten days of pump data or more are converted only after a question, which
is asked on the terminal unless --yes or --no answers it. Where nobody answers, that database stays as it was.

Exit code 1 where the index, a row or one of the patient databases is not as it was to be.)";

constexpr console::Option index_options[] = {
    {"--data-dir", "DIR", "The folder with meters.mdb and, where they do not lie beside the index, the patients."},
    name_option,
    firstname_option,
    {"--birthday", "D", "The patient's birthday, YYYY-MM-DD."},
    {"--external-id", "X", "The patient's number in another system."},
    diabetes_type_option,
    therapy_option,
    yes_option,
    no_option,
    password_file_option,
    console::help_option,
};

struct Call {
  const console::Arguments& arguments;
  console::Console& console;
  database::Environment environment;
  console::ProgressLine& progress;
  std::string index;
};

std::int32_t patient_number(const Call& call) {
  const std::string& text = call.arguments.operands()[2];
  const auto number = support::parse_whole<std::int32_t>(text);
  if (!number || *number < 0) {
    throw console::UsageError("The patient's number is a whole number from 0, not \"" + text + "\".");
  }
  return *number;
}

database::PatientRecord patient_of(const Call& call) {
  database::PatientRecord patient = patient_argument(call.arguments);
  patient.index_id = patient_number(call);
  patient.birthday = day_argument(call.arguments, "--birthday");
  patient.external_id = call.arguments.value("--external-id").value_or("");
  return patient;
}

/// Raises 3163 if the text is too long for the field of the index.
void require_room(engine::TableDef& table, std::string_view field, const std::string& text) {
  const auto size = static_cast<std::size_t>(table.fields().item(field)->size());
  if (support::character_count(text) <= size) return;
  throw support::RuntimeError(support::error_number::field_too_small,
                              fmt::format("{} takes at most {} characters.", field, size));
}

/// Reports what is wrong with the row before the row, the devices or a patient's file are touched.
void check_row(const Call& call, const database::PatientRecord& patient, bool may_add) {
  const OpenDatabase open = open_database(call.arguments, call.console, Access::ReadWrite);
  const auto row = open.database->open_forward_only(fmt::format("SELECT id FROM index WHERE id={}", patient.index_id));
  if (row->eof() && !may_add) {
    throw support::RuntimeError(support::error_number::no_current_record,
                                fmt::format("The index has no patient {}.", patient.index_id));
  }
  const auto table = open.database->table_defs().item("index");
  require_room(*table, "Name", patient.name);
  require_room(*table, "FirstName", patient.firstname);
  require_room(*table, "ExternalID", patient.external_id);
}

void tell_upgrade(const Call& call, const std::string& file, const database::IndexOutcome& outcome) {
  if (!outcome.kept_copy.empty()) {
    call.progress.clear();
    call.console.err << support::host_file_system().host_path(file) << ": as it was before: " << outcome.kept_copy
                     << '\n';
  }
  if (!outcome.upgrade) return;
  call.progress.clear();
  call.console.out << support::host_file_system().host_path(file) << ": upgraded from " << outcome.upgrade->layout
                   << ", copy in " << outcome.upgrade->copy << '\n';
}

/// `may_add`: the patient may lack a row so far.
int process(Call& call, std::int16_t action, const std::string& file, bool may_add) {
  database::PatientRecord patient = patient_of(call);
  check_row(call, patient, may_add);
  database::IndexOutcome outcome;
  const std::int32_t id = database::db_ProcessIndex(call.environment, call.index, patient, action, file, &outcome);
  tell_upgrade(call, file, outcome);
  if (outcome.failure) throw support::RuntimeError(*outcome.failure);
  call.console.out << "patient " << (id != 0 ? id : patient.index_id) << '\n';
  return console::exit_done;
}

int refresh(Call& call) {
  const std::string file = database_path(call.arguments.operands()[3]);
  if (!support::file_test(support::host_file_system(), file))
    throw support::RuntimeError(support::error_number::file_not_found, "File not found.");
  return process(call, database::index_action::refresh, file, true);
}

int write(Call& call) { return process(call, database::index_action::write, "", patient_number(call) == 0); }

int remove(Call& call) { return process(call, database::index_action::remove, "", false); }

void tell_result(const Call& call, const database::IndexUpgrade& result) {
  std::ostream& out = call.console.out;
  if (result.due > 0) {
    out << result.refreshed << " of " << result.due << " patient databases brought up to date";
    if (result.failed > 0) out << ", " << result.failed << " could not be";
    if (result.cancelled) out << ", cancelled: the next upgrade goes on there";
    out << '\n';
  }
  if (result.removed > 0) {
    out << result.removed << (result.removed == 1 ? " row" : " rows") << " without a patient database removed\n";
  }
}

int upgrade(Call& call) {
  const console::Interrupt interrupt;
  database::IndexUpgradeWatch watch;
  watch.status = [&](const std::string& caption) { call.progress.start(caption, 100); };
  watch.percentage = [&](std::int32_t percentage) { call.progress.set_value(percentage); };
  watch.cancelled = [] { return console::Interrupt::wanted(); };
  watch.patient = [&](std::int32_t id, const std::string& file, const database::IndexOutcome& outcome) {
    tell_upgrade(call, file, outcome);
    if (!outcome.failure) return;
    call.progress.clear();
    call.console.err << "patient " << id << ": error " << outcome.failure->number() << ": " << outcome.failure->what()
                     << '\n';
  };
  const database::IndexUpgrade result = database::db_UpgradeIndexDatabase(call.environment, call.index, watch);
  call.progress.clear();
  tell_result(call, result);
  if (result.failure) throw support::RuntimeError(*result.failure);
  return result.complete() ? console::exit_done : console::exit_failed;
}

int create(Call& call) {
  const std::string& name = call.arguments.operands().front();
  if (database::CreateIndexDatabase(call.environment, call.index) != 1) return console::exit_failed;
  call.console.out << name << " created\n";
  return upgrade(call);
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

int run_index(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(2, 4, index_usage);
  const std::string& name = arguments.operands()[1];
  const auto action = std::ranges::find(actions, std::string_view(name), &Action::name);
  if (action == actions.end()) throw console::UsageError("The index has no action \"" + name + "\".");
  arguments.expect_operands(action->operands, action->operands, index_usage);
  ToolEnvironment environment(arguments, console);
  console::ProgressLine progress(console);
  PumpQuestion question(arguments, console, [&] { progress.clear(); });
  environment.get().message_box = question.message_box();
  environment.get().progress = &progress;
  if (const auto folder = arguments.value("--data-dir")) environment.get().data_folder = database_path(*folder);
  const SkippedStepLines skipped(console.err);
  Call call{arguments, console, environment.get(), progress, database_path(arguments.operands().front())};
  return action->run(call);
}

}  // namespace

const Command index_command{"index",       index_usage,   "Keeps the patient index database.",
                            index_details, index_options, run_index};

}  // namespace patientdb
