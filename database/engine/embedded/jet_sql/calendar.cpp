#include "database/engine/embedded/jet_sql/calendar.h"

#include <cmath>
#include <cstddef>
#include <vector>

#include "support/user_locale.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr std::int64_t days_from_epoch_to_unix = 25569;

bool is_leap(std::int64_t year) noexcept { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

bool is_digit(char character) noexcept { return character >= '0' && character <= '9'; }
bool is_blank(char character) noexcept { return character == ' ' || character == '\t'; }

/// Reads a date text from left to right.
class DateScanner {
 public:
  explicit DateScanner(std::string_view text) : text_(text) { skip_blanks(); }

  bool at_end() const noexcept { return position_ == text_.size(); }
  char peek() const noexcept { return at_end() ? '\0' : text_[position_]; }
  void skip_blanks() {
    while (is_blank(peek())) ++position_;
  }
  bool take(char wanted) {
    if (peek() != wanted || at_end()) return false;
    ++position_;
    return true;
  }
  bool take_date_separator() { return take('/') || take('-') || take('.'); }

  /// A number of at most four digits; its length goes to `digits`.
  std::optional<int> number(std::size_t* digits = nullptr) {
    const std::size_t begin = position_;
    int value = 0;
    while (is_digit(peek()) && position_ - begin < 5) value = value * 10 + (text_[position_++] - '0');
    const std::size_t length = position_ - begin;
    if (length == 0 || length > 4) return std::nullopt;
    if (digits != nullptr) *digits = length;
    return value;
  }

  /// AM is 0, PM 12.
  std::optional<int> half_of_day() {
    skip_blanks();
    if (text_.size() - position_ < 2) return std::nullopt;
    const char first = static_cast<char>(text_[position_] | 0x20);
    const char second = static_cast<char>(text_[position_ + 1] | 0x20);
    if (second != 'm' || (first != 'a' && first != 'p')) return std::nullopt;
    position_ += 2;
    return first == 'a' ? 0 : 12;
  }

  std::size_t position() const noexcept { return position_; }
  void back_to(std::size_t position) noexcept { position_ = position; }

 private:
  std::string_view text_;
  std::size_t position_ = 0;
};

int full_year(int year, std::size_t digits) noexcept {
  if (digits > 2) return year;
  return year < 30 ? 2000 + year : 1900 + year;
}

/// The day, or nothing with the scanner where it was.
std::optional<std::int64_t> scan_day(DateScanner& scanner, std::string_view order) {
  const std::size_t start = scanner.position();
  int numbers[3] = {};
  std::size_t digits[3] = {};
  for (int part = 0; part < 3; ++part) {
    const auto number = part == 0 || scanner.take_date_separator() ? scanner.number(&digits[part]) : std::nullopt;
    if (!number) {
      scanner.back_to(start);
      return std::nullopt;
    }
    numbers[part] = *number;
  }
  if (digits[0] > 2) order = "ymd";
  int year = 0;
  int month = 0;
  int day = 0;
  for (std::size_t part = 0; part < 3; ++part) {
    if (order[part] == 'y') year = full_year(numbers[part], digits[part]);
    if (order[part] == 'm') month = numbers[part];
    if (order[part] == 'd') day = numbers[part];
  }
  if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > days_in_month(year, month)) {
    scanner.back_to(start);
    return std::nullopt;
  }
  return days_from_civil(year, month, day);
}

std::optional<std::int64_t> scan_time(DateScanner& scanner) {
  const auto hour = scanner.number();
  if (!hour || !scanner.take(':')) return std::nullopt;
  const auto minute = scanner.number();
  if (!minute || *minute > 59) return std::nullopt;
  int second = 0;
  if (scanner.take(':')) {
    const auto number = scanner.number();
    if (!number || *number > 59) return std::nullopt;
    second = *number;
  }
  int hours = *hour;
  if (const auto half = scanner.half_of_day()) {
    if (hours < 1 || hours > 12) return std::nullopt;
    hours = hours % 12 + *half;
  }
  if (hours > 23) return std::nullopt;
  return (hours * std::int64_t{60} + *minute) * 60 + second;
}

}  // namespace

