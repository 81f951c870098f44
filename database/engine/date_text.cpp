#include "database/engine/date_text.h"

#include <algorithm>
#include <array>
#include <utility>

#include "database/engine/week.h"
#include "support/common_code.h"
#include "support/encoding.h"
#include "support/user_locale.h"

namespace engine {
namespace {

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
    while (!rest_.empty() && support::is_digit(rest_.front()) && digits.count < 5) {
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
    while (one_of(" \t")) {
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

struct Day {
  int year = 0, month = 0, day = 0;
};

bool is_day(const Day& day) {
  return day.year >= 100 && day.month >= 1 && day.month <= 12 && day.day >= 1 &&
         day.day <= days_in_month(day.year, day.month);
}

/// Three numbers in the order, which need not be a day of the calendar.
std::optional<Day> read_day(Scanner& scanner, std::string_view order) {
  std::array<Digits, 3> parts;
  char separator = '\0';
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::optional<Digits> part = scanner.digits();
    if (!part) return std::nullopt;
    parts[i] = *part;
    if (i == 0) separator = scanner.one_of("./-");
    if (i == 1 && scanner.one_of("./-") != separator) return std::nullopt;
  }
  if (parts[0].count > 2) order = "ymd";
  Day day;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    (order[i] == 'y'   ? day.year
     : order[i] == 'm' ? day.month
                       : day.day) = order[i] == 'y' ? full_year(parts[i]) : parts[i].value;
  }
  return day;
}

/// In seconds.
std::optional<int> read_time(Scanner& scanner) {
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
  return hours * 3600 + minute->value * 60 + second->value;
}

std::optional<Date> read_date(std::string_view text, std::string_view order, bool either_way) {
  Scanner scanner{text};
  scanner.skip_blanks();
  std::int64_t seconds = 0;
  if (scanner.after_number() != ':') {
    std::optional<Day> day = read_day(scanner, order);
    if (day && either_way && !is_day(*day)) std::swap(day->day, day->month);
    if (!day || !is_day(*day)) return std::nullopt;
    seconds = day_number(day->year, day->month, day->day) * seconds_per_day;
    scanner.skip_blanks();
  }
  if (!scanner.at_end()) {
    const std::optional<int> time = read_time(scanner);
    if (!time) return std::nullopt;
    seconds += *time;
  }
  scanner.skip_blanks();
  if (!scanner.at_end()) return std::nullopt;
  return date_of_seconds(seconds);
}

/// The letters of the user's short date in their order.
std::string user_order() {
  std::string order;
  for (const char letter : support::to_lower(support::user_locale().short_date)) {
    if ((letter == 'd' || letter == 'm' || letter == 'y') && order.find(letter) == std::string::npos) order += letter;
  }
  return order.size() == 3 ? order : "dmy";
}

std::string two_digits(int value, std::size_t width) {
  std::string text = std::to_string(value);
  if (text.size() < width) text.insert(0, "0");
  return text;
}

/// "AM" and "PM" also where the locale has no words for them: hours of a clock alone would be ambiguous.
std::string half_text(const CalendarTime& time, std::size_t width) {
  const support::LocaleNames& names = support::user_locale().names;
  std::string half = time.hour < 12 ? names.morning : names.afternoon;
  if (half.empty()) half = time.hour < 12 ? "AM" : "PM";
  return width == 1 ? std::string(support::first_characters(half, 1)) : half;
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
      text += half_text(time, width);
    } else {
      text += picture.substr(i, width);
    }
    i = end;
  }
  return text;
}

}  // namespace

std::optional<Date> parse_date(std::string_view text, std::string_view order) { return read_date(text, order, false); }

std::optional<Date> parse_user_date(std::string_view text) { return read_date(text, user_order(), true); }

std::string date_text(Date date) {
  const CalendarTime time = calendar_time(date);
  const bool has_time = time.hour != 0 || time.minute != 0 || time.second != 0;
  const std::int64_t day = day_number(time.year, time.month, time.day);
  if (day == 0) return time_text(time);
  const std::string text = support::short_date_text(static_cast<double>(day));
  return has_time ? text + " " + time_text(time) : text;
}

std::string short_day_text(Date date) { return support::short_date_text(static_cast<double>(day_of(date))); }

std::string long_day_text(Date date) { return support::long_date_text(static_cast<double>(day_of(date))); }

std::string long_time_text(Date date) { return time_text(calendar_time(date)); }

}  // namespace engine
