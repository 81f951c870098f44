#include "apps/firststeps/problems.h"

#include <cstddef>

namespace firststeps {

std::string problem_message(const wizard::InstallationConfig& config, const wizard::FinishReport& report) {
  // More would not fit the screen.
  constexpr std::size_t most_lines = 10;
  std::string lines;
  std::size_t count = 0;
  for (const auto& entry : report.entries) {
    if (entry.written || ++count > most_lines) continue;
    lines += "\r\n" + entry.place + (entry.name.empty() ? "" : ", ") + entry.name + ": " + entry.problem;
  }
  if (count == 0) return {};
  if (count > most_lines) lines += "\r\n…";
  return config.text(4882) + "\r\n" + lines;
}

}  // namespace firststeps
