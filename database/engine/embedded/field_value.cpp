#include "database/engine/embedded/field_value.h"

#include <cmath>
#include <limits>

#include "database/engine/engine_error.h"

namespace engine::embedded {
namespace {

double finite(double number) {
  if (!std::isfinite(number)) raise(error_number::conversion);
  return number;
}

Value converted(const FieldDefinition& field, const Value& value) {
  switch (field.type) {
    case DataType::Boolean:
      return to_bool(value);
    case DataType::Byte: {
      const std::int32_t number = to_int32(value);
      if (number < 0 || number > std::numeric_limits<std::uint8_t>::max()) raise(error_number::conversion, field.name);
      return number;
    }
    case DataType::Integer:
      return std::int32_t{to_int16(value)};
    case DataType::Long:
      return to_int32(value);
    case DataType::Single:
      return static_cast<float>(finite(static_cast<double>(to_single(value))));
    case DataType::Double:
      return finite(to_double(value));
    case DataType::Date:
      return to_date(value);
    case DataType::Text:
    case DataType::Memo:
      return to_text(value);
  }
  raise(error_number::invalid_data_type);
}

bool is_whole_type(DataType type) {
  return type == DataType::Byte || type == DataType::Integer || type == DataType::Long;
}

}  // namespace

Value value_for_field(const FieldDefinition& field, const Value& value) {
  // A Yes/No without a value is No.
  if (is_null(value)) return field.type == DataType::Boolean ? Value{false} : value;
  Value result;
  try {
    result = converted(field, value);
  } catch (const support::RuntimeError&) {
    raise(error_number::conversion, field.name);
  }
  if (const auto* text = std::get_if<std::string>(&result)) {
    if (!support::is_utf8(*text)) raise(error_number::conversion, field.name);
    if (text->empty() && !field.allow_zero_length) raise(error_number::zero_length, field.name);
    if (field.type == DataType::Text && support::character_count(*text) > static_cast<std::size_t>(field.size)) {
      raise(error_number::field_too_small, field.name);
    }
  }
  return result;
}

Value value_of_number(double number, DataType type) {
  if (type == DataType::Boolean) return number != 0;
  if (type == DataType::Single) return static_cast<float>(number);
  if (type == DataType::Date && in_calendar(number)) return Date{number};
  const bool fits = std::trunc(number) == number && number >= std::numeric_limits<std::int32_t>::min() &&
                    number <= std::numeric_limits<std::int32_t>::max();
  if (is_whole_type(type) && fits) return static_cast<std::int32_t>(number);
  return number;
}

Value column_value(const PreparedStatement& row, int column, DataType type) {
  switch (row.storage_class(column)) {
    case SQLITE_NULL:
      return Null{};
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
      if (is_text(type)) return std::string(row.text(column));
      return value_of_number(row.number(column), type);
    default:
      return std::string(row.text(column));
  }
}

}  // namespace engine::embedded
