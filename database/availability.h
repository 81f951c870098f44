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
  /// Bit n selects category n; -1 selects all.
  std::int32_t categories = -1;
  /// First and last day.
  std::optional<std::pair<engine::Date, engine::Date>> days;
  /// From one time of day to another; they cross midnight where the second is before the first. They count only
  /// together with days. Categories whose entries have no time of day are then left out.
  std::optional<std::pair<engine::Date, engine::Date>> times;
  /// Weekday numbers, comma-separated, 1 Sunday … 7 Saturday; empty or "0": all days.
  std::string weekdays;
  /// Only rows of this import, in the tables that know imports. Negative: all rows.
  std::int32_t import_id = -1;
};

struct Availability {
  std::int16_t category = 0;
  std::int32_t count = 0;
  engine::Date first, last;
  std::optional<double> checksum;  ///< nothing where the rows have none (a single row has no deviation)
};

/// Of the categories asked for, those that are left out because times are asked for and their entries have none.
std::vector<std::int16_t> categories_without_times(const AvailabilityRequest& request);

/// One statement, the union of the categories in their order.
std::string availability_query(const AvailabilityRequest& request);

/// Returns the categories that have rows, in their order. Empty where the statement fails as a whole because a table
/// that it names is missing or lacks a column.
std::vector<Availability> find_availability(const Environment& environment, const Target& target,
                                            const AvailabilityRequest& request);

/// Returns a line for each category: category, first and last day ("yyyy-mm-dd") and checksum (11 decimals, "."),
/// joined by "|" and ended by CR LF. The checksum is empty where the rows have none.
std::string availability_summary(const Environment& environment, const Target& target,
                                 const AvailabilityRequest& request);

}  // namespace database
