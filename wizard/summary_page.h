// Page "Fertig": what will be written, choice by choice, in plain words.
#pragma once

#include "wizard/context.h"
#include "wizard/pages.h"

namespace wizard {

/// Fills `lblSummary`, one line a choice, with the choices of the pages that this run offers.
void show_summary(Context& context, const Pages& pages);

}  // namespace wizard
