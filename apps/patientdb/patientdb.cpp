#include "apps/patientdb/patientdb.h"

#include <algorithm>
#include <array>

#include "apps/console/console.h"
#include "apps/console/journal.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/manual.h"
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
    "empty PATIENTDB_PASSWORD means a database without password.\n";

std::string common_help() { return std::string(password_help) + console::exit_codes_text(own_exit_code); }

void write_help(std::ostream& out) {
  out << "Usage: patientdb COMMAND FILE …\n\nCreates, shows and changes patient databases.\n\n";
  for (const Command* command : commands) {
    std::string line = "  " + std::string(command->name);
    line.resize(14, ' ');
    out << line << command->summary << '\n';
  }
  out << "\n\"patientdb COMMAND --help\" tells more of each; \"patientdb --version\" tells the version,\n"
      << "\"patientdb --manual\" writes the manual page, \"patientdb --completion bash\" or \"… powershell\" what\n"
      << "completes commands and options in that shell.\n\n"
      << common_help();
}

/// The command's own options and those that all commands have.
std::vector<console::Option> options_of(const Command& command) {
  std::vector<console::Option> options(command.options.begin(), command.options.end());
  options.insert(options.end() - 1, {engine_option, console::journal_option});
  return options;
}

std::vector<Described> described_commands() {
  std::vector<Described> described;
  described.reserve(std::size(commands));
  for (const Command* command : commands) described.push_back({*command, options_of(*command)});
  return described;
}

int write_completion(std::span<const std::string> shell, console::Console& console) {
  const std::string name = shell.size() == 1 ? shell.front() : "";
  if (name == "bash") {
    write_bash_completion(console.out, described_commands());
  } else if (name == "powershell") {
    write_powershell_completion(console.out, described_commands());
  } else {
    console.err << "--completion takes bash or powershell.\nTry \"patientdb --help\".\n";
    return console::exit_usage;
  }
  return console::exit_done;
}

/// Answers what is asked of the program itself (help, version) and returns the exit code; nothing if the words are none
/// of that.
std::optional<int> answer_of_program(std::span<const std::string> words, console::Console& console) {
  const std::string& word = words.front();
  if (word == "--completion") return write_completion(words.subspan(1), console);
  if (word == console::help_option.name) {
    write_help(console.out);
  } else if (word == console::version_option_name) {
    console.out << console::version_text("patientdb");
  } else if (word == "--manual") {
    write_manual(console.out, described_commands());
  } else {
    return std::nullopt;
  }
  return console::exit_done;
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
  out << console::options_text(options_of(command)) << '\n' << common_help();
}

int run_command(const Command& command, std::span<const std::string> words, console::Console& console) {
  return console::run_guarded(console, "patientdb " + std::string(command.name), [&] {
    if (console::asks_for_help(words)) {
      write_help(console.out, command);
      return console::exit_done;
    }
    const console::Arguments arguments(options_of(command), words);
    engine_of(arguments);  // every command refuses a wrong name
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
  if (const auto answered = answer_of_program(arguments, console)) return *answered;
  const auto found = std::ranges::find(commands, std::string_view(arguments.front()), &Command::name);
  if (found == commands.end()) {
    console.err << "There is no command \"" << arguments.front() << "\".\nTry \"patientdb --help\".\n";
    return console::exit_usage;
  }
  return run_command(**found, std::span(arguments).subspan(1), console);
}

}  // namespace patientdb
