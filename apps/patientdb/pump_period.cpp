#include "apps/patientdb/pump_period.h"

#include "database/query_filter.h"

namespace patientdb {

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
