// A look at what a finish will meet: folders, names, files, the registry. Nothing is changed by it.
#pragma once

#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finding.h"

namespace wizard {

/// What will keep the choices from being stored, or store them elsewhere than expected, and what to do about it. Never
/// raises.
Findings surrounding_findings(const Context& context, const Choices& choices);

}  // namespace wizard
