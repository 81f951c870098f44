#include "apps/firststeps_batch/firststeps_batch.h"

#include "apps/console/arguments.h"
#include "apps/console/console.h"
#include "apps/console/journal.h"
#include "apps/firststeps_batch/installation.h"
#include "apps/firststeps_batch/read_only_ports.h"
#include "apps/firststeps_batch/report.h"
#include "apps/firststeps_batch/walk.h"
#include "apps/ports/host_ports.h"
#include "database/engine/choice/engine_choice.h"
#include "support/host.h"
#include "support/shell.h"

namespace firststeps_batch {
namespace {

constexpr std::string_view usage = "firststeps_batch [OPTION…] [COMMANDLINE]";

constexpr console::Option options[] = {
    {"--program-dir", "DIR", "The installation's folder (default: this program's own)."},
    {"--registry", "HIVE.reg", "Registry hive (default: Windows' registry, elsewhere registry.reg in DIR)."},
    {"--answers", "FILE", "The answers to the pages; without it all presets are kept."},
    {"--locale", "NAME", "How numbers are written: de, en_US, en_GB, C (default: the user's, elsewhere de)."},
    {"--delete-for-good", "", "Delete old toolbars and menus also where there is no recycle bin (a share)."},
    {"--dry-run", "", "Say what would be written, and write nothing."},
    {"--json", "", "Print JSON."},
    console::journal_option,
    {console::version_option_name, "", "Show the version."},
    console::help_option,
};

constexpr std::string_view help_text =
    "Configures an installation as the wizard would, without its window. COMMANDLINE is what the wizard takes: the\n"
    "installation's name and a patient database, separated by \"|\".\n\n";

constexpr std::string_view answers_help =
    "\nThe answers file is an ini file (UTF-8 or code page 1252): a section for each page, in it a key for each "
    "control.\n"
    "  text            txtName=Müller            options  optBGUnit=1 (the index of the chosen one)\n"
    "  list            cbTherapie=4 (item data)  charts   optThumb=key|key (all others are unticked)\n"
    "  list with text  cbInsulin(0)=name         folder   cmdPath(1)=folder\n"
    "All pages are walked once before anything is written.\n\n";

void set_locale(const console::Arguments& arguments) {
  const std::optional<std::string> name = arguments.value("--locale");
  const auto locale = name ? support::user_locale_by_name(*name) : support::host_locale();
  if (!locale) throw console::UsageError("There is no locale \"" + *name + "\"; known are de, en_US, en_GB and C.");
  support::set_user_locale(*locale);
}

void load(wizard::frmAssistantFirstSteps& assistant, const std::string& command_line) {
  if (assistant.load(command_line)) return;
  throw console::InputError(
      "No installation is named: neither vantrix.ini in the program folder nor the command line has its name.");
}

/// Walks all pages with ports that write nothing, and reports what the finish would write.
RunReport rehearse(const Installation& installation, const Answers& answers, const std::string& command_line,
                   bool for_good) {
  BatchUser user(for_good);
  const auto registry = read_only(*installation.registry);
  wizard::Ports ports = apps::host_ports(*registry, user, installation.own_folder, installation.program_folder);
  const auto ini = read_only(*ports.ini);
  const auto files = read_only(*ports.files);
  ports.ini = ini.get();
  ports.files = files.get();
  ports.open_engine = read_only(ports.open_engine);
  wizard::frmAssistantFirstSteps assistant(ports);
  load(assistant, command_line);
  check_configuration(assistant.config());
  check_names(assistant.form(), answers);
  RunReport report;
  report.dry_run = true;
  report.unused_pages = walk_to_last_page(assistant, user, answers);
  report.finish = assistant.preview();
  report.warnings = warnings_of(assistant);
  report.messages = user.messages();
  return report;
}

RunReport perform(const Installation& installation, const Answers& answers, const std::string& command_line,
                  bool for_good) {
  BatchUser user(for_good, [](std::string_view folder, std::string_view pattern) {
    return support::recycle(folder, pattern, {.confirmation = false, .progress = false});
  });
  wizard::frmAssistantFirstSteps assistant(
      apps::host_ports(*installation.registry, user, installation.own_folder, installation.program_folder));
  load(assistant, command_line);
  RunReport report;
  report.unused_pages = walk_to_last_page(assistant, user, answers);
  finish(assistant);
  report.finish = assistant.report();
  report.warnings = warnings_of(assistant);
  report.messages = user.messages();
  return report;
}

int tell(console::Console& console, const RunReport& report, bool json) {
  for (const std::string& message : report.messages) console.err << message << '\n';
  for (const std::string& page : report.unused_pages) {
    console.err << "The answers for the page " << page << " were not used: it is none of this run's pages.\n";
  }
  json ? write_json(console.out, report) : write_text(console.out, report);
  return report.dry_run || report.finish.complete() ? console::exit_done : console::exit_failed;
}

int run_batch(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(0, 1, usage);
  set_locale(arguments);
  const std::string command_line = arguments.operands().empty() ? "" : arguments.operands().front();
  const std::optional<std::string> file = arguments.value("--answers");
  const Answers answers = file ? read_answers(*file) : Answers{};
  const Installation installation = find_installation(arguments, console);
  const bool for_good = arguments.has("--delete-for-good");
  RunReport report = rehearse(installation, answers, command_line, for_good);
  if (!arguments.has("--dry-run")) {
    const auto journal =
        console::open_journal("firststeps_batch", arguments.value("--journal"), installation.own_folder);
    report = perform(installation, answers, command_line, for_good);
  }
  return tell(console, report, arguments.has("--json"));
}

}  // namespace

int run(const std::vector<std::string>& arguments, console::Console& console) {
  return console::run_guarded(console, "firststeps_batch", [&] {
    if (console::asks_for_help(arguments)) {
      console.out << "Usage: " << usage << "\n\n"
                  << help_text << console::options_text(options) << answers_help
                  << console::exit_codes_text(
                         {console::exit_refused, "a page refused its answers; nothing was written"});
      return console::exit_done;
    }
    if (!arguments.empty() && arguments.front() == console::version_option_name) {
      console.out << console::version_text("firststeps_batch");
      return console::exit_done;
    }
    const auto shared = engine::share_automation_objects();
    try {
      return run_batch(console::Arguments(options, arguments), console);
    } catch (const PageRefused& refused) {
      console.err << refused.what() << "\nNothing was written.\n";
      return console::exit_refused;
    }
  });
}

}  // namespace firststeps_batch
