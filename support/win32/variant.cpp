#include "support/win32/variant.h"

#include <utility>

#include "support/error.h"
#include "support/win32/wide.h"

namespace support {

namespace {

VARIANT of_type(VARTYPE type) noexcept {
  VARIANT value;
  VariantInit(&value);
  V_VT(&value) = type;
  return value;
}

std::string narrow_text(BSTR text) {
  return text == nullptr ? std::string() : narrow(std::wstring_view(text, SysStringLen(text)));
}

}  // namespace

Variant Variant::null() noexcept { return Variant(of_type(VT_NULL)); }

Variant Variant::of_flag(bool flag) noexcept {
  VARIANT value = of_type(VT_BOOL);
  V_BOOL(&value) = flag ? VARIANT_TRUE : VARIANT_FALSE;
  return Variant(value);
}

Variant Variant::of_byte(std::uint8_t number) noexcept {
  VARIANT value = of_type(VT_UI1);
  V_UI1(&value) = number;
  return Variant(value);
}

Variant Variant::of_short(std::int16_t number) noexcept {
  VARIANT value = of_type(VT_I2);
  V_I2(&value) = number;
  return Variant(value);
}

Variant Variant::of_long(std::int32_t number) noexcept {
  VARIANT value = of_type(VT_I4);
  V_I4(&value) = number;
  return Variant(value);
}

Variant Variant::of_single(float number) noexcept {
  VARIANT value = of_type(VT_R4);
  V_R4(&value) = number;
  return Variant(value);
}

Variant Variant::of_double(double number) noexcept {
  VARIANT value = of_type(VT_R8);
  V_R8(&value) = number;
  return Variant(value);
}

Variant Variant::of_date(double days) noexcept {
  VARIANT value = of_type(VT_DATE);
  V_DATE(&value) = days;
  return Variant(value);
}

Variant Variant::of_text(std::string_view text) {
  const std::wstring units = wide(text);
  VARIANT value = of_type(VT_BSTR);
  V_BSTR(&value) = SysAllocStringLen(units.data(), static_cast<UINT>(units.size()));
  if (V_BSTR(&value) == nullptr) throw RuntimeError(error_number::out_of_memory, "Out of memory");
  return Variant(value);
}

Variant Variant::of_object(IDispatch* object) noexcept {
  VARIANT value = of_type(VT_DISPATCH);
  V_DISPATCH(&value) = object;
  if (object != nullptr) object->AddRef();
  return Variant(value);
}

VARIANT* Variant::receive() noexcept {
  VariantClear(&value_);
  return &value_;
}

VARIANT Variant::release() noexcept { return std::exchange(value_, of_type(VT_EMPTY)); }

std::string Variant::text() const {
  if (type() != VT_BSTR) throw RuntimeError(error_number::type_mismatch, "Type mismatch");
  return narrow_text(V_BSTR(&value_));
}

Variant Variant::converted(VARTYPE target) const {
  Variant result;
  if (type() == VT_NULL || type() == VT_EMPTY) return result;
  VARIANT source = value_;  // a copy that owns nothing, because the call does not take a constant
  const HRESULT outcome = VariantChangeType(result.receive(), &source, 0, target);
  if (outcome == DISP_E_OVERFLOW) throw RuntimeError(error_number::overflow, "Overflow");
  if (FAILED(outcome)) throw RuntimeError(error_number::type_mismatch, "Type mismatch");
  return result;
}

std::string Variant::to_text() const {
  const Variant result = converted(VT_BSTR);
  return result.type() == VT_BSTR ? result.text() : std::string();
}

// An empty Variant is all zeros.
std::int32_t Variant::to_long() const { return V_I4(&converted(VT_I4).get()); }

double Variant::to_double() const { return V_R8(&converted(VT_R8).get()); }

bool Variant::to_flag() const { return V_BOOL(&converted(VT_BOOL).get()) != VARIANT_FALSE; }

}  // namespace support
