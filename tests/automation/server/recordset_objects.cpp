#include "tests/automation/server/recordset_objects.h"

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

template <auto method>
constexpr Member<RecordsetObject> row_method(const wchar_t* name) {
  return {name, [](RecordsetObject& self, const Arguments&) {
            ((*self.rows).*method)();
            return Variant();
          }};
}

template <auto method>
constexpr Member<RecordsetObject> row_flag(const wchar_t* name) {
  return {name, [](RecordsetObject& self, const Arguments&) { return Variant::of_flag(((*self.rows).*method)()); }};
}

}  // namespace

std::span<const Member<RecordsetObject>> RecordsetObject::members() {
  using R = engine::Recordset;
  using Self = RecordsetObject;
  static constexpr Member<Self> table[] = {
      row_flag<&R::bof>(L"BOF"),
      row_flag<&R::eof>(L"EOF"),
      row_flag<&R::updatable>(L"Updatable"),
      {L"RecordCount", [](Self& self, const Arguments&) { return Variant::of_long(self.rows->record_count()); }},
      row_method<&R::move_first>(L"MoveFirst"),
      row_method<&R::move_last>(L"MoveLast"),
      row_method<&R::move_next>(L"MoveNext"),
      row_method<&R::move_previous>(L"MovePrevious"),
      row_method<&R::add_new>(L"AddNew"),
      row_method<&R::edit>(L"Edit"),
      row_method<&R::update>(L"Update"),
      row_method<&R::cancel_update>(L"CancelUpdate"),
      row_method<&R::delete_row>(L"Delete"),
      row_method<&R::close>(L"Close"),
      {L"Fields", [](Self& self, const Arguments&) { return new_object<RowFieldsObject>(self.rows); }},
  };
  return table;
}

std::span<const Member<RowFieldsObject>> RowFieldsObject::members() {
  using Self = RowFieldsObject;
  static constexpr Member<Self> table[] = {
      {L"Count",
       [](Self& self, const Arguments&) {
         return Variant::of_short(static_cast<std::int16_t>(self.rows->field_count()));
       }},
      {L"Item",
       [](Self& self, const Arguments& call) { return new_object<RowFieldObject>(self.rows, number_of(call[0])); }},
  };
  return table;
}

std::span<const Member<RowFieldObject>> RowFieldObject::members() {
  using Self = RowFieldObject;
  static constexpr Member<Self> table[] = {
      {L"Name", [](Self& self, const Arguments&) { return Variant::of_text(self.name); }},
      {L"Type",
       [](Self& self, const Arguments&) {
         return Variant::of_short(static_cast<std::int16_t>(self.rows->field_type(self.position)));
       }},
      {L"Value",
       [](Self& self, const Arguments&) {
         return variant_of(self.rows->value(self.position), self.rows->field_type(self.position));
       },
       [](Self& self, const VARIANT& value) { self.rows->set_value(self.name, value_of(value)); }},
  };
  return table;
}

}  // namespace test_server