std::int64_t days_from_civil(std::int64_t year, std::int64_t month, std::int64_t day) noexcept {
  const std::int64_t months = year * 12 + (month - 1);
  year = months >= 0 ? months / 12 : -((-months + 11) / 12);
  month = months - year * 12 + 1;
  // Years begin in March here, so that the leap day is the last one.
  const std::int64_t shifted = month <= 2 ? year - 1 : year;
  const std::int64_t era = (shifted >= 0 ? shifted : shifted - 399) / 400;
  const std::int64_t year_of_era = shifted - era * 400;
  const std::int64_t day_of_year = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  const std::int64_t day_of_era = year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
  return era * 146097 + day_of_era - 719468 + days_from_epoch_to_unix;
}

int days_in_month(std::int64_t year, int month) noexcept {
  constexpr int days_of_months[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && is_leap(year) ? 29 : days_of_months[month - 1];
}

std::int64_t to_seconds(double days) noexcept {
  const double day = std::trunc(days);
  const auto time = static_cast<std::int64_t>(std::floor(std::abs(days - day) * 86400 + 0.5));
  return static_cast<std::int64_t>(day) * seconds_per_day + time;
}

double from_seconds(std::int64_t seconds) noexcept {
  std::int64_t day = seconds / seconds_per_day;
  std::int64_t time = seconds % seconds_per_day;
  if (time < 0) {
    time += seconds_per_day;
    --day;
  }
  const double fraction = static_cast<double>(time) / static_cast<double>(seconds_per_day);
  return static_cast<double>(day) + (day < 0 ? -fraction : fraction);
}

Moment to_moment(double days) noexcept {
  const std::int64_t seconds = to_seconds(days);
  std::int64_t day = seconds / seconds_per_day;
  std::int64_t time = seconds % seconds_per_day;
  if (time < 0) {
    time += seconds_per_day;
    --day;
  }
  const std::int64_t shifted = day - days_from_epoch_to_unix + 719468;
  const std::int64_t era = (shifted >= 0 ? shifted : shifted - 146096) / 146097;
  const std::int64_t day_of_era = shifted - era * 146097;
  const std::int64_t year_of_era = (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::int64_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t month = (5 * day_of_year + 2) / 153;
  Moment moment;
  moment.day = static_cast<int>(day_of_year - (153 * month + 2) / 5 + 1);
  moment.month = static_cast<int>(month < 10 ? month + 3 : month - 9);
  moment.year = year_of_era + era * 400 + (moment.month <= 2 ? 1 : 0);
  moment.hour = static_cast<int>(time / 3600);
  moment.minute = static_cast<int>(time / 60 % 60);
  moment.second = static_cast<int>(time % 60);
  return moment;
}

int weekday_of(std::int64_t day) noexcept {
  // Day 0 was a Saturday; 7 * 100000 keeps the remainder positive.
  return static_cast<int>((day + 6 + 700000) % 7) + 1;
}

std::optional<double> parse_date(std::string_view text, std::string_view order) {
  DateScanner scanner(text);
  const auto day = scan_day(scanner, order);
  if (day) scanner.skip_blanks();
  std::int64_t time = 0;
  if (!day || !scanner.at_end()) {
    const auto scanned = scan_time(scanner);
    if (!scanned) return std::nullopt;
    time = *scanned;
  }
  scanner.skip_blanks();
  if (!scanner.at_end()) return std::nullopt;
  return from_seconds(day.value_or(0) * seconds_per_day + time);
}

std::string user_date_order() {
  std::string order;
  for (const char character : support::user_locale().short_date) {
    const char letter = static_cast<char>(character | 0x20);
    if ((letter == 'd' || letter == 'm' || letter == 'y') && order.find(letter) == std::string::npos) order += letter;
  }
  return order.size() == 3 ? order : "dmy";
}

}  // namespace engine::embedded::jet_sql
