// A number as the decimal digits that a user takes it for, and pictures of digits: "0.0", "#,##0.00;(0)", "0%",
// "0.00E+00", "000-000".
#pragma once

#include <string>
#include <vector>

#include "database/engine/format/format_picture.h"

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

/// A section of a picture, taken apart; then it prints numbers.
class NumberSection {
 public:
  /// Raises error_picture for what it does not know.
  explicit NumberSection(const Section& section);

  bool has_digits() const noexcept { return has_digits_; }
  /// The number without its sign.
  std::string print(const DecimalNumber& number) const;
  /// True where the number is not 0 as printed.
  bool shows(const DecimalNumber& number) const;

 private:
  enum class Part { Sign, Digit, Point, Exponent };
  struct Element {
    Part part;
    std::string text;
  };

  void read_digit(const PictureCharacter& placeholder);
  void read_comma(const Section& section, std::size_t position);
  /// Reads "E+00"; returns the position of its last character.
  std::size_t read_exponent(const Section& section, std::size_t position);
  void check() const;
  DecimalNumber shifted(DecimalNumber number) const;
  std::string whole_text(std::string digits) const;
  /// Digits that stand in place of each placeholder, from the left.
  std::vector<std::string> whole_places(const std::string& digits) const;
  std::string exponent_text(int exponent) const;

  std::vector<Element> elements_;
  std::size_t whole_places_ = 0;    ///< placeholders before the point
  std::size_t whole_digits_ = 0;    ///< digits before the point, at least
  std::size_t decimals_ = 0;        ///< at most
  std::size_t fixed_decimals_ = 0;  ///< at least
  int shift_ = 0;                   ///< by "%" and by commas before the point
  bool grouped_ = false;
  bool has_digits_ = false;
  bool has_point_ = false;
  bool percent_ = false;
  bool scientific_ = false;
  bool positive_sign_ = false;  ///< of the exponent
  char exponent_letter_ = 'E';
  std::size_t exponent_digits_ = 0;
};

/// Of up to four sections, those for positive numbers, negative ones, zero and Null.
std::string print_number(const DecimalNumber& number, const Picture& picture);
/// "" where the picture has no section for Null.
std::string print_null_number(const Picture& picture);

}  // namespace engine::pictures
