// The engine's error numbers with their texts, as every engine and the SQL front end raise them. Names of tables and
// fields may stand in a text, values and paths never: texts end up in the error journal, which holds nothing of a
// patient.
#pragma once

#include <string_view>

#include "support/error.h"

namespace engine {

/// The error of this number. `detail`, a name or a clause that says more, stands where the text has a place for it. A
/// number without a text is told as an internal error.
support::RuntimeError engine_error(int number, std::string_view detail = {});

/// Throws it.
[[noreturn]] void raise(int number, std::string_view detail = {});

}  // namespace engine
