// The list of steps as the user sees it: the pages' names, without those that are passed over, and where among them the
// user is.
#pragma once

#include "wizard/context.h"
#include "wizard/step_list.h"

namespace wizard {

/// Shows the list in `lstSteps`.
void show_steps(Context& context, const StepList& steps);

}  // namespace wizard
