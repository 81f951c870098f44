// Format(value, picture) of the language runtime, in the user's locale: the one place that fills in pictures, for SQL
// and for code alike.
//
//   format(0.85, "0.0")                        "0,9"
//   format(Date{45358}, "dddd, d. mmmm yyyy")  "Donnerstag, 7. März 2024"
//   format(std::string("ab"), "@@@")           " ab"
//
// A picture is a name ("Fixed", "Short Date", …), or made of placeholders for digits, parts of a date or characters.
// Anything else of it is printed where it is a sign, quoted ("…") or escaped (\x); a letter that is none of these is an
// error, never printed.
#pragma once

#include <string>
#include <string_view>

#include "database/engine/date.h"
#include "database/engine/value.h"

namespace engine {

/// The value by the picture; an empty picture prints it as it is. Numbers are rounded as the user sees them, halves
/// away from zero. A text that is no number (no date) stays as it is under a picture of digits (of date parts). Null is
/// "", unless the picture has a section for it. Raises 5 for a picture that means nothing or is longer than 255 bytes,
/// 6 for a date outside the calendar and for a number that is none.
std::string format(const Value& value, std::string_view picture, WeekRule weeks = {});

}  // namespace engine
