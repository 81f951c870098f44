#include "database/engine/embedded/jet_sql/value_type.h"

#include <limits>

namespace engine::embedded::jet_sql {

namespace {

constexpr std::int32_t longest_text = 255;

struct Range {
  double low;
  double high;
};

Range range_of(Kind kind) noexcept {
  switch (kind) {
    case Kind::Boolean:
      return {-1, 0};
    case Kind::Byte:
      return {0, 255};
    case Kind::Integer:
      return {-32768, 32767};
    case Kind::Long:
      return {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
    default:
      return {0, 0};
  }
}

Kind kind_of(DataType type) noexcept {
  switch (type) {
    case DataType::Boolean:
      return Kind::Boolean;
    case DataType::Byte:
      return Kind::Byte;
    case DataType::Integer:
      return Kind::Integer;
    case DataType::Long:
      return Kind::Long;
    case DataType::Single:
      return Kind::Single;
    case DataType::Double:
      return Kind::Double;
    case DataType::Date:
      return Kind::Date;
    case DataType::Text:
      return Kind::Text;
    case DataType::Memo:
      return Kind::Memo;
  }
  return Kind::Variant;
}

Kind wider_number(const ValueType& left, const ValueType& right) noexcept {
  if (left.kind == Kind::Date || right.kind == Kind::Date) return Kind::Date;
  const Kind wider = std::max(left.kind, right.kind);
  const Kind narrower = std::min(left.kind, right.kind);
  if (wider == Kind::Single && narrower == Kind::Long) return Kind::Double;
  // -1 does not fit the Byte.
  if (wider == Kind::Byte && narrower == Kind::Boolean) return Kind::Integer;
  return wider;
}

}  // namespace

ValueType type_of_kind(Kind kind, std::int32_t size) noexcept {
  const Range range = range_of(kind);
  ValueType type;
  type.kind = kind;
  type.size = size;
  type.low = range.low;
  type.high = range.high;
  return type;
}

ValueType type_of_field(const FieldDefinition& field) noexcept {
  ValueType type = type_of_kind(kind_of(field.type), field.type == DataType::Text ? field.size : 0);
  type.nullable = !field.required && !field.auto_increment();
  type.may_be_empty = field.allow_zero_length;
  return type;
}

ValueType type_of_whole(double low, double high) noexcept {
  for (const Kind kind : {Kind::Integer, Kind::Long}) {
    const Range range = range_of(kind);
    if (low < range.low || high > range.high) continue;
    ValueType type;
    type.kind = kind;
    type.low = low;
    type.high = high;
    return type;
  }
  return type_of_kind(Kind::Double);
}

ValueType common_type(const ValueType& left, const ValueType& right) noexcept {
  const bool nullable = left.nullable || right.nullable;
  if (left.kind == Kind::Null) return right.with_null(true);
  if (right.kind == Kind::Null) return left.with_null(true);
  ValueType common;
  if (left.is_number() && right.is_number()) {
    common = type_of_kind(wider_number(left, right));
    common.in_calendar = left.kind == right.kind && left.in_calendar && right.in_calendar;
  } else if (left.is_text() && right.is_text()) {
    common.kind = std::max(left.kind, right.kind);
    common.size = left.size == 0 || right.size == 0 ? 0 : std::max(left.size, right.size);
    common.may_be_empty = left.may_be_empty || right.may_be_empty;
  } else {
    common.kind = Kind::Variant;
  }
  if (common.is_whole()) {
    common.low = std::min(left.low, right.low);
    common.high = std::max(left.high, right.high);
  }
  return common.with_null(nullable);
}

DataType data_type_of(const ValueType& type) noexcept {
  switch (type.kind) {
    case Kind::Boolean:
      return DataType::Boolean;
    case Kind::Byte:
      return DataType::Byte;
    case Kind::Integer:
      return DataType::Integer;
    case Kind::Long:
      return DataType::Long;
    case Kind::Single:
      return DataType::Single;
    case Kind::Double:
      return DataType::Double;
    case Kind::Date:
      return DataType::Date;
    case Kind::Memo:
      return DataType::Memo;
    case Kind::Text:
    case Kind::Null:
    case Kind::Variant:
      return DataType::Text;
  }
  return DataType::Text;
}

std::int32_t field_size_of(const ValueType& type) noexcept {
  const DataType data_type = data_type_of(type);
  if (data_type != DataType::Text) return storage_size(data_type);
  return type.size > 0 && type.size < longest_text ? type.size : longest_text;
}

std::int32_t storage_size(DataType type) noexcept {
  switch (type) {
    case DataType::Boolean:
    case DataType::Byte:
      return 1;
    case DataType::Integer:
      return 2;
    case DataType::Long:
    case DataType::Single:
      return 4;
    case DataType::Double:
    case DataType::Date:
      return 8;
    case DataType::Text:
    case DataType::Memo:
      return 0;
  }
  return 0;
}

}  // namespace engine::embedded::jet_sql
