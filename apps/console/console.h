// What a console program gets from its platform's main, and how it ends: streams and arguments in UTF-8, one meaning
// for each exit code, one form for each error. Also the texts about exit codes and version for help and manual.
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
inline constexpr int exit_unknown = 5;  ///< a file could not be opened, so nothing is known about it

struct Console {
  std::ostream& out;
  std::ostream& err;
  /// Value of an environment variable; nothing if it is not set.
  std::function<std::optional<std::string>(std::string_view name)> environment;
  /// The folder of the program's own file, a host path; empty if it is not known.
  std::string program_folder;
  bool err_is_terminal = false;
  /// The stream from which answers are read; null if nobody answers.
  std::istream* in = nullptr;
  /// How long work takes before the terminal shows its progress.
  std::chrono::milliseconds progress_delay{500};
  /// Shows a prompt at the terminal and reads a line in UTF-8 without showing it; nothing if the user gives up (Ctrl+C,
  /// end of input). Empty if there is no terminal.
  std::function<std::optional<std::string>(std::string_view prompt)> ask_secret = {};
};

/// A mistake of the user's. The program prints its text and ends with exit_usage.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A file that an argument names is missing, unreadable or wrong. The program prints the text and ends with exit_usage;
/// nothing was touched.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Runs `body` and returns its exit code. An error is printed on the error stream: a UsageError with a hint at
/// "`program` --help" and an InputError as it is (both exit_usage), a RuntimeError as "error NUMBER: text"
/// (exit_failed).
int run_guarded(Console& console, std::string_view program, const std::function<int()>& body);

/// The program itself, which main calls. Each program defines it once. `arguments` does not hold the program's name.
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

/// "Exit codes: 0 done, 1 …", with the exit code that only this program has.
std::string exit_codes_text(const ExitCode& own);

/// What --version prints.
std::string version_text(std::string_view program);

inline constexpr std::string_view version_option_name = "--version";

}  // namespace console
