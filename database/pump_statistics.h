// What an insulin pump has delivered (`insulinpump`). Rows of type 1 are basal rates in units per hour, each in force
// until the next one. Rows of a type above 1 are boluses in units.
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
  /// Times of day. The period begins and ends at them, and entries at other times of each day do not count. If the
  /// second is before the first, they cross midnight; a period within one day then ends on the next day. Without times,
  /// both days count from their midnight, so that the last day is not part of the period.
  std::optional<std::pair<engine::Date, engine::Date>> times;
  /// Weekday numbers, comma-separated, 1 Sunday … 7 Saturday; empty or "0": all days.
  std::string weekdays;
};

/// The period with its last day as a whole, if it has no times.
PumpPeriod with_whole_days(PumpPeriod period);

/// Basal insulin of a period in units. The period begins with the rate of the newest entry of the seven days before it
/// or, if there is none, with the rate of its first entry. A rate lasts until the next entry or the period's end. If
/// that is more than a day, it lasts for the seconds that the entry's description gives. The units of an interval are
/// rounded to 3 decimals, the total to 4. Returns 0 where nothing can be read.
float db_IP_CalcBasal(const Environment& environment, const Target& target, const PumpPeriod& period);

struct PumpStatistics {
  /// The first entry, and the latest end of an entry; an entry's description is taken for its duration in minutes.
  std::optional<engine::Date> first, last;
  std::int32_t span_minutes = 0;
  std::int32_t basal_days = 0;  ///< days with a basal rate above 0
  std::int32_t basal_entries = 0;
  std::int32_t bolus_days = 0;  ///< days with a bolus above 0
  std::int32_t boluses = 0;
  double bolus_total = 0;
  double bolus_per_day = 0;  ///< averaged over the days with a bolus
  float basal_total = 0;     ///< db_IP_CalcBasal of the period; the whole last day counts where no times are given

  /// For one hour of the day: entries of one type above 0.
  struct Hour {
    std::int32_t hour = 0, type = 0;
    std::int32_t entries = 0;
    double total = 0, average = 0;
  };
  std::vector<Hour> hours;
};

/// Figures of a period. What cannot be read stays 0. All except the basal total count entries of its days, at its times
/// without seconds; where no times are given, to the end of the last day. The form of a profile's clause is fixed, and
/// the engine refuses it: with a profile, only the basal total is found.
PumpStatistics db_GetIGPumpStats(const Environment& environment, const Target& target, const PumpPeriod& period,
                                 std::optional<std::int32_t> profile = {});

}  // namespace database
