#include "database/keeping/backup.h"

#include "apps/console/progress_line.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/tool_environment.h"
#include "apps/patientdb/value_output.h"
#include "support/file_system.h"

namespace patientdb {
namespace {

constexpr std::string_view backup_usage = "FILE TARGET [--overwrite] [--json]";

constexpr std::string_view backup_details =
    R"(Copies what is stored in FILE to TARGET, with the same password. FILE may be in use: the copy is its state at one moment,
and who writes meanwhile waits. Where TARGET is a folder, the copy lies in it under FILE's name with layout and moment:
NAME.4.60.20240517-083000.das. The copy is read back, and each table's rows and checksum are compared with FILE's; it has its
name only when it is whole and on the disk. A file that is there is not overwritten unless that is asked for.

A file of the Jet engine is copied while nobody has it open.)";

constexpr console::Option overwrite_option{"--overwrite", "", "Replace a file that is there, unless it is open."};

constexpr console::Option backup_options[] = {overwrite_option, json_option, password_file_option,
                                              console::help_option};

int run_backup(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(2, 2, backup_usage);
  const std::string &file = arguments.operands()[0], &target = arguments.operands()[1];
  ToolEnvironment environment(arguments, console);
  const console::Interrupt interrupt;
  console::ProgressLine progress(console, &interrupt);
  environment.get().progress = &progress;
  const database::keeping::Backup done =
      database::keeping::back_up(environment.get(), database_path(file), password(arguments, console),
                                 database_path(target), arguments.has(overwrite_option.name));
  progress.clear();
  const std::string path = support::host_file_system().host_path(done.path);
  if (arguments.has(json_option.name)) {
    support::JsonWriter json(console.out);
    json.begin_object().key("file").text(file).key("backup").text(path);
    json.key("bytes").integer(static_cast<std::int64_t>(done.bytes)).key("tables");
    write_tables(json, done.tables);
    json.end_object();
    console.out << '\n';
  } else {
    console.out << path << ": " << done.bytes << " bytes, ";
    write_sum(console.out, done.tables);
    console.out << ", all as in " << file << '\n';
  }
  return console::exit_done;
}

}  // namespace

const Command backup_command{"backup",       backup_usage,   "Makes a copy, of a file in use too, and reads it back.",
                             backup_details, backup_options, run_backup};

}  // namespace patientdb
