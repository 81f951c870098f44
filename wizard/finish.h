// The finish: the choices are written, in a fixed order, each thing whether or not those before it could be written.
#pragma once

#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finish_writer.h"

namespace wizard {

/// Writes the configuration and the patient's database, or in a preview only records what would be written. Where a
/// database is created, writing sets `CurrentDB`. The report tells of failures.
FinishReport apply_configuration(Context& context, const Choices& choices, FinishWriter::Mode mode);

}  // namespace wizard
