// The command line of the window program. The diary starts it with "installation|database" and nothing else. Options,
// for administrators and tests, stand before that and begin with "--".
#pragma once

#include <string>
#include <string_view>

namespace firststeps {

struct Options {
  std::string program_folder;  ///< --program-dir: with its trailing backslash; empty: the folder of the program itself
  std::string hive;            ///< --registry: a hive file in place of the registry
  std::string report;          ///< --report: a file that says what was written
  std::string journal;         ///< --journal: a file for the steps that were passed over
  std::string colours;         ///< --colours: light, dark or contrast, whatever Windows is set to; for pictures
  std::string command_line;    ///< the rest, as it stands
};

/// Reads the options. The first word that is none of them begins the rest. A value with blanks, and the rest as a
/// whole, may be in quotes.
Options read_options(std::string_view command_line);

}  // namespace firststeps
