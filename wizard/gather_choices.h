// Fills the record of choices from the pages.
#pragma once

#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/pages.h"

namespace wizard {

/// What the finish would store now. Reads the known database anew, since another program may have changed it since the
/// start, and looks which name a new one gets. Never raises.
Choices gather_choices(const Context& context, const Pages& pages);

/// The same from what was read at the start, without a look at any file: quick enough for each key that is typed. It
/// names no database.
Choices gather_pages(const Context& context, const Pages& pages);

}  // namespace wizard
