// How every engine and the SQL front end raise an error: by its number. The number's text comes with it.
#pragma once

#include <string_view>

#include "support/error.h"
#include "support/error_number.h"

namespace engine {

namespace error_number = support::error_number;

/// The error of this number. `detail`, a name or a clause that says more, is put where the text has a place for it.
inline support::RuntimeError engine_error(error_number::Number number, std::string_view detail = {}) {
  return {number, support::error_text(number, detail)};
}

/// Throws that error.
[[noreturn]] inline void raise(error_number::Number number, std::string_view detail = {}) {
  throw engine_error(number, detail);
}

}  // namespace engine
