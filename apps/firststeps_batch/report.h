// What a run wrote, or would write, as text for people and as JSON for programs.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "wizard/assistant.h"

namespace firststeps_batch {

/// A finding in words.
struct Warning {
  std::string severity;  ///< "note", "warning"
  std::string page, control, text;
};

/// The findings that the wizard's last page shows.
std::vector<Warning> warnings_of(const wizard::frmAssistantFirstSteps& assistant);

struct RunReport {
  bool dry_run = false;
  wizard::FinishReport finish;
  std::vector<Warning> warnings;
  std::vector<std::string> messages;      ///< messages that the wizard showed
  std::vector<std::string> unused_pages;  ///< pages in the answers file that are none of this run's
};

void write_text(std::ostream& out, const RunReport& report);

/// One object: "dry_run", "complete", "entries" with "what", "place", "name", "value", "written" and "problem",
/// "warnings" with "severity", "page", "control" and "text", "messages", "unused_pages".
void write_json(std::ostream& out, const RunReport& report);

}  // namespace firststeps_batch
