#include "apps/console/progress_line.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/tool_environment.h"
#include "apps/patientdb/value_output.h"
#include "database/keeping/backup.h"
#include "support/file_system.h"

namespace patientdb {
namespace {

constexpr std::string_view restore_usage = "BACKUP FILE [--json]";

constexpr std::string_view restore_details =
    R"(Puts a copy of BACKUP in the place of FILE. Before anything is changed, all pages of BACKUP are checked, and the copy is read
back and compared with it, table by table. The old FILE, damaged or not, is kept beside the new one:
NAME.replaced-20240517-083000.das. Interrupted at any moment, the old file or the new one has the name. Nobody else may have
FILE open; where there is no FILE, it is made.

The password is that of BACKUP, and FILE has it afterwards.)";

constexpr console::Option restore_options[] = {json_option, password_file_option, console::help_option};

int run_restore(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(2, 2, restore_usage);
  const std::string &backup = arguments.operands()[0], &file = arguments.operands()[1];
  ToolEnvironment environment(arguments, console);
  const console::Interrupt interrupt;
  console::ProgressLine progress(console, &interrupt);
  environment.get().progress = &progress;
  const database::keeping::Restored done = database::keeping::restore(
      environment.get(), database_path(backup), password(arguments, console), database_path(file));
  progress.clear();
  const std::string kept = done.kept.empty() ? "" : support::host_file_system().host_path(done.kept);
  if (arguments.has(json_option.name)) {
    support::JsonWriter json(console.out);
    json.begin_object().key("file").text(file).key("backup").text(backup).key("kept").text(kept).key("tables");
    write_tables(json, done.tables);
    json.end_object();
    console.out << '\n';
  } else {
    console.out << file << ": restored, ";
    write_sum(console.out, done.tables);
    console.out << (kept.empty() ? "" : "; what was there before is in " + kept) << '\n';
  }
  return console::exit_done;
}

}  // namespace

const Command restore_command{"restore",       restore_usage,   "Puts a copy in the place of a file, which is kept.",
                              restore_details, restore_options, run_restore};

}  // namespace patientdb
