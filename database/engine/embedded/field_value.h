// Values on their way between a program and a field. On the way in they are converted to the field's type and checked;
// on the way out they have the column's type.
#pragma once

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/value.h"

namespace engine::embedded {

/// Converts the value to what a field of this type reads. Raises 3421 where it cannot be converted or is out of range,
/// 3163 where a text is too long, 3315 where it is empty and the field takes no empty text. Null stays Null, but
/// becomes No in a Yes/No.
Value value_for_field(const FieldDefinition& field, const Value& value);

/// A stored number as a column of this type reads it; Double where the type cannot hold it.
Value value_of_number(double number, DataType type);

/// A column of the statement's row as a column of this type reads it. A value that the type cannot hold stays as it is.
Value column_value(const PreparedStatement& row, int column, DataType type);

}  // namespace engine::embedded
