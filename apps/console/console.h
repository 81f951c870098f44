// What a console program is given by its platform's main, and how it ends: streams and arguments in UTF-8, one meaning
// for each exit code, one form for each error. The texts of help and manual on exit codes and version.
#pragma once

#include <chrono>
#include <functional>
#include <istream>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace console {

inline constexpr int exit_done = 0;
inline constexpr int exit_failed = 1;   ///< the work could not be done, or not all of it
inline constexpr int exit_usage = 2;    ///< the arguments, or files given as arguments, are wrong; nothing was touched
inline constexpr int exit_refused = 3;  ///< a page refused its answers; nothing was written
inline constexpr int exit_unknown = 5;  ///< a file could not be looked at: nothing is known of it

struct Console {
  std::ostream& out;
  std::ostream& err;
  /// Value of an environment variable; nothing where it is not set.
  std::function<std::optional<std::string>(std::string_view name)> environment;
  /// The folder that the program's file lies in, a host path; empty where it is not known.
  std::string program_folder;
  bool err_is_terminal = false;
  /// Where answers are read from; null where nobody answers.
  std::istream* in = nullptr;
  /// How long work goes on before a terminal is shown its progress.
  std::chrono::milliseconds progress_delay{500};
  /// Shows a prompt at the terminal and reads a line, in UTF-8, that is not shown; nothing where the user gives up
  /// (Ctrl+C, end of input). Empty where there is no terminal.
  std::function<std::optional<std::string>(std::string_view prompt)> ask_secret = {};
};

/// The user's mistake: told with its text and exit_usage.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A file that an argument names is missing, unreadable or wrong: told with its text and exit_usage, nothing was
/// touched.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Runs `body` and returns its exit code. What it raises is told on the error stream: a UsageError with a pointer to
/// "`program` --help" (exit_usage), an InputError as it is (exit_usage), a RuntimeError as "error NUMBER: text"
/// (exit_failed).
int run_guarded(Console& console, std::string_view program, const std::function<int()>& body);

/// The program behind main, defined once in each program. Arguments without the program's own name.
int program(const std::vector<std::string>& arguments, Console& console);

struct ExitCode {
  int code;
  std::string_view meaning;
};

/// Of every console program.
inline constexpr ExitCode common_exit_codes[] = {
    {exit_done, "done"},
    {exit_failed, "failed, or not all of it was done (\"error NUMBER: text\" on standard error)"},
    {exit_usage, "wrong usage: arguments, or files given as arguments; nothing was touched"},
};

/// "Exit codes: 0 done, 1 …", with the one that a program has of its own.
std::string exit_codes_text(const ExitCode& own);

/// As --version tells it.
std::string version_text(std::string_view program);

inline constexpr std::string_view version_option_name = "--version";

}  // namespace console
