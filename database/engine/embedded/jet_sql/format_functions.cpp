// Format(value, picture): named pictures and pictures of digits ("0.0", "000000", "#,##0.00", "0%") and of date parts
// ("dd.mm.yyyy hh:nn:ss"), with sections for positive, negative and zero. Names of days and months are not spelled.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

#include "database/engine/date_text.h"
#include "database/engine/embedded/jet_sql/conversion.h"
#include "database/engine/embedded/jet_sql/error_numbers.h"
#include "database/engine/embedded/jet_sql/sqlite_functions.h"
#include "support/encoding.h"
#include "support/user_locale.h"

namespace engine::embedded::jet_sql {

namespace {

struct NamedPicture {
  std::string_view name;
  std::string_view picture;
};

constexpr NamedPicture number_pictures[] = {
    {"fixed", "0.00"}, {"standard", "#,##0.00"}, {"percent", "0.00%"}, {"general number", ""}};
constexpr NamedPicture date_pictures[] = {
    {"short time", "hh:nn"}, {"long time", "hh:nn:ss"}, {"general date", ""}, {"short date", ""}};
constexpr std::size_t longest_picture = 255;
constexpr std::size_t most_picture_decimals = 20;

const NamedPicture* find_named(std::span<const NamedPicture> pictures, std::string_view name) {
  const auto found = std::find_if(pictures.begin(), pictures.end(), [&](const NamedPicture& picture) {
    return support::equal_ignoring_case(picture.name, name);
  });
  return found == pictures.end() ? nullptr : &*found;
}

/// A piece of a picture: a literal, or a run of one placeholder letter.
struct Piece {
  char letter = 0;  ///< in lower case; 0 for a literal
  std::string text;
};

/// Reads quoted and escaped characters as literals, letters of `placeholders` as runs.
std::vector<Piece> split(std::string_view picture, std::string_view placeholders) {
  std::vector<Piece> pieces;
  for (std::size_t i = 0; i < picture.size(); ++i) {
    const char letter = picture[i] >= 'A' && picture[i] <= 'Z' ? static_cast<char>(picture[i] | 0x20) : picture[i];
    if (picture[i] == '\\' && i + 1 < picture.size()) {
      pieces.push_back({0, std::string(1, picture[++i])});
    } else if (picture[i] == '"') {
      const std::size_t end = std::min(picture.find('"', i + 1), picture.size());
      pieces.push_back({0, std::string(picture.substr(i + 1, end - i - 1))});
      i = end;
    } else if (placeholders.find(letter) == std::string_view::npos) {
      pieces.push_back({0, std::string(1, picture[i])});
    } else if (!pieces.empty() && pieces.back().letter == letter) {
      pieces.back().text += letter;
    } else {
      pieces.push_back({letter, std::string(1, letter)});
    }
  }
  return pieces;
}

std::string padded(std::int64_t value, std::size_t width) {
  std::string text = std::to_string(value);
  return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

/// "m" behind an hour means minutes.
std::string date_piece(const Piece& piece, const CalendarTime& time, bool behind_hour) {
  const std::size_t length = piece.text.size();
  const std::size_t width = length > 1 ? 2 : 1;
  if (length > 2 && piece.letter != 'y') raise(error_invalid_call);
  switch (piece.letter) {
    case 'd':
      return padded(time.day, width);
    case 'm':
      return padded(behind_hour ? time.minute : time.month, width);
    case 'y':
      return length > 2 ? padded(time.year, 4) : padded(time.year % 100, 2);
    case 'h':
      return padded(time.hour, width);
    case 'n':
      return padded(time.minute, width);
    default:
      return padded(time.second, width);
  }
}

std::string format_date(Date date, std::string_view picture) {
  if (const NamedPicture* const named = find_named(date_pictures, picture)) {
    if (named->name == "general date") return date_text(date);
    if (named->name == "short date") return support::short_date_text(std::trunc(date.days));
    picture = named->picture;
  }
  const CalendarTime time = calendar_time(date);
  std::string text;
  bool behind_hour = false;
  for (const Piece& piece : split(picture, "dmyhns")) {
    text += piece.letter == 0 ? piece.text : date_piece(piece, time, behind_hour);
    if (piece.letter != 0) behind_hour = piece.letter == 'h';
  }
  return text;
}

/// What a section of a number's picture asks for.
struct NumberPicture {
  std::size_t whole_digits = 0;    ///< at least
  std::size_t decimals = 0;        ///< at most
  std::size_t fixed_decimals = 0;  ///< at least
  bool grouped = false;
  bool percent = false;
  bool point = false;
  bool has_digits = false;
  std::string before;
  std::string behind;
};

NumberPicture read_number_picture(std::string_view section) {
  NumberPicture picture;
  for (const Piece& piece : split(section, "0#.,%")) {
    const bool digits = piece.letter == '0' || piece.letter == '#';
    picture.has_digits = picture.has_digits || digits;
    if (piece.letter == '%') picture.percent = true;
    if (piece.letter == 0 || piece.letter == '%') {
      (picture.has_digits ? picture.behind : picture.before) += piece.text;
    } else if (piece.letter == '.') {
      picture.point = true;
    } else if (piece.letter == ',') {
      picture.grouped = true;
    } else if (picture.point) {
      picture.decimals += piece.text.size();
      if (piece.letter == '0') picture.fixed_decimals = picture.decimals;
    } else if (piece.letter == '0' || picture.whole_digits > 0) {
      picture.whole_digits += piece.text.size();
    }
  }
  picture.decimals = std::min(picture.decimals, most_picture_decimals);
  return picture;
}

void group_digits(std::string& digits) {
  for (std::size_t at = digits.size(); at > 3; at -= 3) {
    digits.insert(at - 3, 1, support::user_locale().thousands_separator);
  }
}

/// Digits of a number that is not negative.
std::string digits_of(double value, const NumberPicture& picture) {
  const char point = support::user_locale().decimal_separator;
  const std::string text = support::fixed_text(value, static_cast<int>(picture.decimals));
  const std::size_t split_at = std::min(text.find(point), text.size());
  std::string whole = text.substr(0, split_at);
  std::string decimals = split_at < text.size() ? text.substr(split_at + 1) : std::string();
  while (decimals.size() > picture.fixed_decimals && decimals.ends_with('0')) decimals.pop_back();
  if (whole == "0" && picture.whole_digits == 0) whole.clear();
  if (whole.size() < picture.whole_digits) whole.insert(0, picture.whole_digits - whole.size(), '0');
  if (picture.grouped) group_digits(whole);
  return picture.point ? whole + point + decimals : whole;
}

std::vector<std::string_view> sections_of(std::string_view picture) {
  std::vector<std::string_view> sections;
  while (true) {
    const std::size_t end = picture.find(';');
    sections.push_back(picture.substr(0, end));
    if (end == std::string_view::npos) return sections;
    picture.remove_prefix(end + 1);
  }
}

std::string format_number(double value, std::string_view picture) {
  if (const NamedPicture* const named = find_named(number_pictures, picture)) picture = named->picture;
  if (picture.empty()) return number_text(value);
  const std::vector<std::string_view> sections = sections_of(picture);
  const bool own_negative = value < 0 && sections.size() > 1 && !sections[1].empty();
  const bool own_zero = value == 0 && sections.size() > 2 && !sections[2].empty();
  const NumberPicture parts = read_number_picture(sections[own_zero ? 2 : own_negative ? 1 : 0]);
  const double shown = std::abs(value) * (parts.percent ? 100 : 1);
  const std::string digits = parts.has_digits ? digits_of(shown, parts) : std::string();
  const bool is_zero = digits.find_first_of("123456789") == std::string::npos;
  const bool minus = value < 0 && !own_negative && !is_zero;
  return (minus ? "-" : "") + parts.before + digits + parts.behind;
}

bool is_date_picture(std::string_view picture) {
  if (find_named(date_pictures, picture) != nullptr) return true;
  const std::vector<Piece> pieces = split(picture, "dmyhns0#%");
  const auto is_date_letter = [](const Piece& piece) {
    return piece.letter != 0 && std::string_view("dmyhns").find(piece.letter) != std::string_view::npos;
  };
  const auto is_number_letter = [&](const Piece& piece) { return piece.letter != 0 && !is_date_letter(piece); };
  return std::any_of(pieces.begin(), pieces.end(), is_date_letter) &&
         std::none_of(pieces.begin(), pieces.end(), is_number_letter);
}

std::string picture_of(FunctionCall& call) {
  std::string picture(call.has(1) ? call.text(1) : std::string_view());
  if (picture.size() > longest_picture) raise(error_invalid_call);
  return picture;
}

void format(FunctionCall& call) {
  const std::string picture = picture_of(call);
  if (find_named(number_pictures, picture) == nullptr && is_date_picture(picture)) {
    return call.result(std::string_view(format_date(call.date(0), picture)));
  }
  // A text that is no number stays as it is.
  if (call.is_text(0) && !support::parse_number(call.text(0))) return call.result_argument(0);
  call.result(std::string_view(format_number(call.number(0), picture)));
}

/// Of a date: a picture of digits shows it as the number that it is.
void format_as_date(FunctionCall& call) {
  const std::string picture = picture_of(call);
  const Date date = call.date(0);
  if (picture.empty()) return call.result(std::string_view(date_text(date)));
  const bool shows_date = find_named(number_pictures, picture) == nullptr && is_date_picture(picture);
  call.result(std::string_view(shows_date ? format_date(date, picture) : format_number(date.days, picture)));
}

constexpr ScalarRow format_rows[] = {
    row<format>("jet_format", 1),
    row<format>("jet_format", 2),
    row<format_as_date>("jet_format_date", 1),
    row<format_as_date>("jet_format_date", 2),
};

}  // namespace

std::span<const ScalarRow> format_functions() noexcept { return format_rows; }

}  // namespace engine::embedded::jet_sql
