#include "apps/patientdb/patientdb.h"

#include <algorithm>
#include <array>

#include "apps/console/journal.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/engine_option.h"
#include "database/engine/choice/engine_choice.h"
#include "support/file_system.h"

namespace patientdb {
namespace {

constexpr std::array commands{
    &create_command,     &info_command,  &schema_command,  &sql_command,     &upgrade_command, &export_command,
    &import_command,     &index_command, &summary_command, &plan_command,    &labs_command,    &basal_command,
    &pump_stats_command, &check_command, &backup_command,  &restore_command, &compact_command, &password_command};

constexpr std::string_view password_help =
    "Password: the default one, unless the environment variable PATIENTDB_PASSWORD or --password-file gives another. "
    "An\n"
    "empty PATIENTDB_PASSWORD means a database without password.\n"
    "Exit codes: 0 done, 1 failed (\"error NUMBER: text\" on standard error), 2 wrong usage.\n";

void write_help(std::ostream& out) {
  out << "Usage: patientdb COMMAND FILE …\n\nCreates, shows and changes patient databases.\n\n";
  for (const Command* command : commands) {
    std::string line = "  " + std::string(command->name);
    line.resize(14, ' ');
    out << line << command->summary << '\n';
  }
  out << "\n\"patientdb COMMAND --help\" tells more of each.\n\n" << password_help;
}

/// The command's own ones and those that all have.
std::vector<console::Option> options_of(const Command& command) {
  std::vector<console::Option> options(command.options.begin(), command.options.end());
  options.insert(options.end() - 1, {engine_option, console::journal_option});
  return options;
}

std::unique_ptr<support::ErrorJournal> open_journal(const console::Arguments& arguments,
                                                    const console::Console& console) {
  const std::string& folder = console.program_folder;
  return console::open_journal("patientdb", arguments.value(console::journal_option.name),
                               folder.empty() ? "" : support::host_file_system().windows_path(folder) + "\\");
}

void write_help(std::ostream& out, const Command& command) {
  out << "Usage: patientdb " << command.name << ' ' << command.usage << "\n\n" << command.summary << "\n\n";
  if (!command.details.empty()) out << command.details << "\n\n";
  out << console::options_text(options_of(command)) << '\n' << password_help;
}

int run_command(const Command& command, std::span<const std::string> words, console::Console& console) {
  return console::run_guarded(console, "patientdb " + std::string(command.name), [&] {
    if (console::asks_for_help(words)) {
      write_help(console.out, command);
      return console::exit_done;
    }
    const console::Arguments arguments(options_of(command), words);
    engine_of(arguments);  // a wrong name is told by every command
    const auto shared = engine::share_automation_objects();
    const auto journal = open_journal(arguments, console);
    return command.run(arguments, console);
  });
}

}  // namespace

int run(const std::vector<std::string>& arguments, console::Console& console) {
  if (arguments.empty()) {
    write_help(console.err);
    return console::exit_usage;
  }
  if (arguments.front() == console::help_option.name) {
    write_help(console.out);
    return console::exit_done;
  }
  const auto found = std::ranges::find(commands, std::string_view(arguments.front()), &Command::name);
  if (found == commands.end()) {
    console.err << "There is no command \"" << arguments.front() << "\".\nTry \"patientdb --help\".\n";
    return console::exit_usage;
  }
  return run_command(**found, std::span(arguments).subspan(1), console);
}

}  // namespace patientdb
