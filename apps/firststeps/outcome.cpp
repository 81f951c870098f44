#include "apps/firststeps/outcome.h"

#include <fstream>

#include "apps/firststeps_batch/report.h"
#include "support/host_path.h"

namespace firststeps {

bool write_report(const std::string& file, const wizard::frmAssistantFirstSteps& assistant) {
  if (file.empty()) return true;
  std::ofstream out(support::std_path(file), std::ios::binary);
  firststeps_batch::RunReport run;
  run.finish = assistant.report();
  run.warnings = firststeps_batch::warnings_of(assistant);
  firststeps_batch::write_text(out, run);
  return static_cast<bool>(out.flush());
}

}  // namespace firststeps
