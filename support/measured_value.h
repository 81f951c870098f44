// Measured values as text, and glucose in its two units. Callers rely on the results at the edges of a range, too. None
// raises.
#pragma once

#include <string>
#include <string_view>

namespace support {

/// Milligrams per decilitre of glucose that are one millimole per litre, and the factor for the way back. That factor
/// is deliberately not the reciprocal: a value that is converted there and back may change by one.
inline constexpr double mg_dl_per_mmol_l = 18.016, mmol_l_per_mg_dl = 0.0555;

/// Glucose in the other unit, as text in the user's locale. mg/dl is a whole number, halves to even, and empty outside
/// the 16-bit range; mmol/l has at most one decimal.
std::string to_mg_dl(double mmol_l);
std::string to_mmol_l(double mg_dl);

enum class ValueKind { MgDl = 0, MmolL = 1, Percent = 2, MgL = 3, Kilogram = 4, Gram = 5, Pound = 6 };

/// A number in the user's locale with `decimals` places (0: as many as the kind usually has) and, if asked for, its
/// unit. A value that is 0 or negative is shown with the places that it has.
std::string format_value(double value, ValueKind kind, int decimals, bool show_unit);

}  // namespace support
