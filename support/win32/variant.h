// A VARIANT that frees what it owns. It is made from our values and read as them.
#pragma once

#include <windows.h>
// Automation needs windows.h before it.
#include <oleauto.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace support {

/// Empty unless made by one of the named constructors. Texts are UTF-8 outside, BSTR inside.
class Variant {
 public:
  Variant() noexcept { VariantInit(&value_); }
  /// Takes over what the value owns.
  explicit Variant(const VARIANT& value) noexcept : value_(value) {}
  Variant(Variant&& other) noexcept : value_(other.release()) {}
  Variant(const Variant&) = delete;
  Variant& operator=(Variant) = delete;
  ~Variant() { VariantClear(&value_); }

  static Variant null() noexcept;
  static Variant of_flag(bool flag) noexcept;
  static Variant of_byte(std::uint8_t number) noexcept;
  static Variant of_short(std::int16_t number) noexcept;
  static Variant of_long(std::int32_t number) noexcept;
  static Variant of_single(float number) noexcept;
  static Variant of_double(double number) noexcept;
  /// Days since 1899-12-30.
  static Variant of_date(double days) noexcept;
  /// Raises 7 if there is no memory for the text.
  static Variant of_text(std::string_view text);
  /// Shares the object; null is an empty reference.
  static Variant of_object(IDispatch* object) noexcept;

  VARTYPE type() const noexcept { return V_VT(&value_); }
  const VARIANT& get() const noexcept { return value_; }
  /// The place where a call puts its result; the previous value is freed.
  VARIANT* receive() noexcept;
  /// Hands the value over; from now on, the caller frees it.
  VARIANT release() noexcept;

  /// The text of a BSTR; raises 13 (type mismatch) for any other type.
  std::string text() const;
  // Converted as the automation runtime does it; raises 13 or 6 (overflow) if that is impossible. Null and Empty give
  // "", 0 or false.
  std::string to_text() const;
  std::int32_t to_long() const;
  double to_double() const;
  bool to_flag() const;

 private:
  Variant converted(VARTYPE target) const;

  VARIANT value_{};
};

}  // namespace support
