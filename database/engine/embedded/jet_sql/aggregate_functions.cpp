#include <cmath>
#include <iterator>

#include "database/engine/embedded/jet_sql/sqlite_functions.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

namespace {

/// Mean and sum of squared distances. They are updated row by row, so that large values with small differences stay
/// exact.
struct Spread {
  std::int64_t count;
  double mean;
  double squares;
};

/// SQLite gives the state filled with zeros at the group's first row.
template <typename State>
State* state_of(sqlite3_context* context) noexcept {
  return static_cast<State*>(sqlite3_aggregate_context(context, sizeof(State)));
}

void report_overflow(sqlite3_context* context) noexcept {
  try {
    raise(error_number::overflow);
  } catch (...) {
    report_current_exception(context);
  }
}

void spread_step(sqlite3_context* context, int, sqlite3_value** arguments) noexcept {
  auto* const spread = state_of<Spread>(context);
  if (spread == nullptr) return sqlite3_result_error_nomem(context);
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) return;
  const double value = sqlite3_value_double(arguments[0]);
  const double distance = value - spread->mean;
  spread->mean += distance / static_cast<double>(++spread->count);
  spread->squares += distance * (value - spread->mean);
}

template <bool sample, bool root>
void spread_result(sqlite3_context* context) noexcept {
  const auto* const spread = static_cast<const Spread*>(sqlite3_aggregate_context(context, 0));
  const std::int64_t fewest = sample ? 2 : 1;
  if (spread == nullptr || spread->count < fewest) return sqlite3_result_null(context);
  const double variance = spread->squares / static_cast<double>(spread->count - (sample ? 1 : 0));
  if (!std::isfinite(variance)) return report_overflow(context);
  sqlite3_result_double(context, root ? std::sqrt(variance) : variance);
}

/// A sum together with its rounding error, so that many small values beside a large one are not lost.
struct Total {
  std::int64_t count;
  double sum;
  double lost;
};

void total_step(sqlite3_context* context, int, sqlite3_value** arguments) noexcept {
  auto* const total = state_of<Total>(context);
  if (total == nullptr) return sqlite3_result_error_nomem(context);
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) return;
  const double value = sqlite3_value_double(arguments[0]);
  const double sum = total->sum + value;
  if (!std::isfinite(sum)) return report_overflow(context);
  total->lost += std::abs(total->sum) > std::abs(value) ? (total->sum - sum) + value : (value - sum) + total->sum;
  total->sum = sum;
  ++total->count;
}

template <bool mean>
void total_result(sqlite3_context* context) noexcept {
  const auto* const total = static_cast<const Total*>(sqlite3_aggregate_context(context, 0));
  if (total == nullptr || total->count == 0) return sqlite3_result_null(context);
  const double sum = total->sum + total->lost;
  const double value = mean ? sum / static_cast<double>(total->count) : sum;
  std::isfinite(value) ? sqlite3_result_double(context, value) : report_overflow(context);
}

struct Kept {
  bool any;
  sqlite3_value* value;
};

template <bool last>
void keep_step(sqlite3_context* context, int, sqlite3_value** arguments) noexcept {
  auto* const kept = state_of<Kept>(context);
  if (kept == nullptr) return sqlite3_result_error_nomem(context);
  if (kept->any && !last) return;
  sqlite3_value_free(kept->value);
  kept->any = true;
  kept->value = sqlite3_value_dup(arguments[0]);
}

/// Raises 3354 at a second row.
void only_step(sqlite3_context* context, int count, sqlite3_value** arguments) noexcept {
  const auto* const kept = state_of<Kept>(context);
  if (kept == nullptr || !kept->any) return keep_step<false>(context, count, arguments);
  try {
    raise(error_number::one_record);
  } catch (...) {
    report_current_exception(context);
  }
}

void kept_result(sqlite3_context* context) noexcept {
  auto* const kept = static_cast<Kept*>(sqlite3_aggregate_context(context, 0));
  if (kept == nullptr || kept->value == nullptr) return sqlite3_result_null(context);
  sqlite3_result_value(context, kept->value);
  sqlite3_value_free(kept->value);
  kept->value = nullptr;
}

constexpr AggregateRow aggregate_rows[] = {
    {"jet_sum", total_step, total_result<false>},
    {"jet_avg", total_step, total_result<true>},
    {"jet_stdev", spread_step, spread_result<true, true>},
    {"jet_stdevp", spread_step, spread_result<false, true>},
    {"jet_var", spread_step, spread_result<true, false>},
    {"jet_varp", spread_step, spread_result<false, false>},
    {"jet_first", keep_step<false>, kept_result},
    {"jet_last", keep_step<true>, kept_result},
    {"jet_only", only_step, kept_result},
};

}  // namespace

const std::span<const AggregateRow> aggregate_functions = aggregate_rows;

}  // namespace engine::embedded::jet_sql
