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
    // The recordset was closed together with its database.
  }
}

void AutomationRecordset::close() {
  if (!object_) return;
  const Object closing = std::exchange(object_, Object());
  columns_.reset();
  closing.call(L"Close");
}

const Object& AutomationRecordset::open() const {
  if (!object_) raise(error_number::object_invalid);
  return object_;
}

AutomationRecordset::Column AutomationRecordset::column_of(Object field) {
  constexpr std::int32_t fixed_size = 1;
  Column column{std::move(field), {}, DataType::Text};
  column.name = column.field.text(L"Name");
  column.type = static_cast<DataType>(column.field.number(L"Type"));
  try {
    if (column.type == DataType::Text || column.type == DataType::Memo) {
      column.is_padded = column.type == DataType::Text && (column.field.number(L"Attributes") & fixed_size) != 0;
      column.takes_empty_text = column.field.flag(L"AllowZeroLength");
    }
  } catch (const support::RuntimeError&) {
    // A column that a query computes has no such properties, and nothing is stored in it.
  }
  return column;
}

const std::vector<AutomationRecordset::Column>& AutomationRecordset::columns() const {
  if (!columns_) {
    const Object fields = open().object(Kind::RecordsetFields, L"Fields");
    const std::int32_t count = fields.number(L"Count");
    std::vector<Column> found;
    for (std::int32_t position = 0; position < count; ++position) {
      found.push_back(column_of(fields.object(Kind::RecordsetField, L"Item", support::Variant::of_long(position))));
    }
    columns_ = std::move(found);
  }
  return *columns_;
}

const AutomationRecordset::Column& AutomationRecordset::column(std::int32_t position) const {
  const auto& known = columns();
  if (position < 0 || static_cast<std::size_t>(position) >= known.size())
    raise(error_number::item_not_found, std::to_string(position));
  return known[static_cast<std::size_t>(position)];
}

const AutomationRecordset::Column& AutomationRecordset::column(std::string_view name) const {
  const auto& known = columns();
  const auto found = std::ranges::find_if(
      known, [name](const Column& column) { return support::equal_ignoring_case(column.name, name); });
  if (found == known.end()) raise(error_number::item_not_found, name);
  return *found;
}

Value AutomationRecordset::value_of(const Column& column) {
  Value value = to_value(column.field.call(L"Value"));
  if (auto* const text = std::get_if<std::string>(&value); text != nullptr && column.is_padded) {
    text->erase(text->find_last_not_of(' ') + 1);
  }
  return value;
}

Value AutomationRecordset::value(std::int32_t position) const { return value_of(column(position)); }

Value AutomationRecordset::value(std::string_view field) const { return value_of(column(field)); }

void AutomationRecordset::set_value(std::string_view field, const Value& value) {
  const Column& target = column(field);
  // The engine may refuse the value only at Update, and then it refuses the whole row.
  const auto* const text = std::get_if<std::string>(&value);
  if (text != nullptr && text->empty() && !target.takes_empty_text) raise(error_number::zero_length, target.name);
  target.field.put(L"Value", to_variant(value, target.type));
}

}  // namespace engine::automation
