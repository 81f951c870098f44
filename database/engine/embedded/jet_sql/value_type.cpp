#include "database/engine/embedded/jet_sql/value_type.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "database/engine/embedded/jet_sql/field_type.h"

namespace engine::embedded::jet_sql {

namespace {

struct KindRow {
  Kind kind;
  /// The field type by which a value of this kind is shown.
  DataType type;
  /// Bounds of a whole number.
  double low = 0;
  double high = 0;
};

// In the order of Kind.
constexpr KindRow kinds[] = {
    {Kind::Null, DataType::Text},
    {Kind::Boolean, DataType::Boolean, -1, 0},
    {Kind::Byte, DataType::Byte, 0, 255},
    {Kind::Integer, DataType::Integer, -32768, 32767},
    {Kind::Long, DataType::Long, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()},
    {Kind::Single, DataType::Single},
    {Kind::Double, DataType::Double},
    {Kind::Date, DataType::Date},
    {Kind::Text, DataType::Text},
    {Kind::Memo, DataType::Memo},
    {Kind::Variant, DataType::Text},
};
static_assert(std::ranges::is_sorted(kinds, {}, &KindRow::kind));
static_assert(std::size(kinds) == static_cast<std::size_t>(Kind::Variant) + 1);

const KindRow& row_of(Kind kind) noexcept { return kinds[static_cast<std::size_t>(kind)]; }

Kind kind_of(DataType type) noexcept {
  const auto* const row = std::ranges::find(std::begin(kinds) + 1, std::end(kinds), type, &KindRow::type);
  return row == std::end(kinds) ? Kind::Variant : row->kind;
}

Kind wider_number(const ValueType& left, const ValueType& right) noexcept {
  if (left.kind == Kind::Date || right.kind == Kind::Date) return Kind::Date;
  const Kind wider = std::max(left.kind, right.kind);
  const Kind narrower = std::min(left.kind, right.kind);
  if (wider == Kind::Single && narrower == Kind::Long) return Kind::Double;
  // -1 does not fit into a Byte.
  if (wider == Kind::Byte && narrower == Kind::Boolean) return Kind::Integer;
  return wider;
}

}  // namespace

ValueType type_of_kind(Kind kind, std::int32_t size) noexcept {
  ValueType type;
  type.kind = kind;
  type.size = size;
  type.low = row_of(kind).low;
  type.high = row_of(kind).high;
  return type;
}

ValueType type_of_field(const FieldDefinition& field) noexcept {
  // Even a required field may be Null: on the Null side of an outer join, and in rows that are older than the field.
  return type_of_kind(kind_of(field.type), field.type == DataType::Text ? field.size : 0);
}

ValueType type_of_whole(double low, double high) noexcept {
  for (const Kind kind : {Kind::Integer, Kind::Long}) {
    if (low < row_of(kind).low || high > row_of(kind).high) continue;
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
  } else {
    common.kind = Kind::Variant;
  }
  if (common.is_whole()) {
    common.low = std::min(left.low, right.low);
    common.high = std::max(left.high, right.high);
  }
  return common.with_null(nullable);
}

DataType data_type_of(const ValueType& type) noexcept { return row_of(type.kind).type; }

std::int32_t field_size_of(const ValueType& type) noexcept {
  const DataType data_type = data_type_of(type);
  if (data_type != DataType::Text) return find_field_type(data_type)->size;
  return type.size > 0 && type.size < longest_text ? type.size : longest_text;
}

}  // namespace engine::embedded::jet_sql
