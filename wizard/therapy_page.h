// What the kind of therapy chosen on page "PatDat" means for the pages that follow it.
#pragma once

#include "wizard/context.h"
#include "wizard/steps.h"

namespace wizard {

/// Offers the pages "Insulin" and "Medikamente" again and all five insulin slots, then takes away what the kind
/// selected in `cbTherapie` does not need.
void apply_therapy_kind(Context& context, StepList& steps);

}  // namespace wizard
