// The engine's error numbers with their texts. Names of tables and fields may stand in a text, values and paths never:
// texts end up in the error journal, which holds nothing of a patient.
#pragma once

#include <string_view>

#include "support/error.h"

namespace engine::embedded {

/// The error of this number; `name` fills the place that its text leaves for one.
support::RuntimeError engine_error(int number, std::string_view name = {});

[[noreturn]] void raise(int number, std::string_view name = {});

}  // namespace engine::embedded
