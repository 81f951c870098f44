// What a language calls the months, the days of the week and the halves of a day, and how it writes money.
#pragma once

#include <array>
#include <string>

namespace support {

struct LocaleNames {
  std::array<std::string, 12> months;
  std::array<std::string, 12> short_months;
  /// Sunday first.
  std::array<std::string, 7> weekdays;
  std::array<std::string, 7> short_weekdays;
  /// Before and after noon; empty where the language counts 24 hours.
  std::string morning;
  std::string afternoon;
};

LocaleNames german_names();
LocaleNames english_names();
LocaleNames french_names();

/// In the pictures, "n" is the number without its sign, "c" the symbol.
struct CurrencyPicture {
  std::string symbol = "€";
  std::string positive = "n c";
  std::string negative = "-n c";
  int decimals = 2;
};

}  // namespace support
