#include "database/engine/embedded/jet_sql/field_type.h"

#include <algorithm>
#include <iterator>

namespace engine::embedded {
namespace {

constexpr FieldType field_types[] = {
    {DataType::Boolean, 1, "INTEGER", "jet_store_boolean"},
    {DataType::Byte, 1, "INTEGER", "jet_store_byte"},
    {DataType::Integer, 2, "INTEGER", "jet_store_integer"},
    {DataType::Long, 4, "INTEGER", "jet_store_long"},
    {DataType::Single, 4, "REAL", "jet_store_single"},
    {DataType::Double, 8, "REAL", "jet_store_double"},
    {DataType::Date, 8, "REAL", "jet_store_date"},
    {DataType::Text, longest_text, "TEXT COLLATE JET", ""},
    {DataType::Memo, 0, "TEXT COLLATE JET", ""},
};

}  // namespace

const FieldType* find_field_type(DataType type) noexcept {
  const auto* found = std::ranges::find(field_types, type, &FieldType::type);
  return found == std::end(field_types) ? nullptr : found;
}

FieldDefinition new_field(std::string_view name, DataType type, std::int32_t size) {
  FieldDefinition field;
  field.name = name;
  field.type = type;
  field.attributes = is_text(type) ? attribute_variable : attribute_fixed;
  const FieldType* known = find_field_type(type);
  field.size = known ? known->size : 0;
  if (type == DataType::Text && size > 0) field.size = size;
  return field;
}

}  // namespace engine::embedded
