#include "apps/console/exit_codes.h"

#include "database/version_record.h"

namespace console {

std::string exit_codes_text(const ExitCode& own) {
  std::string text = "Exit codes: ";
  for (const ExitCode& row : common_exit_codes) {
    text.append(std::to_string(row.code)).append(" ").append(row.meaning).append(";\n  ");
  }
  return text.append(std::to_string(own.code)).append(" ").append(own.meaning).append(".\n");
}

std::string version_text(std::string_view program) {
  const std::string version = FIRSTSTEPS_VERSION;
  return std::string(program) + " " + version + ", layout " + std::to_string(database::current_major_version) + "." +
         std::to_string(database::current_minor_version) + "\n";
}

}  // namespace console
