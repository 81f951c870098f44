#include "database/engine/format/date_picture.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>

#include "database/engine/date_text.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"
#include "support/user_locale.h"

namespace engine::pictures {
namespace {

/// A moment, and the parts that a picture may ask for.
struct Moment {
  Date date;
  WeekRule weeks;
  CalendarTime time;

  std::size_t month() const noexcept { return static_cast<std::size_t>(time.month) - 1; }
  /// Counts from Sunday.
  std::size_t weekday() const noexcept { return static_cast<std::size_t>(weekday_from(day_of(date), 1)) - 1; }
};

std::string digits_of(std::int64_t value, std::size_t width) { return fmt::format("{:0{}}", value, width); }

std::string print_day(const Moment& moment, std::size_t width) {
  const support::UserLocale& locale = support::user_locale();
  switch (width) {
    case 3:
      return locale.names.short_weekdays[moment.weekday()];
    case 4:
      return locale.names.weekdays[moment.weekday()];
    case 5:
      return short_day_text(moment.date);
    case 6:
      return long_day_text(moment.date);
    default:
      return digits_of(moment.time.day, width);
  }
}

std::string print_month(const Moment& moment, std::size_t width) {
  const support::LocaleNames& names = support::user_locale().names;
  if (width == 3) return names.short_months[moment.month()];
  if (width == 4) return names.months[moment.month()];
  return digits_of(moment.time.month, width);
}

std::string print_year(const Moment& moment, std::size_t width) {
  if (width == 1) return digits_of(day_of(moment.date) - day_number(moment.time.year, 1, 1) + 1, 1);
  return width == 2 ? digits_of(moment.time.year % 100, 2) : digits_of(moment.time.year, 4);
}

std::string print_week(const Moment& moment, std::size_t width) {
  if (width == 1) return digits_of(weekday_from(day_of(moment.date), moment.weeks.first_day), 1);
  return digits_of(week_of_year(moment.date, moment.weeks), 1);
}

std::string print_quarter(const Moment& moment, std::size_t) { return digits_of((moment.time.month - 1) / 3 + 1, 1); }
std::string print_weekday(const Moment& moment, std::size_t) { return print_day(moment, 4); }
std::string print_month_name(const Moment& moment, std::size_t) { return print_month(moment, 4); }
std::string print_minute(const Moment& moment, std::size_t width) { return digits_of(moment.time.minute, width); }
std::string print_second(const Moment& moment, std::size_t width) { return digits_of(moment.time.second, width); }
std::string print_general(const Moment& moment, std::size_t) { return date_text(moment.date); }
std::string print_time(const Moment& moment, std::size_t) { return long_time_text(moment.date); }
std::string print_hour(const Moment& moment, std::size_t width) { return digits_of(moment.time.hour, width); }

struct LetterRow {
  char letter;
  /// The widths that have a meaning, as digits.
  std::string_view widths;
  std::string (*print)(const Moment& moment, std::size_t width);
};

constexpr LetterRow letter_rows[] = {
    {'c', "1", print_general}, {'d', "123456", print_day}, {'w', "12", print_week},   {'m', "1234", print_month},
    {'q', "1", print_quarter}, {'y', "124", print_year},   {'h', "12", print_hour},   {'n', "12", print_minute},
    {'s', "12", print_second}, {'t', "5", print_time},     {'a', "4", print_weekday}, {'o', "4", print_month_name},
};

/// A mark of the half of the day. The longer marks come first.
struct HalfRow {
  std::string_view mark;
  std::string_view morning;
  std::string_view afternoon;
};
constexpr HalfRow half_rows[] = {{"AM/PM", "AM", "PM"}, {"am/pm", "am", "pm"}, {"A/P", "A", "P"}, {"a/p", "a", "p"}};
constexpr std::string_view locale_half = "ampm";

/// True where this text, none of it quoted, stands at the position of the section.
bool stands_at(const Section& section, std::size_t position, std::string_view text) {
  if (position + text.size() > section.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!section[position + i].is(text[i])) return false;
  }
  return true;
}

/// Walks through a section and prints it.
class DatePrinter {
 public:
  DatePrinter(const Section& section, const Moment& moment) : section_(section), moment_(moment) {}

  std::string print() {
    // If the picture has one mark of the half of the day, all hours are those of a 12-hour clock.
    for (std::size_t i = 0; i < section_.size(); ++i) twelve_hours_ = twelve_hours_ || half_at(i).first > 0;
    while (position_ < section_.size()) print_next();
    return std::move(text_);
  }

 private:
  /// Returns the length of the mark at the position and what it stands for; 0 where there is no mark.
  std::pair<std::size_t, std::string> half_at(std::size_t position) const {
    const bool morning = moment_.time.hour < 12;
    for (const HalfRow& row : half_rows) {
      if (stands_at(section_, position, row.mark)) {
        return {row.mark.size(), std::string(morning ? row.morning : row.afternoon)};
      }
    }
    for (std::size_t i = 0; i < locale_half.size(); ++i) {
      if (position + i >= section_.size() || section_[position + i].letter() != locale_half[i]) return {};
    }
    const support::LocaleNames& names = support::user_locale().names;
    return {locale_half.size(), morning ? names.morning : names.afternoon};
  }

  void print_next() {
    if (auto [length, half] = half_at(position_); length > 0) {
      text_ += half;
      position_ += length;
    } else if (section_[position_].letter() != '\0') {
      print_run();
    } else {
      if (section_[position_].is_one_of("0#")) raise(error_number::invalid_call);
      print_sign(text_, section_[position_++]);
    }
  }

  /// Prints a run of one letter. Behind an hour "m" means minutes.
  void print_run() {
    const char letter = section_[position_].letter();
    const std::size_t begin = position_;
    while (position_ < section_.size() && section_[position_].letter() == letter && half_at(position_).first == 0) {
      ++position_;
    }
    const std::size_t width = position_ - begin;
    const bool minutes = letter == 'm' && width <= 2 && behind_hour_;
    const auto* const row = std::ranges::find(letter_rows, minutes ? 'n' : letter, &LetterRow::letter);
    if (row == std::end(letter_rows) || width > 9) raise(error_number::invalid_call);
    if (row->widths.find(static_cast<char>('0' + width)) == std::string_view::npos) raise(error_number::invalid_call);
    Moment shown = moment_;
    if (twelve_hours_) shown.time.hour = (shown.time.hour + 11) % 12 + 1;
    text_ += row->print(shown, width);
    behind_hour_ = letter == 'h';
  }

  const Section& section_;
  const Moment moment_;
  std::size_t position_ = 0;
  bool twelve_hours_ = false;
  bool behind_hour_ = false;
  std::string text_;
};

}  // namespace

std::string print_date(Date date, const Picture& picture, WeekRule weeks) {
  if (picture.sections.size() != 1) raise(error_number::invalid_call);
  return DatePrinter(picture.sections.front(), {date, weeks, calendar_time(date)}).print();
}

}  // namespace engine::pictures
