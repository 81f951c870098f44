#include "database/engine/date_text.h"

#include <array>
#include <cmath>
#include <utility>

#include "support/user_locale.h"

namespace engine {
namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// A number of at most 4 digits, and how many digits it had.
struct Digits {
  int value = 0;
  int count = 0;
};

/// Reads a text from its beginning, piece by piece.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : rest_(text) {}

  std::optional<Digits> digits() {
    Digits digits;
    while (!rest_.empty() && is_digit(rest_.front()) && digits.count < 5) {
      digits.value = digits.value * 10 + (take() - '0');
      ++digits.count;
    }
    if (digits.count == 0 || digits.count > 4) return std::nullopt;
    return digits;
  }
  /// One of the characters, or NUL.
  char one_of(std::string_view characters) {
    if (rest_.empty() || characters.find(rest_.front()) == std::string_view::npos) return '\0';
    return take();
  }
  void skip_blanks() {
    while (one_of(" ")) {
    }
  }
  bool at_end() const { return rest_.empty(); }
  /// The character after the first number, which tells a day from a time.
  char after_number() const {
    const std::size_t end = rest_.find_first_not_of("0123456789");
    return end == std::string_view::npos ? '\0' : rest_[end];
  }

 private:
  char take() {
    const char first = rest_.front();
    rest_.remove_prefix(1);
    return first;
  }
  std::string_view rest_;
};

int full_year(Digits year) {
  if (year.count > 2) return year.value;
  return year.value + (year.value < 30 ? 2000 : 1900);
}

bool is_day(int year, int month, int day) {
  if (year < 100 || month < 1 || month > 12 || day < 1 || day > 31) return false;
  return calendar_time(date_from(year, month, day)).month == month;
}

std::optional<Date> parse_day(Scanner& scanner) {
  std::array<Digits, 3> parts;
  char separator = '\0';
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::optional<Digits> part = scanner.digits();
    if (!part) return std::nullopt;
    parts[i] = *part;
    if (i == 0) separator = scanner.one_of("./-");
    if (i == 1 && scanner.one_of("./-") != separator) return std::nullopt;
  }
  if (parts[0].count > 2) {
    if (!is_day(parts[0].value, parts[1].value, parts[2].value)) return std::nullopt;
    return date_from(parts[0].value, parts[1].value, parts[2].value);
  }
  int day = parts[0].value;
  int month = parts[1].value;
  const std::string& picture = support::user_locale().short_date;
  if (picture.find('M') < picture.find('d')) std::swap(day, month);
  const int year = full_year(parts[2]);
  // A day that can only be meant the other way round is taken that way.
  if (!is_day(year, month, day)) std::swap(day, month);
  if (!is_day(year, month, day)) return std::nullopt;
  return date_from(year, month, day);
}

std::optional<double> parse_time(Scanner& scanner) {
  const std::optional<Digits> hour = scanner.digits();
  if (!hour || !scanner.one_of(":")) return std::nullopt;
  const std::optional<Digits> minute = scanner.digits();
  std::optional<Digits> second = Digits{};
  if (scanner.one_of(":")) second = scanner.digits();
  if (!minute || !second || hour->value > 23 || minute->value > 59 || second->value > 59) return std::nullopt;
  int hours = hour->value;
  scanner.skip_blanks();
  if (const char half = scanner.one_of("AaPp")) {
    if (!scanner.one_of("Mm") || hours < 1 || hours > 12) return std::nullopt;
    hours = hours % 12 + (half == 'P' || half == 'p' ? 12 : 0);
  }
  return (hours * 3600 + minute->value * 60 + second->value) / 86400.0;
}

std::string two_digits(int value, std::size_t width) {
  std::string text = std::to_string(value);
  if (text.size() < width) text.insert(0, "0");
  return text;
}

/// Fills in a picture of H, h, m, s, tt and literals.
std::string time_text(const CalendarTime& time) {
  std::string text;
  const std::string_view picture = support::user_locale().long_time;
  for (std::size_t i = 0; i < picture.size();) {
    const char letter = picture[i];
    const std::size_t end = std::min(picture.find_first_not_of(letter, i), picture.size());
    const std::size_t width = end - i;
    if (letter == 'H') {
      text += two_digits(time.hour, width);
    } else if (letter == 'h') {
      text += two_digits((time.hour + 11) % 12 + 1, width);
    } else if (letter == 'm') {
      text += two_digits(time.minute, width);
    } else if (letter == 's') {
      text += two_digits(time.second, width);
    } else if (letter == 't') {
      text += time.hour < 12 ? "AM" : "PM";
    } else {
      text += picture.substr(i, width);
    }
    i = end;
  }
  return text;
}

}  // namespace

std::optional<Date> parse_date(std::string_view text) {
  Scanner scanner{text};
  scanner.skip_blanks();
  Date date;
  if (scanner.after_number() != ':') {
    const std::optional<Date> day = parse_day(scanner);
    if (!day) return std::nullopt;
    date = *day;
    scanner.skip_blanks();
  }
  if (!scanner.at_end()) {
    const std::optional<double> time = parse_time(scanner);
    if (!time) return std::nullopt;
    date.days += date.days < 0 ? -*time : *time;
  }
  scanner.skip_blanks();
  if (!scanner.at_end()) return std::nullopt;
  return date;
}

std::string date_text(Date date) {
  const CalendarTime time = calendar_time(date);
  const bool has_time = time.hour != 0 || time.minute != 0 || time.second != 0;
  const double day = date_from(time.year, time.month, time.day).days;
  if (day == 0) return time_text(time);
  const std::string text = support::short_date_text(day);
  return has_time ? text + " " + time_text(time) : text;
}

}  // namespace engine
