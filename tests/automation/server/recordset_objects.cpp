#include "tests/automation/server/recordset_objects.h"

#include <regex>
#include <utility>

namespace test_server {
namespace {

using engine::DataType;
using engine::Value;

/// The type that each field's values have.
Variant variant_of(const Value& value, DataType type) {
  if (engine::is_null(value)) return Variant::null();
  switch (type) {
    case DataType::Boolean:
      return Variant::of_flag(std::get<bool>(value));
    case DataType::Byte:
      return Variant::of_byte(static_cast<std::uint8_t>(std::get<std::int32_t>(value)));
    case DataType::Integer:
      return Variant::of_short(static_cast<std::int16_t>(std::get<std::int32_t>(value)));
    case DataType::Long:
      return Variant::of_long(std::get<std::int32_t>(value));
    case DataType::Single:
      return Variant::of_single(std::get<float>(value));
    case DataType::Double:
      return Variant::of_double(std::get<double>(value));
    case DataType::Date:
      return Variant::of_date(std::get<engine::Date>(value).days);
    default:
      return Variant::of_text(std::get<std::string>(value));
  }
}

Value value_of(const VARIANT& value) {
  switch (V_VT(&value)) {
    case VT_NULL:
      return engine::Null{};
    case VT_BOOL:
      return flag_of(value);
    case VT_UI1:
      return std::int32_t{V_UI1(&value)};
    case VT_R4:
      return V_R4(&value);
    case VT_R8:
      return V_R8(&value);
    case VT_DATE:
      return engine::Date{V_DATE(&value)};
    case VT_BSTR:
      return text_of(value);
    default:
      return number_of(value);
  }
}

constexpr std::int32_t fixed_size = 1;

Variant value_of_field(const RowFieldObject& self) {
  const Value value = self.shared->rows->value(self.position);
  const DataType type = self.shared->rows->field_type(self.position);
  const auto field = self.shared->stored_field(self.name);
  if (!strict || engine::is_null(value) || type != DataType::Text || !field) return variant_of(value, type);
  std::string text = std::get<std::string>(value);
  const auto size = static_cast<std::size_t>(field->size());
  if ((field->attributes() & fixed_size) != 0 && text.size() < size) text.resize(size, ' ');
  return Variant::of_text(text);
}

void set_field(RowFieldObject& self, const VARIANT& value) {
  try {
    self.shared->rows->set_value(self.name, value_of(value));
  } catch (const support::RuntimeError& error) {
    if (!strict || error.number() != 3315) throw;
    self.shared->refused_empty_text = self.name;
  }
}

engine::Field& stored_field(const RowFieldObject& self, std::shared_ptr<engine::Field>& found) {
  found = self.shared->stored_field(self.name);
  if (!found) throw support::RuntimeError(3267, "Property can be set only when the Field is part of a table.");
  return *found;
}

template <auto method>
constexpr Member<RecordsetObject> row_method(const wchar_t* name) {
  return {name, [](RecordsetObject& self, const Arguments&) {
            ((*self.shared->rows).*method)();
            return Variant();
          }};
}

template <auto method>
constexpr Member<RecordsetObject> row_flag(const wchar_t* name) {
  return {name,
          [](RecordsetObject& self, const Arguments&) { return Variant::of_flag(((*self.shared->rows).*method)()); }};
}

}  // namespace

std::shared_ptr<engine::Field> Rows::stored_field(const std::string& name) const {
  std::smatch table;
  static const std::regex from(R"(\bFROM\s+\[?(\w+))", std::regex::icase);
  const std::string read = std::regex_search(source, table, from) ? table[1].str() : source;
  try {
    return database->table_defs().item(read)->fields().item(name);
  } catch (const support::RuntimeError&) {
    return nullptr;
  }
}

std::span<const Member<RecordsetObject>> RecordsetObject::members() {
  using R = engine::Recordset;
  using Self = RecordsetObject;
  static constexpr Member<Self> table[] = {
      row_flag<&R::bof>(L"BOF"),
      row_flag<&R::eof>(L"EOF"),
      row_flag<&R::updatable>(L"Updatable"),
      {L"RecordCount",
       [](Self& self, const Arguments&) { return Variant::of_long(self.shared->rows->record_count()); }},
      row_method<&R::move_first>(L"MoveFirst"),
      row_method<&R::move_last>(L"MoveLast"),
      row_method<&R::move_next>(L"MoveNext"),
      row_method<&R::move_previous>(L"MovePrevious"),
      row_method<&R::add_new>(L"AddNew"),
      row_method<&R::edit>(L"Edit"),
      {L"Update",
       [](Self& self, const Arguments&) {
         const std::string refused = std::exchange(self.shared->refused_empty_text, {});
         if (!refused.empty()) throw support::RuntimeError(3315, "Field '" + refused + "' cannot be empty.");
         self.shared->rows->update();
         return Variant();
       }},
      row_method<&R::cancel_update>(L"CancelUpdate"),
      row_method<&R::delete_row>(L"Delete"),
      row_method<&R::close>(L"Close"),
      {L"Fields", [](Self& self, const Arguments&) { return new_object<RowFieldsObject>(self.shared); }},
  };
  return table;
}

std::span<const Member<RowFieldsObject>> RowFieldsObject::members() {
  using Self = RowFieldsObject;
  static constexpr Member<Self> table[] = {
      {L"Count",
       [](Self& self, const Arguments&) {
         return Variant::of_short(static_cast<std::int16_t>(self.shared->rows->field_count()));
       }},
      {L"Item",
       [](Self& self, const Arguments& call) { return new_object<RowFieldObject>(self.shared, number_of(call[0])); }},
  };
  return table;
}

std::span<const Member<RowFieldObject>> RowFieldObject::members() {
  using Self = RowFieldObject;
  static constexpr Member<Self> table[] = {
      {L"Name", [](Self& self, const Arguments&) { return Variant::of_text(self.name); }},
      {L"Type",
       [](Self& self, const Arguments&) {
         return Variant::of_short(static_cast<std::int16_t>(self.shared->rows->field_type(self.position)));
       }},
      {L"Attributes",
       [](Self& self, const Arguments&) {
         std::shared_ptr<engine::Field> field;
         return Variant::of_long(stored_field(self, field).attributes());
       }},
      {L"AllowZeroLength",
       [](Self& self, const Arguments&) {
         std::shared_ptr<engine::Field> field;
         return Variant::of_flag(stored_field(self, field).allow_zero_length());
       }},
      {L"Value", [](Self& self, const Arguments&) { return value_of_field(self); }, set_field},
  };
  return table;
}

}  // namespace test_server
