#include "database/engine/automation/automation_recordset.h"

#include <algorithm>

#include "database/engine/automation/variant_value.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::automation {

AutomationRecordset::~AutomationRecordset() {
  try {
    close();
  } catch (const support::RuntimeError&) {
    // Its database was closed before it, and it with it.
  }
}

void AutomationRecordset::close() {
  if (!object_) return;
  const Object closing = std::exchange(object_, Object());
  columns_.reset();
  closing.call(L"Close");
}

const Object& AutomationRecordset::open() const {
  if (!object_) raise(3420);
  return object_;
}

const std::vector<AutomationRecordset::Column>& AutomationRecordset::columns() const {
  if (!columns_) {
    const Object fields = open().object(Kind::RecordsetFields, L"Fields");
    const std::int32_t count = fields.number(L"Count");
    std::vector<Column> found;
    for (std::int32_t position = 0; position < count; ++position) {
      Object field = fields.object(Kind::RecordsetField, L"Item", support::Variant::of_long(position));
      std::string name = field.text(L"Name");
      const auto type = static_cast<DataType>(field.number(L"Type"));
      found.push_back({std::move(field), std::move(name), type});
    }
    columns_ = std::move(found);
  }
  return *columns_;
}

const AutomationRecordset::Column& AutomationRecordset::column(std::int32_t position) const {
  const auto& known = columns();
  if (position < 0 || static_cast<std::size_t>(position) >= known.size()) raise(3265, std::to_string(position));
  return known[static_cast<std::size_t>(position)];
}

const AutomationRecordset::Column& AutomationRecordset::column(std::string_view name) const {
  const auto& known = columns();
  const auto found = std::ranges::find_if(
      known, [name](const Column& column) { return support::equal_ignoring_case(column.name, name); });
  if (found == known.end()) raise(3265, name);
  return *found;
}

Value AutomationRecordset::value(std::int32_t position) const {
  return to_value(column(position).field.call(L"Value"));
}

Value AutomationRecordset::value(std::string_view field) const { return to_value(column(field).field.call(L"Value")); }

void AutomationRecordset::set_value(std::string_view field, const Value& value) {
  const Column& target = column(field);
  target.field.put(L"Value", to_variant(value, target.type));
}

}  // namespace engine::automation
