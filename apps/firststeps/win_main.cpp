// The wizard as a Windows program.
#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <fstream>
#include <string>
#include <string_view>
#include <utility>

#include "apps/console/journal.h"
#include "apps/firststeps/options.h"
#include "apps/firststeps_batch/report.h"
#include "apps/ports/host_ports.h"
#include "support/host.h"
#include "support/host_path.h"
#include "support/win32/wide.h"
#include "wizard/finish_report.h"
#include "wizard/start_up.h"
#include "wizard/win32/assistant_window.h"
#include "wizard/win32/colours.h"
#include "wizard/win32/com.h"
#include "wizard/win32/problem_window.h"
#include "wizard/win32/progress_window.h"
#include "wizard/win32/running_wizard.h"
#include "wizard/win32/window_user.h"

namespace {

std::string program_folder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return support::narrow(path.substr(0, path.find_last_of(L'\\') + 1));
}

/// Writes a report of the run (what was written, and the findings before) into the file, a host path. False if that
/// fails; true if no file is named.
bool write_report(const std::string& file, const wizard::frmAssistantFirstSteps& assistant) {
  if (file.empty()) return true;
  std::ofstream out(support::std_path(file), std::ios::binary);
  firststeps_batch::RunReport run;
  run.finish = assistant.report();
  run.warnings = firststeps_batch::warnings_of(assistant);
  firststeps_batch::write_text(out, run);
  return static_cast<bool>(out.flush());
}

/// Tells the user that everything was written, or what is missing. True if everything was written, including the
/// report.
bool conclude(wizard::win32::AssistantWindow& window, const firststeps::Options& options,
              const wizard::frmAssistantFirstSteps& assistant) {
  const bool reported = write_report(options.report, assistant);
  const auto problems = wizard::finish_problems(assistant.config(), assistant.report());
  if (problems.empty()) {
    window.show_outcome();
    return reported;
  }
  wizard::win32::show_problems(window.handle(), assistant.config(), problems);
  return false;
}

enum ExitCode { done = 0, not_everything_written = 1, runs_already = 4 };

/// Walks the user through the pages and writes what they say.
int configure(HINSTANCE instance, const firststeps::Options& options, wizard::Ports ports,
              wizard::win32::WindowUser& user, const wizard::win32::RunningWizard& claim) {
  wizard::win32::ProgressWindow progress;
  ports.progress = &progress;
  wizard::frmAssistantFirstSteps assistant(std::move(ports));
  if (!assistant.load(options.command_line)) return done;
  wizard::win32::AssistantWindow window(instance, assistant);
  window.set_work(progress);
  claim.set_window(window.handle());
  user.set_owner(window.handle());
  progress.set_owner(window.handle(), assistant.form().caption(), assistant.config().DefaultFont);
  window.run();
  const bool complete =
      assistant.state() != wizard::frmAssistantFirstSteps::State::Finished || conclude(window, options, assistant);
  user.set_owner(nullptr);
  return complete ? done : not_everything_written;
}

/// Tells the user that the wizard runs already, if its window cannot be shown: it belongs to another session or to an
/// administrator, or it hangs.
void tell_of_first(const wizard::Ports& ports, wizard::win32::WindowUser& user, std::string_view command_line) {
  constexpr long runs_elsewhere = 6051, window_title = 4650;
  const wizard::InstallationConfig config = wizard::known_installation(ports, command_line);
  user.message_box(config.text(runs_elsewhere), MB_ICONINFORMATION | MB_SETFOREGROUND, config.text(window_title));
}

/// Any other word leaves the choice to Windows.
void fix_colours(std::string_view word) {
  using wizard::win32::Scheme;
  constexpr std::pair<std::string_view, Scheme> schemes[] = {
      {"light", Scheme::Light}, {"dark", Scheme::Dark}, {"contrast", Scheme::Contrast}};
  for (const auto& [name, scheme] : schemes) {
    if (word == name) wizard::win32::fix_scheme(scheme);
  }
}

int run(HINSTANCE instance, const firststeps::Options& options) {
  const wizard::win32::ComSession com;
  support::set_user_locale(support::host_locale());
  fix_colours(options.colours);
  const std::string program = program_folder();
  const std::string own = options.program_folder.empty() ? program : options.program_folder;
  const auto journal = console::open_journal("firststeps.exe", options.journal, own);
  const auto registry = support::host_registry(options.hive);
  wizard::win32::WindowUser user;
  wizard::Ports ports = apps::host_ports(*registry, user, own, program);
  // Runs with different hives do not disturb each other.
  const wizard::win32::RunningWizard claim(wizard::installation_key(ports, options.command_line) + "|" + options.hive);
  if (claim.is_first()) return configure(instance, options, std::move(ports), user, claim);
  if (!claim.show_first()) tell_of_first(ports, user, options.command_line);
  return runs_already;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR command_line, int) {
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_PROGRESS_CLASS | ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  // A step that takes long on a slow share must not turn the window white: the window has a text that says what is
  // being done.
  DisableProcessWindowsGhosting();
  return run(instance, firststeps::read_options(support::narrow(command_line)));
}
