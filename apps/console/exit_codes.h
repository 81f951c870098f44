// The exit codes of the console programs as help texts and manual tell them.
#pragma once

#include <string>
#include <string_view>

#include "apps/console/console.h"

namespace console {

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
