#include "database/engine/embedded/jet_sql/expression_type.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <variant>

#include "support/encoding.h"

namespace engine::embedded::jet_sql {
namespace {

ValueType concatenated(const ValueType& left, const ValueType& right, bool nullable) {
  ValueType type = type_of_kind(left.kind == Kind::Memo || right.kind == Kind::Memo ? Kind::Memo : Kind::Text);
  const bool sized = left.is_text() && right.is_text() && left.size > 0 && right.size > 0;
  if (type.kind == Kind::Text && sized && left.size + right.size <= longest_text) type.size = left.size + right.size;
  return type.with_null(nullable);
}

/// A whole number where both are whole and the bounds fit; Single where one is a Single and a Single holds the other;
/// else Double.
ValueType number_type(BinaryOperator op, const ValueType& left, const ValueType& right) {
  if (left.is_whole() && right.is_whole()) {
    if (op == BinaryOperator::Add) return type_of_whole(left.low + right.low, left.high + right.high);
    if (op == BinaryOperator::Subtract) return type_of_whole(left.low - right.high, left.high - right.low);
    const double products[] = {left.low * right.low, left.low * right.high, left.high * right.low,
                               left.high * right.high};
    return type_of_whole(*std::min_element(std::begin(products), std::end(products)),
                         *std::max_element(std::begin(products), std::end(products)));
  }
  const auto fits_single = [](const ValueType& type) { return type.is_whole() ? type.kind != Kind::Long : true; };
  const bool single = left.kind == Kind::Single || right.kind == Kind::Single;
  const bool wider =
      left.kind > Kind::Single || right.kind > Kind::Single || left.kind == Kind::Null || right.kind == Kind::Null;
  return type_of_kind(single && !wider && fits_single(left) && fits_single(right) ? Kind::Single : Kind::Double);
}

ValueType add_type(BinaryOperator op, const ValueType& left, const ValueType& right) {
  const bool dates = left.kind == Kind::Date || right.kind == Kind::Date;
  if (!dates) return number_type(op, left, right);
  const bool difference = op == BinaryOperator::Subtract && right.kind == Kind::Date;
  ValueType type = type_of_kind(difference ? Kind::Double : Kind::Date);
  type.in_calendar = false;
  return type;
}

}  // namespace

ValueType boolean_type(bool nullable) { return type_of_kind(Kind::Boolean).with_null(nullable); }

ValueType type_of_literal(const Literal& literal) {
  return std::visit(Overloaded{[](std::monostate) { return ValueType{}; }, [](bool) { return boolean_type(false); },
                               [](std::int64_t whole) {
                                 const auto number = static_cast<double>(whole);
                                 return type_of_whole(number, number).with_null(false);
                               },
                               [](double) { return type_of_kind(Kind::Double).with_null(false); },
                               [](DateLiteral) { return type_of_kind(Kind::Date).with_null(false); },
                               [](const std::string& text) {
                                 const std::size_t size = support::character_count(text);
                                 ValueType type = type_of_kind(size > longest_text ? Kind::Memo : Kind::Text);
                                 type.size = static_cast<std::int32_t>(std::min<std::size_t>(size, 1 << 20));
                                 return type.with_null(false);
                               }},
                    literal.value);
}

ValueType type_of_binary(BinaryOperator op, const ValueType& left, const ValueType& right) {
  const bool nullable = left.nullable || right.nullable;
  if (is_logical(op) || is_comparison(op)) return boolean_type(nullable);
  switch (op) {
    case BinaryOperator::Concatenate:
      return concatenated(left, right, left.nullable && right.nullable);
    case BinaryOperator::Add: {
      const bool text = left.is_text() || right.is_text();
      const bool number = left.is_number() || right.is_number();
      if (text && !number && left.kind != Kind::Variant && right.kind != Kind::Variant) {
        return concatenated(left, right, nullable);
      }
      if (left.kind == Kind::Variant || right.kind == Kind::Variant) return type_of_kind(Kind::Variant);
      return add_type(op, left, right).with_null(nullable);
    }
    case BinaryOperator::Subtract:
      return add_type(op, left, right).with_null(nullable);
    case BinaryOperator::Multiply:
      return number_type(op, left, right).with_null(nullable);
    case BinaryOperator::WholeDivide:
    case BinaryOperator::Modulo:
      return type_of_kind(Kind::Long).with_null(nullable);
    default:
      return type_of_kind(Kind::Double).with_null(nullable);
  }
}

ValueType type_of_negative(const ValueType& type) {
  if (type.is_whole()) return type_of_whole(-type.high, -type.low).with_null(type.nullable);
  const Kind kind = type.kind == Kind::Single || type.kind == Kind::Null ? type.kind : Kind::Double;
  return type_of_kind(kind).with_null(type.nullable);
}

}  // namespace engine::embedded::jet_sql
