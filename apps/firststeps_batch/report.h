// What a run wrote, or would write, told to people and to programs.
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

/// What the wizard's last page says is worth a word.
std::vector<Warning> warnings_of(const wizard::frmAssistantFirstSteps& assistant);

struct RunReport {
  bool dry_run = false;
  wizard::FinishReport finish;
  std::vector<Warning> warnings;
  std::vector<std::string> messages;      ///< shown on the way
  std::vector<std::string> unused_pages;  ///< answered, but not among the pages of this run
};

void write_text(std::ostream& out, const RunReport& report);

/// One object: "dry_run", "complete", "entries" with "what", "place", "name", "value", "written" and "problem",
/// "warnings" with "severity", "page", "control" and "text", "messages", "unused_pages".
void write_json(std::ostream& out, const RunReport& report);

}  // namespace firststeps_batch
