// The finish: everything that the pages hold is written, in a fixed order, each thing whether or not those before it
// could be written.
#pragma once

#include "wizard/context.h"
#include "wizard/finish_writer.h"
#include "wizard/pages.h"

namespace wizard {

/// Writes the configuration and the patient's database, or in a preview only records what would be written. Where a
/// database is created, writing sets `CurrentDB`. The report tells of failures.
FinishReport apply_configuration(Context& context, const Pages& pages, FinishWriter::Mode mode);

}  // namespace wizard
