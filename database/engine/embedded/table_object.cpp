#include "database/engine/embedded/table_object.h"

#include <algorithm>
#include <utility>

#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/embedded/layout.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {
namespace {

/// Raises 3265 for a position that the list does not have.
std::size_t place_in(std::int32_t position, std::size_t count) {
  if (position < 0 || static_cast<std::size_t>(position) >= count)
    raise(error_number::item_not_found, std::to_string(position));
  return static_cast<std::size_t>(position);
}

template <typename Object>
auto find_object(const std::vector<std::shared_ptr<Object>>& list, std::string_view name) {
  const auto found = std::ranges::find_if(
      list, [name](const auto& object) { return support::equal_ignoring_case(object->name(), name); });
  if (found == list.end()) raise(error_number::item_not_found, name);
  return found;
}

}  // namespace

TableObject::TableObject(std::string_view name) { definition_.name = name; }

TableObject::TableObject(TablePlace place) : place_(std::move(place)) {}

TableDefinition TableObject::properties() const { return appended() ? place_.table()->definition : definition_; }

TableDefinition TableObject::definition() const {
  TableDefinition complete = definition_;
  for (const auto& field : new_fields_) complete.fields.push_back(field->definition());
  for (const auto& index : new_indexes_) complete.indexes.push_back(index->definition());
  return complete;
}

void TableObject::append_to(TablePlace place) {
  place_ = std::move(place);
  for (const auto& field : new_fields_) field->append_to(place_);
  new_fields_.clear();
  new_indexes_.clear();
}

template <typename Change>
void TableObject::change(Change&& change) {
  if (appended()) {
    layout::change_table(*place_.session, place_.id, change);
  } else {
    change(definition_);
  }
}

void TableObject::set_name(std::string_view name) {
  change([&](TableDefinition& table) { table.name = name; });
}

void TableObject::set_attributes(std::int32_t attributes) {
  change([&](TableDefinition& table) { table.attributes = attributes; });
}

void TableObject::set_connect(std::string_view connect) {
  change([&](TableDefinition& table) { table.connect = connect; });
}

void TableObject::set_source_table_name(std::string_view name) {
  change([&](TableDefinition& table) { table.source_table_name = name; });
}

void TableObject::set_validation_rule(std::string_view rule) {
  change([&](TableDefinition& table) { table.validation_rule = rule; });
}

void TableObject::set_validation_text(std::string_view text) {
  change([&](TableDefinition& table) { table.validation_text = text; });
}

std::shared_ptr<Field> TableObject::create_field(std::string_view name, DataType type) {
  return create_field(name, type, 0);
}

std::shared_ptr<Field> TableObject::create_field(std::string_view name, DataType type, std::int32_t size) {
  return std::make_shared<FieldObject>(new_field(name, type, size));
}

std::shared_ptr<Index> TableObject::create_index(std::string_view name) { return std::make_shared<IndexObject>(name); }

std::int32_t TableObject::TableFields::count() const {
  const std::size_t count =
      table_.appended() ? table_.place_.table()->definition.fields.size() : table_.new_fields_.size();
  return static_cast<std::int32_t>(count);
}

std::shared_ptr<Field> TableObject::TableFields::item(std::int32_t position) const {
  if (!table_.appended()) return table_.new_fields_[place_in(position, table_.new_fields_.size())];
  const TablePointer stored = table_.place_.table();
  const auto& fields = stored->definition.fields;
  return std::make_shared<FieldObject>(table_.place_, fields[place_in(position, fields.size())].id);
}

std::shared_ptr<Field> TableObject::TableFields::item(std::string_view name) const {
  if (!table_.appended()) return *find_object(table_.new_fields_, name);
  const TablePointer stored = table_.place_.table();
  const FieldDefinition* field = stored->definition.find_field(name);
  if (!field) raise(error_number::item_not_found, name);
  return std::make_shared<FieldObject>(table_.place_, field->id);
}

