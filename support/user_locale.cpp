#include "support/user_locale.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <utility>

#include "support/calendar_day.h"
#include "support/text.h"

namespace support {
namespace {

struct NamedLocale {
  std::string_view name;
  UserLocale locale;
};

std::array<NamedLocale, 12> make_named_locales() {
  const UserLocale german{};
  UserLocale swiss{'.', '\'', "dd.MM.yyyy", "HH:mm:ss"};
  swiss.currency = {"CHF", "c n", "c-n"};
  UserLocale austrian{};
  austrian.currency = {"€", "c n", "-c n"};
  UserLocale french{',', ' ', "dd/MM/yyyy", "HH:mm:ss", "dddd d MMMM yyyy"};
  french.names = french_names();
  UserLocale american{'.', ',', "M/d/yyyy", "h:mm:ss tt", "dddd, MMMM d, yyyy"};
  american.names = english_names();
  american.currency = {"$", "cn", "(cn)"};
  UserLocale british{'.', ',', "dd/MM/yyyy", "HH:mm:ss", "dd MMMM yyyy"};
  british.names = english_names();
  british.currency = {"£", "cn", "-cn"};
  UserLocale irish = british;
  irish.currency.symbol = "€";
  UserLocale plain{'.', '\0', "MM/dd/yyyy", "HH:mm:ss", "dddd, MMMM d, yyyy"};
  plain.names = english_names();
  plain.currency = {"", "n", "-n"};
  return {{{"de", german},
           {"de_DE", german},
           {"de_AT", austrian},
           {"de_CH", swiss},
           {"fr", french},
           {"fr_FR", french},
           {"en", american},
           {"en_US", american},
           {"en_GB", british},
           {"en_IE", irish},
           {"C", plain},
           {"POSIX", plain}}};
}

const std::array<NamedLocale, 12>& named_locales() {
  static const std::array<NamedLocale, 12> table = make_named_locales();
  return table;
}

UserLocale& current_locale() {
  static UserLocale locale;
  return locale;
}

/// Takes the digits at the front of `rest`.
std::string take_digits(std::string_view& rest) {
  std::size_t count = 0;
  while (count < rest.size() && is_digit(rest[count])) ++count;
  std::string digits(rest.substr(0, count));
  rest.remove_prefix(count);
  return digits;
}

/// Takes the whole part: digits, or one to three digits followed by groups of three. Nothing if a group is incomplete.
std::optional<std::string> take_whole_part(std::string_view& rest) {
  const char separator = user_locale().thousands_separator;
  std::string digits = take_digits(rest);
  if (separator == '\0' || rest.empty() || rest.front() != separator) return digits;
  if (digits.empty() || digits.size() > 3) return std::nullopt;
  while (!rest.empty() && rest.front() == separator) {
    rest.remove_prefix(1);
    const std::string group = take_digits(rest);
    if (group.size() != 3) return std::nullopt;
    digits += group;
  }
  return digits;
}

/// Takes "e", an optional sign and digits. Empty if there is no exponent; nothing if the exponent has no digits.
std::optional<std::string> take_exponent(std::string_view& rest) {
  if (rest.empty() || (rest.front() != 'e' && rest.front() != 'E')) return std::string();
  rest.remove_prefix(1);
  std::string exponent = "e";
  if (!rest.empty() && (rest.front() == '-' || rest.front() == '+')) {
    exponent += rest.front();
    rest.remove_prefix(1);
  }
  const std::string digits = take_digits(rest);
  if (digits.empty()) return std::nullopt;
  return exponent + digits;
}

std::string with_decimal_separator(std::string text) {
  std::replace(text.begin(), text.end(), '.', user_locale().decimal_separator);
  return text;
}

/// Plain digits in the range that people read; an exponent ("1E+20") outside of it.
template <typename Number>
std::string shortest_text(Number value) {
  if (value == 0) return "0";
  const double size = std::fabs(static_cast<double>(value));
  const auto format = size >= 1e-5 && size < 1e15 ? std::chars_format::fixed : std::chars_format::scientific;
  std::array<char, 64> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format);
  std::string text(buffer.data(), end);
  if (format == std::chars_format::scientific) std::replace(text.begin(), text.end(), 'e', 'E');
  return with_decimal_separator(std::move(text));
}

/// A number as decimal digits: 0.`digits` times ten to the `exponent`.
struct DecimalDigits {
  std::string digits;
  int exponent = 0;
};

/// The 15 digits that a double certainly holds. These are the number as the user knows it.
DecimalDigits decimal_digits(double size) {
  constexpr int digits_behind_first = 14;
  std::array<char, 64> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), size,
                                          std::chars_format::scientific, digits_behind_first);
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  const auto mark = text.find('e');
  const bool negative = text[mark + 1] == '-';
  int exponent = 0;
  std::from_chars(text.data() + mark + 2, text.data() + text.size(), exponent);
  std::string digits(text.substr(0, mark));
  digits.erase(1, 1);  // the point
  return {std::move(digits), (negative ? -exponent : exponent) + 1};
}

/// Adds one to a text of digits. If all digits are nines, the text grows.
void increment(std::string& digits) {
  auto position = digits.rbegin();
  for (; position != digits.rend() && *position == '9'; ++position) *position = '0';
  if (position == digits.rend()) {
    digits.insert(digits.begin(), '1');
  } else {
    ++*position;
  }
}

