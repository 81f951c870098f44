#include "database/engine/date_text.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "database/engine/date.h"
#include "support/encoding.h"
#include "support/text.h"
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
  /// Reads one of the characters; NUL where none stands here.
  char one_of(std::string_view characters) {
    if (rest_.empty() || characters.find(rest_.front()) == std::string_view::npos) return '\0';
    return take();
  }
  void skip_blanks() { skip(" \t"); }
  bool at_end() const { return rest_.empty(); }
  void skip(std::string_view characters) {
    while (one_of(characters)) {
    }
  }
  /// The letters at the front; "" where there are none.
  std::string_view word() {
    const auto is_letter = [](char character) {
      return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
             static_cast<unsigned char>(character) >= 0x80;
    };
    const auto end = std::ranges::find_if_not(rest_, is_letter);
    const std::string_view letters(rest_.begin(), end);
    rest_.remove_prefix(letters.size());
    return letters;
  }
  /// Passes over the word, whatever its case. Returns false where it does not stand here.
  bool accept(std::string_view wanted) {
    if (wanted.empty() || !support::equal_ignoring_case(rest_.substr(0, wanted.size()), wanted)) return false;
    rest_.remove_prefix(wanted.size());
    return true;
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

/// Reads three numbers in this order. They need not be a day of the calendar.
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

/// Reads "before noon" or "after noon", in the words of the names or in English; nothing where neither follows.
std::optional<bool> read_afternoon(Scanner& scanner, const support::LocaleNames& names) {
  for (const std::string_view morning : {std::string_view(names.morning), std::string_view("AM")}) {
    if (scanner.accept(morning)) return false;
  }
  for (const std::string_view afternoon : {std::string_view(names.afternoon), std::string_view("PM")}) {
    if (scanner.accept(afternoon)) return true;
  }
  return std::nullopt;
}

/// Returns seconds. The minutes may be missing where AM or PM follows.
std::optional<int> read_time(Scanner& scanner, const support::LocaleNames& names) {
  const std::optional<Digits> hour = scanner.digits();
  std::optional<Digits> minute = Digits{}, second = Digits{};
  const bool has_minutes = scanner.one_of(":") != '\0';
  if (has_minutes) minute = scanner.digits();
  if (has_minutes && scanner.one_of(":")) second = scanner.digits();
  if (!hour || !minute || !second || hour->value > 23 || minute->value > 59 || second->value > 59) return std::nullopt;
  scanner.skip_blanks();
  int hours = hour->value;
  const std::optional<bool> afternoon = read_afternoon(scanner, names);
  if (!afternoon && !has_minutes) return std::nullopt;
  if (afternoon) {
    if (hours < 1 || hours > 12) return std::nullopt;
    hours = hours % 12 + (*afternoon ? 12 : 0);
  }
  return hours * 3600 + minute->value * 60 + second->value;
}

/// Position of the name in one of the lists, without full stops at its end; nothing where no list has it.
template <std::size_t count>
std::optional<int> find_name(std::string_view word, const std::array<std::string, count>& names,
                             const std::array<std::string, count>& short_names) {
  for (std::size_t i = 0; i < count; ++i) {
    for (const std::string_view name : {std::string_view(names[i]), std::string_view(short_names[i])}) {
      if (support::equal_ignoring_case(support::strip(name, "."), word)) return static_cast<int>(i);
    }
  }
  return std::nullopt;
}

/// Reads a day whose month is a word: "7. März 2024", "Donnerstag, 7. März 2024", "March 7, 2024", "7-Mrz-24".
std::optional<Day> read_worded_day(Scanner& scanner, const support::LocaleNames& names) {
  std::optional<int> weekday, month;
  std::vector<Digits> numbers;
  while (!month || numbers.size() < 2) {
    scanner.skip(" \t.,/-");
    const std::string_view word = scanner.word();
    if (word.empty()) {
      const std::optional<Digits> number = scanner.digits();
      if (!number || numbers.size() == 2) return std::nullopt;
      numbers.push_back(*number);
    } else if (!weekday && !month && numbers.empty() && find_name(word, names.weekdays, names.short_weekdays)) {
      weekday = find_name(word, names.weekdays, names.short_weekdays);
    } else if (!month) {
      month = find_name(word, names.months, names.short_months);
      if (!month) return std::nullopt;
    } else {
      return std::nullopt;
    }
  }
  if (numbers.front().count > 2) std::swap(numbers.front(), numbers.back());
  const Day day{full_year(numbers.back()), *month + 1, numbers.front().value};
  if (numbers.front().count > 2 || !is_day(day)) return std::nullopt;
  const bool fits = !weekday || weekday_from(day_number(day.year, day.month, day.day), 1) == *weekday + 1;
  return fits ? std::optional(day) : std::nullopt;
}

/// How a text's day is written.
struct DayForm {
  std::string_view order;
  /// If the text is no day in this order, but is one with day and month exchanged, it is taken as that day.
  bool either_way = false;
  const support::LocaleNames& names;
};

std::optional<Day> read_numbered_day(Scanner& scanner, const DayForm& form) {
  std::optional<Day> day = read_day(scanner, form.order);
  if (day && form.either_way && !is_day(*day)) std::swap(day->day, day->month);
  return day && is_day(*day) ? day : std::nullopt;
}

/// Reads the time of day up to the text's end, in seconds.
std::optional<int> read_rest(Scanner& scanner, const support::LocaleNames& names) {
  scanner.skip_blanks();
  std::optional<int> time = 0;
  if (!scanner.at_end()) time = read_time(scanner, names);
  scanner.skip_blanks();
  return scanner.at_end() ? time : std::nullopt;
}

std::optional<Date> read_date(std::string_view text, const DayForm& form) {
  Scanner begin{text};
  begin.skip_blanks();
  for (const bool worded : {false, true}) {
    Scanner scanner = begin;
    const std::optional<Day> day = worded ? read_worded_day(scanner, form.names) : read_numbered_day(scanner, form);
    const std::optional<int> time = day ? read_rest(scanner, form.names) : std::nullopt;
    if (time) return date_of_seconds(day_number(day->year, day->month, day->day) * seconds_per_day + *time);
  }
  if (begin.at_end()) return std::nullopt;
  const std::optional<int> time = read_rest(begin, form.names);
  return time ? std::optional(date_of_seconds(*time)) : std::nullopt;
}

/// The letters of the user's short date, in their order.
std::string user_order() {
  std::string order;
  for (const char letter : support::to_lower(support::user_locale().short_date)) {
    if ((letter == 'd' || letter == 'm' || letter == 'y') && order.find(letter) == std::string::npos) order += letter;
  }
  return order.size() == 3 ? order : "dmy";
}

std::string two_digits(int value, std::size_t width) { return fmt::format("{:0{}}", value, width); }

/// "AM" or "PM" even where the locale has no words for them: an hour of a 12-hour clock alone would be ambiguous.
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

std::optional<Date> parse_date(std::string_view text, std::string_view order) {
  static const support::LocaleNames english = support::english_names();
  return read_date(text, {order, false, english});
}

std::optional<Date> parse_user_date(std::string_view text) {
  const std::string order = user_order();
  return read_date(text, {order, true, support::user_locale().names});
}

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
