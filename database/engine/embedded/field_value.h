// Values on their way between a program and a field: converted to the field's type and checked on the way in, told by
// the column's type on the way out.
#pragma once

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/value.h"

namespace engine::embedded {

/// The value in the form in which fields of this type read. 3421 where it cannot be converted or is out of range, 3163
/// where a text is too long, 3315 where it is empty and the field takes none. Null stays Null, but is
/// No in a Yes/No.
Value value_for_field(const FieldDefinition& field, const Value& value);

/// A stored number, as a column of this type reads; Double where the type cannot hold it.
Value value_of_number(double number, DataType type);

/// A column of the statement's row, as a column of this type reads. A value that the type cannot hold is told as it is.
Value column_value(const PreparedStatement& row, int column, DataType type);

}  // namespace engine::embedded
