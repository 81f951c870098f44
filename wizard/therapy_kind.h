// What the kind of therapy chosen on page "PatDat" means for the pages that follow it.
#pragma once

#include "wizard/context.h"
#include "wizard/step_list.h"

namespace wizard {

/// Shows the insulin slots of the kind selected in `cbTherapie`, and leaves out the page "Insulin" where it has none. A
/// page that the list leaves out already stays left out.
void show_therapy_kind(Context& context, StepList& steps);

/// `cbTherapie` Click: the same, after offering the pages "Insulin" and "Medikamente" again.
void choose_therapy_kind(Context& context, StepList& steps);

}  // namespace wizard
