// What an insulin pump has delivered (`insulinpump`): rows of type 1 are basal rates in units per hour, in force until
// the next one; rows of a type above 1 are boluses in units.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "database/environment.h"

namespace database {

struct PumpPeriod {
  engine::Date date_from, date_until;
  /// Times of day: the period begins and ends at them, and entries at other times of each day do not count. Where the
  /// second is before the first they cross midnight; a period within one day then ends on the next. Without times both
  /// days count from their midnight, so that the last day itself is not in the period.
  std::optional<std::pair<engine::Date, engine::Date>> times;
  /// Weekday numbers, comma-separated, 1 Sunday … 7 Saturday; empty or "0": all days.
  std::string weekdays;
};

/// The period with its last day whole, where it has no times.
PumpPeriod with_whole_days(PumpPeriod period);

/// Basal insulin of a period in units. It begins with the rate of the newest entry of the seven days before; where
/// there is none, with that of the period's first entry. An entry's rate lasts until the next entry or the period's
/// end; where that is more than a day, for the seconds that its description gives. An interval's units are rounded to 3
/// decimals, the total to 4. 0 where nothing can be read.
float db_IP_CalcBasal(const Environment& environment, const Target& target, const PumpPeriod& period);

struct PumpStatistics {
  /// First entry, and the latest end of an entry whose description is its duration in minutes.
  std::optional<engine::Date> first, last;
  std::int32_t span_minutes = 0;
  std::int32_t basal_days = 0;  ///< days with a basal rate above 0
  std::int32_t basal_entries = 0;
  std::int32_t bolus_days = 0;  ///< days with a bolus above 0
  std::int32_t boluses = 0;
  double bolus_total = 0;
  double bolus_per_day = 0;  ///< over the days with a bolus
  float basal_total = 0;     ///< db_IP_CalcBasal of the period; its last day counts whole where no times are given

  /// Entries above 0 of one type within one hour of the day.
  struct Hour {
    std::int32_t hour = 0, type = 0;
    std::int32_t entries = 0;
    double total = 0, average = 0;
  };
  std::vector<Hour> hours;
};

/// Figures of a period; what cannot be read stays 0. All but the basal total count entries of its days, at its times
/// without their seconds, to the end of the last day where no times are given. A profile's clause has always been
/// written so that the engine refuses it: with one, nothing but the basal total is found.
PumpStatistics db_GetIGPumpStats(const Environment& environment, const Target& target, const PumpPeriod& period,
                                 std::optional<std::int32_t> profile = {});

}  // namespace database
