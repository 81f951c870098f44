// The words in which the rows of tables are written. The columns of a field's row are: name, type, size, attributes,
// default, required, zero length, ordinal. `none` is a property that is not set; columns that are left out at the end
// are not set either.
#pragma once

#include <cstdint>
#include <optional>

#include "database/engine/engine.h"

namespace database::schema::words {

using enum engine::DataType;

inline constexpr std::nullopt_t none = std::nullopt;
inline constexpr std::int32_t fixed = engine::attribute_fixed;
inline constexpr std::int32_t variable = engine::attribute_variable;
inline constexpr std::int32_t increment = engine::attribute_auto_increment;
inline constexpr bool no = false;
inline constexpr bool yes = true;

}  // namespace database::schema::words
