// What is worth a word about target values: what is not stored as it was typed, and what is hardly meant so.
#pragma once

#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finding.h"
#include "wizard/pages.h"

namespace wizard {

void find_in_glucose_targets(const Context& context, const Pages& pages, const Choices& choices, Findings& findings);
void find_in_pressure_targets(const Context& context, const Pages& pages, const Choices& choices, Findings& findings);

}  // namespace wizard
