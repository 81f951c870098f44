// A value as a text that reads back as the same value, bit for bit, whatever the locale is. Also the error numbers of
// values and files that cannot be imported or exported.
#pragma once

#include <string>
#include <string_view>

#include "database/engine/engine.h"

namespace transfer {

inline constexpr auto unknown_format = support::error_number::unknown_format;
inline constexpr auto cannot_convert = support::error_number::conversion;

/// Yes/No is -1 or 0, a number its shortest text with ".", a date what date_text() gives, a text itself. Precondition:
/// the value is not Null.
std::string text_of(const engine::Value& value);
void append_text(std::string& text, const engine::Value& value);

/// ISO 8601: "2024-03-01T12:30:00", with a fraction of a second where there is one. A moment that this form cannot
/// express exactly is "days:" and the number of days since 1899-12-30.
std::string date_text(engine::Date date);

/// The value of a field of this type, from its text. Raises 3421 where the text is no such value, and where the field
/// would have to round it.
engine::Value value_of_text(engine::DataType type, std::string_view text);

}  // namespace transfer
