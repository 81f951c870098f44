// Measured values as text, and glucose in its two units. What comes at the edges of a range is part of the contract.
// None raises.
#pragma once

#include <string>
#include <string_view>

namespace support {

/// Milligrams of glucose in a decilitre where a litre holds one millimole; and the way back, which is deliberately not
/// the reciprocal: a value converted there and back may drift by one.
inline constexpr double mg_dl_per_mmol_l = 18.016, mmol_l_per_mg_dl = 0.0555;

/// Glucose in the other unit, as text in the user's locale: mg/dl as a whole number, halves to even, empty outside the
/// 16-bit range; mmol/l with at most one decimal.
std::string to_mg_dl(double mmol_l);
std::string to_mmol_l(double mg_dl);

enum class ValueKind { MgDl = 0, MmolL = 1, Percent = 2, MgL = 3, Kilogram = 4, Gram = 5, Pound = 6 };

/// A number in the user's locale with `decimals` places (0: as many as the kind usually has) and, where asked for, its
/// unit. A value not above 0 comes with as many places as it has.
std::string format_value(double value, ValueKind kind, int decimals, bool show_unit);

}  // namespace support
