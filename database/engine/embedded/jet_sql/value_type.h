// What the compiler knows of an expression's value before any row is read: its kind, how large it can get, whether it
// can be Null. This shows which conversions and checks are needless; those are left out.
#pragma once

#include <cstdint>

#include "database/engine/embedded/jet_sql/catalogue.h"

namespace engine::embedded::jet_sql {

enum class Kind {
  Null,
  Boolean,
  Byte,
  Integer,
  Long,
  Single,
  Double,
  Date,
  Text,
  Memo,
  /// The kind is known only when the row is read.
  Variant,
};

struct ValueType {
  Kind kind = Kind::Null;
  /// The largest number of characters of a Text; 0 where that is not known.
  std::int32_t size = 0;
  bool nullable = true;
  /// True for a date that surely lies in the calendar. Sums of dates may lie outside.
  bool in_calendar = true;
  /// Bounds of a whole number.
  double low = 0;
  double high = 0;

  bool is_whole() const noexcept { return kind >= Kind::Boolean && kind <= Kind::Long; }
  bool is_number() const noexcept { return kind >= Kind::Boolean && kind <= Kind::Date; }
  bool is_text() const noexcept { return kind == Kind::Text || kind == Kind::Memo; }
  ValueType with_null(bool may_be_null) const noexcept {
    ValueType type = *this;
    type.nullable = may_be_null;
    return type;
  }
};

/// The bounds of a whole number are those of its kind.
ValueType type_of_kind(Kind kind, std::int32_t size = 0) noexcept;
ValueType type_of_field(const FieldDefinition& field) noexcept;
/// The smallest of the kinds Integer, Long and Double that holds every whole number within the bounds.
ValueType type_of_whole(double low, double high) noexcept;
/// The kind that holds values of both types: the wider number, Date beside numbers, Memo beside Text. Variant for a
/// text beside a number.
ValueType common_type(const ValueType& left, const ValueType& right) noexcept;

/// The field type by which a result of this type is shown. Null and Variant are shown as Text.
DataType data_type_of(const ValueType& type) noexcept;
/// The size of a field of this type, counted as in FieldDefinition.
std::int32_t field_size_of(const ValueType& type) noexcept;

}  // namespace engine::embedded::jet_sql
