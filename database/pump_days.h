// The pump's deliveries, summed up by day. The table `ip` keeps these sums for quick statistics.
#pragma once

#include <cstdint>
#include <vector>

#include "database/engine/engine.h"

namespace database {

/// One day, as a row of `ip` holds it.
struct PumpDay {
  engine::Date day;
  double bolus = 0;  ///< units
  float basal = 0;   ///< units; what db_IP_CalcBasal gives from 00:00:00 until 23:59:59
  std::int32_t boluses = 0, basal_entries = 0;
};

/// Every day that has pump data, in order of time, in two passes over the table. Raises what the engine raises.
std::vector<PumpDay> pump_days(engine::Database& database);

/// Appends the day to the recordset `ip`. Raises what the engine raises; the next call then starts a new row.
void append_pump_day(engine::Recordset& ip, const PumpDay& day);

}  // namespace database
