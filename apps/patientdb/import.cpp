#include "database/jet_import/import.h"

#include "apps/console/progress_line.h"
#include "apps/console/text_table.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/tool_environment.h"
#include "database/transfer/exported_source.h"

namespace patientdb {
namespace {

constexpr std::string_view import_usage =
    "SOURCE TARGET [--source-password-file PATHNAME] [--leave-out-bytes] [--leave-out-indexes]";

constexpr std::string_view import_details =
    R"(SOURCE is copied into the new database TARGET: its tables with their fields and indexes, and all rows. It is a database
of the Jet engine (version 3 or 4), whose queries, forms and relations stay behind, or what "patientdb export" has made
as csv (the folder) or sqlite (the folder or its file). SOURCE is not changed. Where a table's rows are not as
many as the file says, or anything cannot be read or held, nothing is left of TARGET.

Money becomes Double. A field of bytes or embedded objects is error 3259 unless it is left out. Decimal and replication
numbers become Double and Text on Linux; on Windows they are as those fields. An index whose fields cannot be read is error
3343 unless such indexes are left out.

TARGET's password is that of the other commands. SOURCE's is the same one, unless PATIENTDB_SOURCE_PASSWORD or
--source-password-file gives another.)";

constexpr console::Option source_password_option{"--source-password-file", "PATHNAME",
                                                 "Read SOURCE's password from the first line of this file."};
constexpr console::Option leave_out_option{"--leave-out-bytes", "", "Leave out fields of bytes or embedded objects."};

constexpr console::Option leave_out_indexes_option{"--leave-out-indexes", "", "Leave out indexes that cannot be read."};

constexpr console::Option import_options[] = {source_password_option, leave_out_option, leave_out_indexes_option,
                                              password_file_option, console::help_option};

std::string source_password(const console::Arguments& arguments, const console::Console& console) {
  if (const auto file = arguments.value(source_password_option.name)) return password_from_file(*file);
  if (const auto word = console.environment("PATIENTDB_SOURCE_PASSWORD")) return *word;
  return password(arguments, console);
}

void write_report(console::Console& console, const jet_import::Report& report, const std::string& target) {
  for (const std::string& note : report.notes) console.err << note << '\n';
  console::TextTable table;
  table.add_column("Table");
  table.add_column("Rows", console::TextTable::Align::Right);
  for (const jet_import::ImportedTable& row : report.tables) table.add_row({row.name, std::to_string(row.rows)});
  table.write(console.out);
  console.out << target << " created\n";
}

int run_import(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(2, 2, import_usage);
  const std::string &source_file = arguments.operands()[0], &target_file = arguments.operands()[1];
  ToolEnvironment environment(arguments, console);
  const console::Interrupt interrupt;
  console::ProgressLine progress(console, &interrupt);
  environment.get().progress = &progress;
  jet_import::Choices choices;
  choices.password = password(arguments, console);
  check_new_password(choices.password);
  choices.leave_out_foreign_fields = arguments.has(leave_out_option.name);
  choices.leave_out_unreadable_indexes = arguments.has(leave_out_indexes_option.name);
  auto source = transfer::open_exported(source_file);
  if (!source) {
    source =
        jet_import::open_source(environment.get(), database_path(source_file), source_password(arguments, console));
  }
  const auto report = jet_import::import_database(environment.get(), *source, database_path(target_file), choices);
  progress.clear();
  write_report(console, report, target_file);
  return console::exit_done;
}

}  // namespace

const Command import_command{
    "import",       import_usage,   "Copies a Jet database, or exported tables, into a new one.",
    import_details, import_options, run_import};

}  // namespace patientdb
