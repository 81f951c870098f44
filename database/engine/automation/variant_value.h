// Values of fields as the automation engine passes them: a type of VARIANT for each type of field.
#pragma once

#include "database/engine/engine.h"
#include "support/win32/variant.h"

namespace engine::automation {

/// For a field of this type: whole numbers get the field's width where they fit it. Whatever does not fit goes to the
/// engine as it is, which converts or refuses it.
support::Variant to_variant(const Value& value, DataType type);

/// RuntimeError 13 for a type that no field of ours has (bytes, objects).
Value to_value(const support::Variant& variant);

}  // namespace engine::automation
