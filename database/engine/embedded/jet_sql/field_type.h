// A table of what the embedded engine knows of each type of field.
#pragma once

#include <cstdint>
#include <string_view>

#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/engine.h"

namespace engine::embedded {

struct FieldType {
  DataType type;
  std::int32_t size;                ///< bytes of a number, largest number of characters of a Text, 0 for a Memo
  std::string_view declaration;     ///< SQLite's declaration; its affinity changes no value
  std::string_view store_function;  ///< converts a value of another type to this one; "" for texts
};

/// Null where the number is no type.
const FieldType* find_field_type(DataType type) noexcept;

/// A definition as CreateField makes it, with the attributes and size of the type. Only a Text takes a size above 0.
FieldDefinition new_field(std::string_view name, DataType type, std::int32_t size = 0);

}  // namespace engine::embedded
