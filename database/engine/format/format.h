// Format(value, picture) of the language runtime, in the user's locale. SQL and our own code both use this function to
// fill in pictures.
//
//   format(0.85, "0.0")                        "0,9"
//   format(Date{45358}, "dddd, d. mmmm yyyy")  "Donnerstag, 7. März 2024"
//   format(std::string("ab"), "@@@")           " ab"
//
// A picture is a name ("Fixed", "Short Date", …), or consists of placeholders for digits, parts of a date or
// characters. Between them, signs and what is quoted ("…") or escaped (\x) are printed. Any other letter is an error,
// and is never printed.
#pragma once

#include <string>
#include <string_view>

#include "database/engine/date.h"
#include "database/engine/value.h"

namespace engine {

/// Prints the value by the picture; an empty picture prints it as it is. Numbers are rounded as the user sees them,
/// halves away from zero. A text that is no number stays as it is under a picture of digits, and a text that is no date
/// under a picture of date parts. Null is "", unless the picture has a section for it. Raises 5 for a picture without a
/// meaning or of more than 255 bytes, 6 for a date outside the calendar, for infinity and for what is no number.
std::string format(const Value& value, std::string_view picture, WeekRule weeks = {});

}  // namespace engine
