// A number as the decimal digits that a user sees in it, and pictures of digits: "0.0", "#,##0.00;(0)", "0%",
// "0.00E+00", "000-000".
#pragma once

#include <string>
#include <vector>

#include "database/engine/format/format_picture.h"

namespace engine::pictures {

/// The value is 0.`digits` times ten to the `exponent`; zero has no digits.
struct DecimalNumber {
  std::string digits;
  int exponent = 0;
  bool negative = false;

  /// This number times ten to the `decimals`, rounded to a whole number with halves away from zero, as digits; "" for
  /// zero.
  std::string scaled(int decimals) const;
};

/// The 15 digits that a Double surely holds; for a Single the fewest digits that identify it. Raises 6 for infinity and
/// for what is no number.
DecimalNumber decimal_number(double value);
DecimalNumber decimal_number(float value);

/// All digits of the number, with an exponent of at least two digits ("1E+15", "1E-05") where they do not fit into 15
/// places.
std::string general_text(const DecimalNumber& number, char decimal_separator);
/// Does the same in the user's locale.
std::string general_text(const DecimalNumber& number);

/// A section of a picture. It is read once, and then prints numbers.
class NumberSection {
 public:
  /// Raises 5 for a part that it does not know.
  explicit NumberSection(const Section& section);

  bool has_digits() const noexcept { return has_digits_; }
  /// Prints the number without its sign.
  std::string print(const DecimalNumber& number) const;
  /// True where the printed number is not 0.
  bool shows(const DecimalNumber& number) const;

 private:
  enum class Part { Sign, Digit, Point, Exponent };
  struct Element {
    Part part;
    std::string text;
  };

  void read_digit(const PictureCharacter& placeholder);
  void read_comma(const Section& section, std::size_t position);
  /// Reads "E+00" and returns the position of its last character.
  std::size_t read_exponent(const Section& section, std::size_t position);
  void check() const;
  DecimalNumber shifted(DecimalNumber number) const;
  std::string whole_text(std::string digits) const;
  /// The digits in the place of each placeholder, from the left.
  std::vector<std::string> whole_places(const std::string& digits) const;
  std::string exponent_text(int exponent) const;

  std::vector<Element> elements_;
  std::size_t whole_places_ = 0;    ///< placeholders before the point
  std::size_t whole_digits_ = 0;    ///< least number of digits before the point
  std::size_t decimals_ = 0;        ///< largest number of decimals
  std::size_t fixed_decimals_ = 0;  ///< least number of decimals
  int shift_ = 0;                   ///< powers of ten that "%" and commas before the point add or take away
  bool grouped_ = false;
  bool has_digits_ = false;
  bool has_point_ = false;
  bool percent_ = false;
  bool scientific_ = false;
  bool positive_sign_ = false;  ///< the exponent always has a sign
  char exponent_letter_ = 'E';
  std::size_t exponent_digits_ = 0;
};

/// Prints a number. The up to four sections are for positive numbers, negative numbers, zero and Null.
std::string print_number(const DecimalNumber& number, const Picture& picture);
/// "" where the picture has no section for Null.
std::string print_null_number(const Picture& picture);

}  // namespace engine::pictures
