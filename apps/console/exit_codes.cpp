#include "apps/console/exit_codes.h"

#include <fmt/core.h>

#include "database/version_record.h"

namespace console {

std::string exit_codes_text(const ExitCode& own) {
  std::string text = "Exit codes: ";
  for (const ExitCode& row : common_exit_codes) {
    text += fmt::format("{} {};\n  ", row.code, row.meaning);
  }
  return text += fmt::format("{} {}.\n", own.code, own.meaning);
}

std::string version_text(std::string_view program) {
  const std::string version = FIRSTSTEPS_VERSION;
  return fmt::format("{} {}, layout {}.{}\n", program, version, database::current_major_version,
                     database::current_minor_version);
}

}  // namespace console