/// The digits of `size` times ten to the `decimals`, rounded half up.
std::string scaled_digits(double size, int decimals) {
  auto [digits, exponent] = decimal_digits(size);
  const int kept = exponent + decimals;
  if (kept < 0) return "0";
  const auto count = static_cast<std::size_t>(kept);
  const bool up = count < digits.size() && digits[count] >= '5';
  digits.resize(count, '0');
  if (digits.empty()) digits = "0";
  if (up) increment(digits);
  return digits;
}

std::string date_field(std::chrono::sys_days day, char letter, std::size_t width) {
  const LocaleNames& names = user_locale().names;
  const std::chrono::year_month_day date{day};
  const auto month = static_cast<unsigned>(date.month());
  if (letter == 'd' && width > 2) {
    return (width == 3 ? names.short_weekdays : names.weekdays)[std::chrono::weekday{day}.c_encoding()];
  }
  if (letter == 'M' && width > 2) return (width == 3 ? names.short_months : names.months)[month - 1];
  if (letter == 'd' || letter == 'M') {
    return fmt::format("{:0{}}", letter == 'd' ? static_cast<unsigned>(date.day()) : month, width);
  }
  const auto year = static_cast<int>(date.year());
  return width > 2 ? fmt::format("{:04}", year) : fmt::format("{:02}", year % 100);
}

std::string date_by_picture(std::chrono::sys_days day, std::string_view picture) {
  std::string text;
  bool quoted = false;
  for (std::size_t i = 0; i < picture.size();) {
    const char letter = picture[i];
    const bool field = !quoted && (letter == 'd' || letter == 'M' || letter == 'y');
    const std::size_t run = field ? std::min(picture.find_first_not_of(letter, i), picture.size()) - i : 1;
    if (letter == '\'') {
      quoted = !quoted;
    } else if (field) {
      text += date_field(day, letter, run);
    } else {
      text += letter;
    }
    i += run;
  }
  return text;
}

std::string day_text(double day, std::string_view picture) {
  if (!(day > first_day - 1 && day < last_day + 1)) return {};
  return date_by_picture(calendar_day(static_cast<std::int64_t>(day)), picture);
}

}  // namespace

std::optional<UserLocale> user_locale_by_name(std::string_view name) {
  const std::string_view bare = name.substr(0, name.find_first_of(".@"));
  const auto& table = named_locales();
  const auto* found = std::find_if(table.begin(), table.end(), [&](const auto& row) { return row.name == bare; });
  if (found == table.end()) return std::nullopt;
  return found->locale;
}

const UserLocale& user_locale() noexcept { return current_locale(); }

void set_user_locale(UserLocale locale) { current_locale() = std::move(locale); }

std::optional<double> parse_number(std::string_view text) {
  std::string_view rest = strip(text, " \t");
  std::string plain;
  if (!rest.empty() && (rest.front() == '-' || rest.front() == '+')) {
    if (rest.front() == '-') plain = "-";
    rest.remove_prefix(1);
  }
  const std::optional<std::string> whole = take_whole_part(rest);
  if (!whole) return std::nullopt;
  std::string fraction;
  if (!rest.empty() && rest.front() == user_locale().decimal_separator) {
    rest.remove_prefix(1);
    fraction = take_digits(rest);
  }
  if (whole->empty() && fraction.empty()) return std::nullopt;
  const std::optional<std::string> exponent = take_exponent(rest);
  if (!exponent || !rest.empty()) return std::nullopt;
  plain += (whole->empty() ? "0" : *whole) + "." + (fraction.empty() ? "0" : fraction) + *exponent;
  double value = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
  if (error != std::errc()) return std::nullopt;
  return value;
}

std::string number_text(double value) { return shortest_text(value); }

std::string number_text(float value) { return shortest_text(value); }

std::string fixed_text(double value, int decimals) {
  if (!std::isfinite(value)) return number_text(value);
  const auto places = static_cast<std::size_t>(std::clamp(decimals, 0, 15));
  std::string digits = scaled_digits(std::fabs(value), static_cast<int>(places));
  if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
  const bool negative = value < 0 && digits.find_first_not_of('0') != std::string::npos;
  if (places > 0) digits.insert(digits.size() - places, 1, user_locale().decimal_separator);
  return negative ? "-" + digits : digits;
}

std::string short_date_text(double day) { return day_text(day, user_locale().short_date); }

std::string long_date_text(double day) { return day_text(day, user_locale().long_date); }

double round_half_even(double value) noexcept { return std::nearbyint(value); }

LocaleNames german_names() {
  return {{"Januar", "Februar", "März", "April", "Mai", "Juni", "Juli", "August", "September", "Oktober", "November",
           "Dezember"},
          {"Jan", "Feb", "Mrz", "Apr", "Mai", "Jun", "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"},
          {"Sonntag", "Montag", "Dienstag", "Mittwoch", "Donnerstag", "Freitag", "Samstag"},
          {"So", "Mo", "Di", "Mi", "Do", "Fr", "Sa"},
          "",
          ""};
}

LocaleNames english_names() {
  return {{"January", "February", "March", "April", "May", "June", "July", "August", "September", "October", "November",
           "December"},
          {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"},
          {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"},
          {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"},
          "AM",
          "PM"};
}

LocaleNames french_names() {
  return {{"janvier", "février", "mars", "avril", "mai", "juin", "juillet", "août", "septembre", "octobre", "novembre",
           "décembre"},
          {"janv.", "févr.", "mars", "avr.", "mai", "juin", "juil.", "août", "sept.", "oct.", "nov.", "déc."},
          {"dimanche", "lundi", "mardi", "mercredi", "jeudi", "vendredi", "samedi"},
          {"dim.", "lun.", "mar.", "mer.", "jeu.", "ven.", "sam."},
          "",
          ""};
}

}  // namespace support
