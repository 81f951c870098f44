// Fills the pages from the registry, the patient's database and the therapy plan before the first one is shown.
#pragma once

#include "wizard/context.h"
#include "wizard/pages.h"

namespace wizard {

/// Builds the step list for the edition or from "pelmar.ini" and presets every control. What cannot be read leaves its
/// default.
void build_and_preset(Context& context, Pages& pages);

}  // namespace wizard
