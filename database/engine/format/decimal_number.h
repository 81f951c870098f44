// A number as the decimal digits that a user takes it for.
#pragma once

#include <string>

namespace engine::pictures {

/// 0.`digits` times ten to the `exponent`; no digits for zero.
struct DecimalNumber {
  std::string digits;
  int exponent = 0;
  bool negative = false;

  /// The whole number nearest to this one times ten to the `decimals`, halves away from zero, as digits; "" for zero.
  std::string scaled(int decimals) const;
};

/// The 15 digits that a Double holds for sure; of a Single the shortest that tell it. Raises 6 for infinity and what is
/// no number.
DecimalNumber decimal_number(double value);
DecimalNumber decimal_number(float value);

/// All of its digits, with an exponent of at least two ("1E+15", "1E-05") where they are not within 15 places.
std::string general_text(const DecimalNumber& number, char decimal_separator);
/// In the user's locale.
std::string general_text(const DecimalNumber& number);

}  // namespace engine::pictures
