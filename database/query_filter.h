// Filter texts for the diary's tables: a range of days, a range of times that may cross midnight, weekdays. They are
// joined with other texts as they are, blanks included. Literals are in US order, whatever the user's locale is.
#pragma once

#include <string>
#include <string_view>

#include "database/engine/value.h"

namespace database {

/// "#3/7/2024#"; with the time "#3/7/2024 06:00:00#".
std::string date_literal(engine::Date date, bool with_time = false);
/// "#06:00:00#".
std::string time_literal(engine::Date date);

/// A time of day as a Date, which is a fraction.
engine::Date time_of_day(int hour, int minute, int second = 0);

struct Filter {
  engine::Date date_from, date_until;
  /// Times of day. If until is earlier than from, the range crosses midnight. An until of 0 means no time filter.
  engine::Date time_from, time_until;
  /// Hours 0 to 23. They are used in place of the times where one of them is 0 or more.
  int hour_from = -1, hour_until = -1;
  /// Weekday numbers, comma-separated, 1 Sunday … 7 Saturday; empty or "0": all days.
  std::string weekdays;
};

/// " AND (weekday(vdate) IN (…)) " for weekday numbers as above; empty for all days.
std::string weekday_clause(const std::string& weekdays);

/// A range of times of day as a condition on `vtime`. If until is before from, the range crosses midnight, up to the
/// day's last second. `literal` writes a bound.
std::string times_condition(engine::Date from, engine::Date until, std::string (*literal)(engine::Date) = time_literal);

/// Puts the content in the place of each placeholder. A placeholder inside the content is not replaced.
void put_in(std::string& text, std::string_view placeholder, std::string_view content);

/// The text after WHERE. The columns of day and time have the given names.
std::string filter_text(const Filter& filter, std::string_view date_column = "vdate",
                        std::string_view time_column = "vtime");

/// A SELECT of the pump events in a range. `selector` 0 to 7 names a fixed set of event codes; any other selects
/// `event_code`. The upper bound of a range that crosses midnight is 23:59 here, not 23:59:59.
std::string SQL_GetPumpEvents(const Filter& filter, int selector, int event_code);

}  // namespace database
