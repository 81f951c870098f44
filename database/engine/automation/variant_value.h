// Values of fields as the automation engine passes them: a type of VARIANT for each type of field.
#pragma once

#include "database/engine/engine.h"
#include "support/win32/variant.h"

namespace engine::automation {

/// Converts a value for a field of this type. A whole number gets the width of the field where it fits. Any other value
/// goes to the engine as it is; the engine converts or refuses it.
support::Variant to_variant(const Value& value, DataType type);

/// Raises 13 for a type that no field of ours has (bytes, objects).
Value to_value(const support::Variant& variant);

}  // namespace engine::automation
