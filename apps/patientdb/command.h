// A command of the console tool. A new command is a source that defines one of these, and its name in the table of
// patientdb.cpp.
#pragma once

#include <span>
#include <string_view>

#include "apps/console/arguments.h"
#include "apps/console/console.h"

namespace patientdb {

struct Command {
  std::string_view name;
  std::string_view usage;    ///< what follows the command's name
  std::string_view summary;  ///< one line for the list of commands
  std::string_view details;  ///< paragraphs for its own help; may be empty
  std::span<const console::Option> options;
  int (*run)(const console::Arguments& arguments, console::Console& console);
};

extern const Command create_command;
extern const Command info_command;
extern const Command schema_command;
extern const Command sql_command;
extern const Command export_command;
extern const Command import_command;
extern const Command index_command;
extern const Command summary_command;
extern const Command plan_command;
extern const Command labs_command;
extern const Command upgrade_command;
extern const Command basal_command;
extern const Command pump_stats_command;
extern const Command check_command;
extern const Command backup_command;
extern const Command restore_command;
extern const Command compact_command;
extern const Command password_command;

inline constexpr console::Option json_option{"--json", "", "Print JSON."};
inline constexpr console::Option password_file_option{"--password-file", "PATHNAME",
                                                      "Read the database's password from the first line of this file."};

}  // namespace patientdb
