#include "database/query_filter.h"

#include <fmt/core.h>

#include <array>

#include "support/error.h"

namespace database {
namespace {

std::string between(std::string_view column, const std::string& from, const std::string& until) {
  return "([" + std::string(column) + "] BETWEEN " + from + " AND " + until + ") ";
}

std::string hour_clause(const Filter& filter) {
  const std::string from = std::to_string(filter.hour_from);
  const std::string until = std::to_string(filter.hour_until);
  if (filter.hour_until >= filter.hour_from) return between("vtime", from, until);
  return "( ([vtime] BETWEEN " + from + " AND 23 ) OR " + "([vtime] BETWEEN 0 AND " + until + ") ) ";
}

std::string time_clause(const Filter& filter) {
  const std::string from = time_literal(filter.time_from);
  const std::string until = time_literal(filter.time_until);
  if (filter.time_until.days >= filter.time_from.days) return between("vtime", from, until);
  return "( ([vtime] BETWEEN " + from + " AND " + time_literal(time_of_day(23, 59, 59)) + ") OR " +
         "([vtime] BETWEEN " + time_literal(time_of_day(0, 0)) + " AND " + until + ") ) ";
}

bool all_weekdays(const std::string& weekdays) { return weekdays.empty() || weekdays == "0"; }

/// Each pump event has a code and a second code that is 1000 higher.
constexpr std::array<std::string_view, 8> event_criteria = {
    " AND (event =114 or event= 1114) ",
    " AND (event =115 or event= 1115) ",
    " AND (event =114 or event = 115 or event =1114 or event = 1115) ",
    " AND (event =110 or event= 1110) ",
    " AND (event =111 or event= 1111) ",
    " AND (event =110 or event = 111 or event =1110 or event = 1111) ",
    " AND (event =100 or event = 1100) ",
    " AND (event =101 or event = 1101) ",
};

std::string event_criterion(int selector, int event_code) {
  if (selector >= 0 && selector < static_cast<int>(event_criteria.size())) {
    return std::string(event_criteria[static_cast<std::size_t>(selector)]);
  }
  return fmt::format(" AND (event = {}) ", event_code);
}

}  // namespace

std::string date_literal(engine::Date date, bool with_time) {
  const engine::CalendarTime at = engine::calendar_time(date);
  if (!with_time) return fmt::format("#{}/{}/{}#", at.month, at.day, at.year);
  return fmt::format("#{}/{}/{} {:02}:{:02}:{:02}#", at.month, at.day, at.year, at.hour, at.minute, at.second);
}

std::string time_literal(engine::Date date) {
  const engine::CalendarTime at = engine::calendar_time(date);
  return fmt::format("#{:02}:{:02}:{:02}#", at.hour, at.minute, at.second);
}

engine::Date time_of_day(int hour, int minute, int second) {
  return engine::Date{(hour * 3600 + minute * 60 + second) / 86400.0};
}

std::string weekday_clause(const std::string& weekdays) {
  return all_weekdays(weekdays) ? "" : " AND (weekday(vdate) IN (" + weekdays + ")) ";
}

std::string times_condition(engine::Date from, engine::Date until, std::string (*literal)(engine::Date)) {
  if (until.days >= from.days) return "(vtime BETWEEN " + literal(from) + " AND " + literal(until) + ")";
  return "((vtime BETWEEN " + literal(from) + " AND " + time_literal(time_of_day(23, 59, 59)) + ") OR (vtime BETWEEN " +
         literal(time_of_day(0, 0)) + " AND " + literal(until) + "))";
}

void put_in(std::string& text, std::string_view placeholder, std::string_view content) {
  for (auto at = text.find(placeholder); at != std::string::npos; at = text.find(placeholder, at + content.size())) {
    text.replace(at, placeholder.size(), content);
  }
}

std::string filter_text(const Filter& filter, std::string_view date_column, std::string_view time_column) {
  std::string text = between("vdate", date_literal(filter.date_from), date_literal(filter.date_until));
  if (filter.hour_from >= 0 || filter.hour_until >= 0) {
    text += " AND " + hour_clause(filter);
  } else if (filter.time_until.days != 0) {
    text += " AND " + time_clause(filter);
  }
  put_in(text, "[vdate]", date_column);
  put_in(text, "[vtime]", time_column);
  return text + weekday_clause(filter.weekdays);
}

std::string SQL_GetPumpEvents(const Filter& filter, int selector, int event_code) {
  support::Procedure procedure{"sql!SQL_GetPumpEvents"};
  const std::string from = time_literal(filter.time_from);
  const std::string until = time_literal(filter.time_until);
  std::string where =
      "WHERE (vdate BETWEEN " + date_literal(filter.date_from) + " AND " + date_literal(filter.date_until) + ") AND ";
  if (filter.time_until.days < filter.time_from.days) {
    where += "( (vtime BETWEEN " + from + " AND " + time_literal(time_of_day(23, 59)) + ") OR " + " (vtime BETWEEN " +
             time_literal(time_of_day(0, 0)) + " AND " + until + ") ) ";
  } else {
    where += " (vtime BETWEEN " + from + " AND " + until + ") ";
  }
  if (!all_weekdays(filter.weekdays)) where += " AND (weekday(vdate) IN (" + filter.weekdays + ") )";
  where += event_criterion(selector, event_code);
  return "SELECT * from insulin " + where + " ORDER by vdate, vtime";
}

}  // namespace database
