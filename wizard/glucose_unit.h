// The two units of blood glucose, and how a typed value is converted between them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wizard {

enum class GlucoseUnit : std::int16_t { MgDl = 0, MmolL = 1 };

std::string_view unit_caption(GlucoseUnit unit) noexcept;

/// The text in the other unit, in the user's locale; nothing if it is no number or leaves the 16-bit range.
std::optional<std::string> converted(std::string_view text, GlucoseUnit to);

/// The value in mg/dl as a whole number, halves to even; nothing in the same cases.
std::optional<std::int16_t> in_mg_dl(std::string_view text, GlucoseUnit unit);

/// The largest value that in_mg_dl() accepts, and the smallest that a target may have, as shown in a unit.
std::string largest_value(GlucoseUnit unit);
std::string smallest_value(GlucoseUnit unit);

/// A value in mg/dl, as shown in a unit.
std::string shown_value(std::int16_t mg_dl, GlucoseUnit unit);

}  // namespace wizard
