#include "database/engine/embedded/index_object.h"

#include <algorithm>

#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {

IndexObject::IndexObject(std::string_view name) { definition_.name = name; }

IndexObject::IndexObject(const IndexDefinition& definition) : definition_(definition), appended_(true) {
  for (const std::string& name : definition.fields) {
    auto field = std::make_shared<FieldObject>(new_field(name, DataType::Text, 0));
    field->freeze();
    fields_.add(std::move(field));
  }
}

void IndexObject::set(bool IndexDefinition::*property, bool value) {
  if (appended_) raise(error_number::invalid_operation);
  definition_.*property = value;
}

void IndexObject::set_primary(bool primary) { set(&IndexDefinition::primary, primary); }

std::shared_ptr<Field> IndexObject::create_field(std::string_view name) { return create_field(name, DataType::Text); }

std::shared_ptr<Field> IndexObject::create_field(std::string_view name, DataType type) {
  return std::make_shared<FieldObject>(new_field(name, type, 0));
}

IndexDefinition IndexObject::definition() const {
  IndexDefinition complete = definition_;
  complete.fields.clear();
  for (std::int32_t i = 0; i < fields_.count(); ++i) complete.fields.push_back(fields_.item(i)->name());
  return complete;
}

std::shared_ptr<Field> IndexObject::IndexFields::item(std::int32_t position) const {
  if (position < 0 || position >= count()) raise(error_number::item_not_found, std::to_string(position));
  return list_[static_cast<std::size_t>(position)];
}

std::shared_ptr<Field> IndexObject::IndexFields::item(std::string_view name) const {
  const auto found = std::ranges::find_if(
      list_, [name](const auto& field) { return support::equal_ignoring_case(field->name(), name); });
  if (found == list_.end()) raise(error_number::item_not_found, name);
  return *found;
}

void IndexObject::IndexFields::append(const std::shared_ptr<Field>& field) {
  const auto object = std::dynamic_pointer_cast<FieldObject>(field);
  if (!object || object->appended() || index_.appended_) raise(error_number::invalid_operation);
  const auto same = [&](const auto& other) { return support::equal_ignoring_case(other->name(), object->name()); };
  if (std::ranges::any_of(list_, same)) raise(error_number::field_defined_twice, object->name());
  object->freeze();
  add(object);
}

void IndexObject::IndexFields::remove(std::string_view name) {
  if (index_.appended_) raise(error_number::invalid_operation);
  const auto field = item(name);
  std::erase(list_, field);
}

}  // namespace engine::embedded
