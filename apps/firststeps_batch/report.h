// What a run wrote, or would write, told to people and to programs.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "wizard/assistant.h"

namespace firststeps_batch {

struct RunReport {
  bool dry_run = false;
  wizard::FinishReport finish;
  std::vector<std::string> messages;      ///< shown on the way
  std::vector<std::string> unused_pages;  ///< answered, but not among the pages of this run
};

void write_text(std::ostream& out, const RunReport& report);

/// One object: "dry_run", "complete", "entries" with "what", "place", "name", "value", "written" and "problem",
/// "messages", "unused_pages".
void write_json(std::ostream& out, const RunReport& report);

}  // namespace firststeps_batch
