#include "database/engine/automation/variant_value.h"

#include <limits>

namespace engine::automation {
namespace {

using support::Variant;

template <typename Integer>
bool fits(std::int32_t number) {
  return number >= std::numeric_limits<Integer>::min() && number <= std::numeric_limits<Integer>::max();
}

struct ToVariant {
  DataType type;

  Variant operator()(Null) const { return Variant::null(); }
  Variant operator()(bool flag) const { return Variant::of_flag(flag); }
  Variant operator()(std::int32_t number) const {
    if (type == DataType::Byte && fits<std::uint8_t>(number)) {
      return Variant::of_byte(static_cast<std::uint8_t>(number));
    }
    if (type == DataType::Integer && fits<std::int16_t>(number)) {
      return Variant::of_short(static_cast<std::int16_t>(number));
    }
    return Variant::of_long(number);
  }
  Variant operator()(float number) const { return Variant::of_single(number); }
  Variant operator()(double number) const { return Variant::of_double(number); }
  Variant operator()(Date date) const { return Variant::of_date(date.days); }
  Variant operator()(const std::string& text) const { return Variant::of_text(text); }
};

}  // namespace

Variant to_variant(const Value& value, DataType type) { return std::visit(ToVariant{type}, value); }

Value to_value(const Variant& variant) {
  switch (variant.type()) {
    case VT_EMPTY:
    case VT_NULL:
      return Null{};
    case VT_BOOL:
      return variant.to_flag();
    case VT_UI1:
    case VT_I2:
    case VT_I4:
      return variant.to_long();
    case VT_R4:
      return V_R4(&variant.get());
    case VT_R8:
    case VT_CY:
    case VT_DECIMAL:
      return variant.to_double();
    case VT_DATE:
      return Date{V_DATE(&variant.get())};
    default:
      return variant.text();
  }
}

}  // namespace engine::automation
