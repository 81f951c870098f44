// Finds the type of an expression from the types of its parts.
#pragma once

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/embedded/jet_sql/value_type.h"

namespace engine::embedded::jet_sql {

ValueType boolean_type(bool nullable);
/// A whole number has the smallest kind that holds it. A text of more than 255 characters is a memo.
ValueType type_of_literal(const Literal& literal);
/// The operands may be of any kind: the caller checks whether they fit each other.
ValueType type_of_binary(BinaryOperator op, const ValueType& left, const ValueType& right);
ValueType type_of_negative(const ValueType& type);

}  // namespace engine::embedded::jet_sql
