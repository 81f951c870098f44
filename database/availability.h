// Which kinds of data a patient database holds in a period: 28 categories, each with its count, its first and last day
// and a checksum over its rows.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "database/environment.h"

namespace database {

struct AvailabilityRequest {
  /// Bit n selects the category n; -1 all.
  std::int32_t categories = -1;
  /// First and last day.
  std::optional<std::pair<engine::Date, engine::Date>> days;
  /// Times of day, crossing midnight where the second is before the first; taken only together with days. Categories
  /// whose entries have no time of day are left out then.
  std::optional<std::pair<engine::Date, engine::Date>> times;
  /// Weekday numbers, comma-separated, 1 Sunday … 7 Saturday; empty or "0": all days.
  std::string weekdays;
  /// Rows of one import only, in the tables that know imports; negative: all rows.
  std::int32_t import_id = -1;
};

struct Availability {
  std::int16_t category = 0;
  std::int32_t count = 0;
  engine::Date first, last;
  std::optional<double> checksum;  ///< nothing where the rows have none (a single row has no deviation)
};

/// The categories asked for that are left out, because times are asked for and their entries have none.
std::vector<std::int16_t> categories_without_times(const AvailabilityRequest& request);

/// The categories' union as one statement, in category order.
std::string availability_query(const AvailabilityRequest& request);

/// The categories that have rows, in category order. Empty where the statement fails as a whole, because a table that
/// it names is missing or lacks a column.
std::vector<Availability> find_availability(const Environment& environment, const Target& target,
                                            const AvailabilityRequest& request);

/// A line per category: category, first and last day ("yyyy-mm-dd") and checksum (11 decimals, "."), joined by "|" and
/// ended by CR LF; a checksum that the rows do not have is empty.
std::string availability_summary(const Environment& environment, const Target& target,
                                 const AvailabilityRequest& request);

}  // namespace database
