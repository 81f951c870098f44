// Puts answers into the form's controls, as the user's hand would: set the control, raise its event. Each kind of
// control takes its own form of value:
//
//   text box           name=text                    option buttons   name=index of the chosen one
//   drop-down list     name=item data, or its text  charts           name=key|key, all others unticked
//   list with text     name=any text                folder button    name(index)=folder, a host path
#pragma once

#include "apps/firststeps_batch/answers.h"
#include "apps/firststeps_batch/batch_user.h"
#include "wizard/assistant.h"

namespace firststeps_batch {

/// Raises console::InputError for the first page or control that the form does not have, or that takes no answer.
void check_names(const form::Form& form, const Answers& answers);

/// Applies one page's answers in their order, on the page that is shown. Raises console::InputError for a value that
/// its control does not take, and for a control that is hidden or disabled then; PageRefused where the page itself says
/// no.
void apply(wizard::frmAssistantFirstSteps& assistant, BatchUser& user, const Answers& answers, const PageAnswers& page);

}  // namespace firststeps_batch
