// Filter texts for the diary's tables: a range of days, a range of times that may cross midnight, weekdays. The texts
// are joined with others as they stand, blanks included. Literals are in US order whatever the user's locale.
#pragma once

#include <string>
#include <string_view>

#include "database/engine/value.h"

namespace database {

/// "#3/7/2024#", or with the time "#3/7/2024 06:00:00#".
std::string date_literal(engine::Date date, bool with_time = false);
/// "#06:00:00#".
std::string time_literal(engine::Date date);

/// The time of day of a Date: its fraction.
engine::Date time_of_day(int hour, int minute, int second = 0);

struct Filter {
  engine::Date date_from, date_until;
  /// Time of day; an until earlier than from crosses midnight, and an until of 0 means no time filter.
  engine::Date time_from, time_until;
  /// Hours 0 to 23; used in place of the times where one of them is 0 or more.
  int hour_from = -1, hour_until = -1;
  /// Weekday numbers, comma-separated, 1 Sunday … 7 Saturday; empty or "0": all days.
  std::string weekdays;
};

/// " AND (weekday(vdate) IN (…)) " for weekday numbers as above; empty for all days.
std::string weekday_clause(const std::string& weekdays);

/// The times of day of a range as a condition on `vtime`; an until before from crosses midnight, to the day's last
/// second. `literal` writes a bound.
std::string times_condition(engine::Date from, engine::Date until, std::string (*literal)(engine::Date) = time_literal);

/// Puts the content in the place of each placeholder; what a content holds is not looked at again.
void put_in(std::string& text, std::string_view placeholder, std::string_view content);

/// The text after WHERE, with the day and time columns under the names given.
std::string filter_text(const Filter& filter, std::string_view date_column = "vdate",
                        std::string_view time_column = "vtime");

/// SELECT of pump events in a range. `selector` 0 to 7 names a fixed set of event codes, any other the code given. The
/// upper bound of a range that crosses midnight is 23:59 here, not 23:59:59.
std::string SQL_GetPumpEvents(const Filter& filter, int selector, int event_code);

}  // namespace database
