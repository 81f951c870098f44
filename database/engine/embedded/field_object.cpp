#include "database/engine/embedded/field_object.h"

#include <algorithm>

#include "database/engine/embedded/layout.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {

FieldDefinition FieldObject::definition() const {
  if (!place_.session) return definition_;
  const TablePointer table = place_.table();
  const auto stored = std::ranges::find(table->definition.fields, id_, &FieldDefinition::id);
  if (stored == table->definition.fields.end()) raise(error_number::object_invalid);
  return *stored;
}

template <typename Change>
void FieldObject::change(Change&& change) {
  if (frozen_) raise(error_number::invalid_operation);
  if (place_.session) {
    layout::change_field(*place_.session, place_.id, id_, change);
  } else {
    change(definition_);
  }
}

void FieldObject::append_to(TablePlace place) {
  const TablePointer table = place.table();
  if (const FieldDefinition* stored = table->definition.find_field(definition_.name)) id_ = stored->id;
  place_ = std::move(place);
}

void FieldObject::set_name(std::string_view name) {
  change([&](FieldDefinition& field) { field.name = name; });
}

void FieldObject::set_size(std::int32_t size) {
  if (appended()) raise(error_number::invalid_operation);
  // The type of a number or date fixes its storage size.
  if (definition_.type == DataType::Text) definition_.size = size;
}

void FieldObject::set_attributes(std::int32_t attributes) {
  change([&](FieldDefinition& field) { field.attributes = attributes; });
}

void FieldObject::set_default_value(std::string_view expression) {
  change([&](FieldDefinition& field) { field.default_value = expression; });
}

void FieldObject::set_required(bool required) {
  change([&](FieldDefinition& field) { field.required = required; });
}

void FieldObject::set_allow_zero_length(bool allow) {
  change([&](FieldDefinition& field) { field.allow_zero_length = allow; });
}

void FieldObject::set_ordinal_position(std::int16_t position) {
  change([&](FieldDefinition& field) { field.ordinal_position = position; });
}

void FieldObject::set_validation_rule(std::string_view rule) {
  change([&](FieldDefinition& field) { field.validation_rule = rule; });
}

void FieldObject::set_validation_text(std::string_view text) {
  change([&](FieldDefinition& field) { field.validation_text = text; });
}

}  // namespace engine::embedded
