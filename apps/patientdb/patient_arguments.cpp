#include "apps/patientdb/patient_arguments.h"

#include <algorithm>
#include <vector>

#include "database/query_filter.h"
#include "support/text.h"

namespace patientdb {

database::PatientRecord patient_argument(const console::Arguments& arguments) {
  database::PatientRecord patient;
  patient.name = arguments.value(name_option.name).value_or("");
  patient.firstname = arguments.value(firstname_option.name).value_or("");
  patient.typ = static_cast<std::int16_t>(arguments.number(diabetes_type_option.name, 0, 1, 4));
  patient.therapy = static_cast<std::int16_t>(arguments.number(therapy_option.name, 0, 1, 5));
  return patient;
}

namespace {

[[noreturn]] void refuse(std::string_view option, std::string_view text, std::string_view expected) {
  throw console::UsageError(std::string(option) + " takes " + std::string(expected) + ", not \"" + std::string(text) +
                            "\".");
}

/// The numbers of a text that consists of groups of digits with these lengths, joined by the separator.
std::optional<std::vector<int>> digit_groups(std::string_view text, char separator, std::vector<std::size_t> lengths) {
  std::vector<int> numbers;
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    if (i > 0) {
      if (!text.starts_with(separator)) return std::nullopt;
      text.remove_prefix(1);
    }
    const std::string_view group = text.substr(0, lengths[i]);
    const auto number = support::parse_whole<int>(group);
    if (!number || group.size() != lengths[i] || group.starts_with('-')) return std::nullopt;
    numbers.push_back(*number);
    text.remove_prefix(group.size());
  }
  return text.empty() ? std::optional(numbers) : std::nullopt;
}

Range range(std::optional<engine::Date> from, std::optional<engine::Date> until, std::string_view from_name,
            std::string_view until_name) {
  if (from.has_value() != until.has_value()) {
    throw console::UsageError(std::string(from_name) + " and " + std::string(until_name) + " go together.");
  }
  return from ? Range({*from, *until}) : std::nullopt;
}

}  // namespace

std::optional<engine::Date> day_argument(const console::Arguments& arguments, std::string_view option) {
  const auto text = arguments.value(option);
  if (!text) return std::nullopt;
  const auto parts = digit_groups(*text, '-', {4, 2, 2});
  if (!parts) refuse(option, *text, "a day as YYYY-MM-DD");
  const engine::Date day = engine::date_from((*parts)[0], (*parts)[1], (*parts)[2]);
  // A day that does not exist, such as February 30, comes back as another one.
  if (engine::iso_text(day).substr(0, 10) != *text) refuse(option, *text, "a day of the calendar as YYYY-MM-DD");
  return day;
}

std::optional<engine::Date> time_argument(const console::Arguments& arguments, std::string_view option) {
  const auto text = arguments.value(option);
  if (!text) return std::nullopt;
  auto parts = digit_groups(*text, ':', {2, 2, 2});
  if (!parts) parts = digit_groups(*text + ":00", ':', {2, 2, 2});
  if (!parts || (*parts)[0] > 23 || (*parts)[1] > 59 || (*parts)[2] > 59) {
    refuse(option, *text, "a time as HH:MM or HH:MM:SS");
  }
  return engine::Date{((*parts)[0] * 3600 + (*parts)[1] * 60 + (*parts)[2]) / 86400.0};
}

Range day_range(const console::Arguments& arguments, std::string_view from, std::string_view until) {
  const Range days = range(day_argument(arguments, from), day_argument(arguments, until), from, until);
  if (days && days->second.days < days->first.days) {
    throw console::UsageError(std::string(until) + " lies before " + std::string(from) + ".");
  }
  return days;
}

Range time_range(const console::Arguments& arguments, std::string_view from, std::string_view until) {
  return range(time_argument(arguments, from), time_argument(arguments, until), from, until);
}

std::string weekdays_argument(const console::Arguments& arguments, std::string_view option) {
  std::string text = arguments.value(option).value_or("");
  std::vector<std::string> numbers;
  support::Split(text, numbers, ",");
  const bool valid = !text.ends_with(',') && std::ranges::all_of(numbers, [](const std::string& number) {
    return number.size() == 1 && number[0] >= '1' && number[0] <= '7';
  });
  if (!valid) refuse(option, text, "weekday numbers 1 (Sunday) to 7 (Saturday), comma-separated");
  return text;
}

database::PumpPeriod pump_period(const console::Arguments& arguments) {
  const Range days = day_range(arguments, from_option.name, until_option.name);
  if (!days) throw console::UsageError("The period needs --from and --until.");
  database::PumpPeriod period;
  period.date_from = days->first;
  period.date_until = days->second;
  if (arguments.has(time_from_option.name) || arguments.has(time_until_option.name)) {
    period.times.emplace(time_argument(arguments, time_from_option.name).value_or(database::time_of_day(0, 0)),
                         time_argument(arguments, time_until_option.name).value_or(database::time_of_day(23, 59, 59)));
  }
  period.weekdays = weekdays_argument(arguments, weekdays_option.name);
  return period;
}

}  // namespace patientdb
