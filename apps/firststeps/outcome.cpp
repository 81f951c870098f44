#include "apps/firststeps/outcome.h"

#include <cstddef>
#include <fstream>

#include "apps/firststeps_batch/report.h"
#include "support/host_path.h"

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

bool write_report(const std::string& file, const wizard::FinishReport& report) {
  if (file.empty()) return true;
  std::ofstream out(support::std_path(file), std::ios::binary);
  firststeps_batch::RunReport run;
  run.finish = report;
  firststeps_batch::write_text(out, run);
  return static_cast<bool>(out.flush());
}

}  // namespace firststeps
