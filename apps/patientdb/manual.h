// The manual page and the shells' completion scripts, made from the rows that --help prints.
#pragma once

#include <ostream>
#include <span>
#include <string_view>
#include <vector>

#include "apps/console/console.h"
#include "apps/patientdb/command.h"

namespace patientdb {

/// A command with the options that it takes.
struct Described {
  const Command& command;
  std::vector<console::Option> options;
};

/// The environment variables that the commands read.
struct Variable {
  std::string_view name, help;
};
std::span<const Variable> variables();

/// The exit code that this program has in addition to those of every program.
inline constexpr console::ExitCode own_exit_code{console::exit_unknown,
                                                 "check could not open a file: nothing is known of it"};

/// A page for groff's "man" macros.
void write_manual(std::ostream& out, std::span<const Described> commands);
/// A script for the shell: the commands, their options, and the values of options that have only a few.
void write_bash_completion(std::ostream& out, std::span<const Described> commands);
void write_powershell_completion(std::ostream& out, std::span<const Described> commands);

}  // namespace patientdb
