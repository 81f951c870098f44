#include "database/engine/format/format.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>
#include <span>

#include "database/engine/date_text.h"
#include "database/engine/engine_error.h"
#include "database/engine/format/date_picture.h"
#include "database/engine/format/format_picture.h"
#include "database/engine/format/number_picture.h"
#include "support/encoding.h"
#include "support/text.h"
#include "support/user_locale.h"

namespace engine {
namespace {

using pictures::DecimalNumber;

constexpr std::size_t longest_picture = 255;

std::string print_picture(const DecimalNumber& number, std::string_view picture) {
  return pictures::print_number(number, pictures::read_picture(picture));
}

std::string print_currency(const DecimalNumber& number) {
  const support::CurrencyPicture& currency = support::user_locale().currency;
  std::string picture = "#,##0";
  if (currency.decimals > 0) picture += "." + std::string(static_cast<std::size_t>(currency.decimals), '0');
  DecimalNumber size = number;
  size.negative = false;
  const std::string digits = print_picture(size, picture);
  // A number that rounds to 0 has no sign.
  const bool negative = number.negative && digits.find_first_of("123456789") != std::string::npos;
  std::string text;
  for (const char part : negative ? currency.negative : currency.positive) {
    text += part == 'n' ? digits : part == 'c' ? currency.symbol : std::string(1, part);
  }
  return std::string(support::strip(text, " "));
}

struct NumberName {
  std::string_view name;
  /// "" where the name has a function.
  std::string_view picture;
  std::string (*print)(const DecimalNumber& number) = nullptr;
};

/// For "Yes/No": the word behind the slash for 0, the word before it for all other numbers.
template <std::size_t slash>
std::string print_choice(const DecimalNumber& number, std::string_view name) {
  return std::string(number.digits.empty() ? name.substr(slash + 1) : name.substr(0, slash));
}

constexpr NumberName number_names[] = {
    {"General Number", ""},
    {"Currency", "", print_currency},
    {"Fixed", "0.00"},
    {"Standard", "#,##0.00"},
    {"Percent", "0.00%"},
    {"Scientific", "0.00E+00"},
    {"Yes/No", "", [](const DecimalNumber& number) { return print_choice<3>(number, "Yes/No"); }},
    {"True/False", "", [](const DecimalNumber& number) { return print_choice<4>(number, "True/False"); }},
    {"On/Off", "", [](const DecimalNumber& number) { return print_choice<2>(number, "On/Off"); }},
};

struct DateName {
  std::string_view name;
  std::string_view picture;
};

constexpr DateName date_names[] = {
    {"General Date", "c"},  {"Long Date", "dddddd"},        {"Medium Date", "dd-mmm-yy"}, {"Short Date", "ddddd"},
    {"Long Time", "ttttt"}, {"Medium Time", "hh:nn AM/PM"}, {"Short Time", "hh:nn"},
};

template <typename Row>
const Row* find_name(std::span<const Row> rows, std::string_view name) {
  const auto found =
      std::ranges::find_if(rows, [&](const Row& row) { return support::equal_ignoring_case(row.name, name); });
  return found == rows.end() ? nullptr : &*found;
}

/// The value as a number; nothing for a text that is no number.
std::optional<DecimalNumber> as_number(const Value& value) {
  if (const auto* single = std::get_if<float>(&value)) return pictures::decimal_number(*single);
  if (const auto* date = std::get_if<Date>(&value)) return pictures::decimal_number(date->days);
  const auto* const text = std::get_if<std::string>(&value);
  if (text == nullptr) return pictures::decimal_number(to_double(value));
  const std::optional<double> number = support::parse_number(*text);
  return number ? std::optional(pictures::decimal_number(*number)) : std::nullopt;
}

/// The value as a date; if necessary, its number is taken for the date.
std::optional<Date> as_date(const Value& value) {
  const auto* const text = std::get_if<std::string>(&value);
  if (text == nullptr) return to_date(value);
  if (const std::optional<Date> date = parse_user_date(*text)) return date;
  return support::parse_number(*text) ? std::optional(to_date(value)) : std::nullopt;
}

std::string print_null(std::string_view picture) {
  if (picture.empty() || find_name<NumberName>(number_names, picture) || find_name<DateName>(date_names, picture)) {
    return {};
  }
  const pictures::Picture read = pictures::read_picture(picture);
  if (read.kind == pictures::PictureKind::Number) return pictures::print_null_number(read);
  const bool has_section = read.kind == pictures::PictureKind::Text && read.sections.size() > 1;
  return has_section ? pictures::print_text({}, read) : std::string();
}

std::string print_named_number(const Value& value, const NumberName& name) {
  const std::optional<DecimalNumber> number = as_number(value);
  if (!number) return to_text(value);
  if (name.print != nullptr) return name.print(*number);
  return name.picture.empty() ? pictures::general_text(*number) : print_picture(*number, name.picture);
}

std::string print_date_by(const Value& value, const pictures::Picture& picture, WeekRule weeks) {
  const std::optional<Date> date = as_date(value);
  return date ? pictures::print_date(*date, picture, weeks) : to_text(value);
}

/// Numbers are printed with the digits that they surely hold.
std::string plain_text(const Value& value) {
  const bool number = std::holds_alternative<double>(value) || std::holds_alternative<float>(value);
  return number ? pictures::general_text(*as_number(value)) : to_text(value);
}

}  // namespace

std::string format(const Value& value, std::string_view picture, WeekRule weeks) {
  if (picture.size() > longest_picture) raise(error_number::invalid_call);
  if (is_null(value)) return print_null(picture);
  if (picture.empty()) return plain_text(value);
  if (const auto* const name = find_name<NumberName>(number_names, picture)) {
    return print_named_number(value, *name);
  }
  const auto* const date = find_name<DateName>(date_names, picture);
  const pictures::Picture read = pictures::read_picture(date != nullptr ? date->picture : picture);
  if (read.kind == pictures::PictureKind::Date) return print_date_by(value, read, weeks);
  if (read.kind == pictures::PictureKind::Text) return pictures::print_text(plain_text(value), read);
  const std::optional<DecimalNumber> number = as_number(value);
  return number ? pictures::print_number(*number, read) : to_text(value);
}

}  // namespace engine
