// What the embedded engine knows of each type of field, as a table.
#pragma once

#include <cstdint>
#include <string_view>

#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/engine.h"

namespace engine::embedded {

struct FieldType {
  DataType type;
  std::int32_t size;                ///< bytes of a number, most characters of a Text, 0 for a Memo
  std::string_view declaration;     ///< SQLite's, of an affinity that changes no value
  std::string_view store_function;  ///< makes a value of another type one of this; "" for texts, which need more
};

/// Null for a number that is no type.
const FieldType* find_field_type(DataType type) noexcept;

/// A definition as CreateField makes it: attributes and size as the type has them. A size above 0 is taken for Text.
FieldDefinition new_field(std::string_view name, DataType type, std::int32_t size = 0);

}  // namespace engine::embedded