void TableObject::TableFields::append(const std::shared_ptr<Field>& field) {
  const auto object = std::dynamic_pointer_cast<FieldObject>(field);
  if (!object || object->appended()) raise(error_number::invalid_operation);
  const FieldDefinition definition = object->definition();
  if (table_.appended()) {
    layout::add_field(*table_.place_.session, table_.place_.id, definition);
    object->append_to(table_.place_);
    return;
  }
  layout::check_field(definition);
  const auto same = [&](const auto& other) { return support::equal_ignoring_case(other->name(), definition.name); };
  if (std::ranges::any_of(table_.new_fields_, same)) raise(error_number::field_defined_twice, definition.name);
  table_.new_fields_.push_back(object);
}

void TableObject::TableFields::remove(std::string_view name) {
  if (table_.appended()) {
    layout::drop_field(*table_.place_.session, table_.place_.id, name);
  } else {
    table_.new_fields_.erase(find_object(table_.new_fields_, name));
  }
}

std::int32_t TableObject::TableIndexes::count() const {
  const std::size_t count =
      table_.appended() ? table_.place_.table()->definition.indexes.size() : table_.new_indexes_.size();
  return static_cast<std::int32_t>(count);
}

std::shared_ptr<Index> TableObject::TableIndexes::item(std::int32_t position) const {
  if (!table_.appended()) return table_.new_indexes_[place_in(position, table_.new_indexes_.size())];
  const TablePointer stored = table_.place_.table();
  const auto& indexes = stored->definition.indexes;
  return std::make_shared<IndexObject>(indexes[place_in(position, indexes.size())]);
}

std::shared_ptr<Index> TableObject::TableIndexes::item(std::string_view name) const {
  if (!table_.appended()) return *find_object(table_.new_indexes_, name);
  const TablePointer stored = table_.place_.table();
  const IndexDefinition* index = find_named(stored->definition.indexes, name);
  if (!index) raise(error_number::item_not_found, name);
  return std::make_shared<IndexObject>(*index);
}

void TableObject::TableIndexes::append(const std::shared_ptr<Index>& index) {
  const auto object = std::dynamic_pointer_cast<IndexObject>(index);
  if (!object) raise(error_number::invalid_operation);
  const IndexDefinition definition = object->definition();
  if (table_.appended()) {
    layout::create_index(*table_.place_.session, table_.place_.id, definition);
  } else {
    // The index may name fields that are created later. They are looked up when the table is appended.
    TableDefinition table = table_.definition();
    for (const std::string& field : definition.fields) {
      if (!table.find_field(field)) table.fields.push_back(new_field(field, DataType::Long, 0));
    }
    layout::check_index(definition, table);
    table_.new_indexes_.push_back(object);
  }
  object->freeze();
}

void TableObject::TableIndexes::remove(std::string_view name) {
  if (table_.appended()) {
    layout::drop_index(*table_.place_.session, table_.place_.id, name);
  } else {
    table_.new_indexes_.erase(find_object(table_.new_indexes_, name));
  }
}

std::int32_t TableCollection::count() const { return static_cast<std::int32_t>(session_->catalogue().tables().size()); }

std::shared_ptr<TableDef> TableCollection::item(std::int32_t position) const {
  const auto& tables = session_->catalogue().tables();
  return std::make_shared<TableObject>(TablePlace{session_, tables[place_in(position, tables.size())]->id});
}

std::shared_ptr<TableDef> TableCollection::item(std::string_view name) const {
  const TablePointer table = session_->catalogue().find(name);
  if (!table) raise(error_number::item_not_found, name);
  return std::make_shared<TableObject>(TablePlace{session_, table->id});
}

void TableCollection::append(const std::shared_ptr<TableDef>& table) {
  const auto object = std::dynamic_pointer_cast<TableObject>(table);
  if (!object || object->appended()) raise(error_number::invalid_operation);
  object->append_to({session_, layout::create_table(*session_, object->definition())});
}

void TableCollection::remove(std::string_view name) {
  const TablePointer table = session_->catalogue().find(name);
  if (!table) raise(error_number::item_not_found, name);
  layout::drop_table(*session_, table->id);
}

}  // namespace engine::embedded
