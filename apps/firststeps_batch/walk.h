// Walks the wizard's pages with the answers of the file, as far as the last page.
#pragma once

#include <string>
#include <vector>

#include "apps/firststeps_batch/answers.h"
#include "apps/firststeps_batch/batch_user.h"
#include "wizard/assistant.h"

namespace firststeps_batch {

/// Answers each page as it is shown and presses Next, until the last page is answered; nothing is written yet. Returns
/// the pages of the file that were not shown. Raises PageRefused with page and message, and console::InputError
/// for an answer.
std::vector<std::string> walk_to_last_page(wizard::frmAssistantFirstSteps& assistant, BatchUser& user,
                                           const Answers& answers);

/// Presses Next on the last page, which runs the finish.
void finish(wizard::frmAssistantFirstSteps& assistant);

}  // namespace firststeps_batch
