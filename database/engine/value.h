// A value as a field of the database holds it, and the conversions of the language runtime between kinds.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "database/engine/date.h"

namespace engine {

struct Null {
  friend bool operator==(const Null&, const Null&) = default;
};

/// What is read from a field: bool for Yes/No; int32 for Byte, Integer and Long; float for Single; double for Double;
/// Date; UTF-8 text for Text and Memo.
using Value = std::variant<Null, bool, std::int32_t, float, double, Date, std::string>;

inline bool is_null(const Value& value) noexcept { return std::holds_alternative<Null>(value); }
/// The number in a Single or a Double; nothing for other values.
std::optional<double> floating_number(const Value& value) noexcept;
/// True for -0, which our tables store as 0.
bool is_negative_zero(const Value& value) noexcept;

// Conversions as an assignment to a typed variable makes them. Each raises 94 (invalid use of Null) for Null, 13 (type
// mismatch) for a text that is no number or date in the user's locale, 6 (overflow) beyond the range. Fractions round
// to the nearest whole number, halves to even. Yes is -1.
std::int16_t to_int16(const Value& value);
std::int32_t to_int32(const Value& value);
float to_single(const Value& value);
double to_double(const Value& value);
/// Numbers become their shortest text in the user's locale, dates the locale's short form, Yes/No "True" and "False".
std::string to_text(const Value& value);
/// A number other than 0 is true. The texts "True" and "False" are accepted as well.
bool to_bool(const Value& value);
Date to_date(const Value& value);

}  // namespace engine
