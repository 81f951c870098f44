#include "database/engine/embedded/jet_sql/sqlite_functions.h"

#include <algorithm>
#include <limits>
#include <memory>

#include "database/engine/embedded/jet_sql/collation.h"
#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr int function_flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;

int collate(void*, int left_size, const void* left, int right_size, const void* right) noexcept {
  return compare_texts({static_cast<const char*>(left), static_cast<std::size_t>(left_size)},
                       {static_cast<const char*>(right), static_cast<std::size_t>(right_size)});
}

// The AutoNumbers and identities of the rows that a statement adds. They count on from those that were given last.

/// A connection runs only one statement that adds rows at a time.
Numbering& numbering(const FunctionCall& call) noexcept {
  return *static_cast<Numbering*>(sqlite3_user_data(call.context()));
}

void next_number(FunctionCall& call) {
  std::int64_t& last = numbering(call).number;
  if (last >= std::numeric_limits<std::int32_t>::max()) raise(error_number::overflow);
  call.result(++last);
}

/// For an AutoNumber that the statement itself gives: later numbers count on from it.
void given_number(FunctionCall& call) {
  std::int64_t& last = numbering(call).number;
  last = std::max(last, call.whole64(0));
  call.result_argument(0);
}

void next_row(FunctionCall& call) {
  std::int64_t& last = numbering(call).row;
  if (last >= std::numeric_limits<std::int64_t>::max()) raise(error_number::overflow);
  call.result(++last);
}

/// Raises the error of a failed registration.
void check_registered(int result) {
  if (result != SQLITE_OK) raise(error_number::out_of_memory);
}

Numbering& register_numbering(sqlite3* connection) {
  // The functions are not deterministic: each call gives another number.
  constexpr int flags = SQLITE_UTF8 | SQLITE_DIRECTONLY;
  auto owned = std::make_unique<Numbering>();
  Numbering& shared = *owned;
  const auto create = [&](const char* name, int count, SqliteFunction function) {
    check_registered(
        sqlite3_create_function_v2(connection, name, count, flags, &shared, function, nullptr, nullptr, nullptr));
  };
  create("jet_next_number", 0, sqlite_function<next_number, NullRule::IsTaken>);
  create("jet_given_number", 1, sqlite_function<given_number, NullRule::GivesNull>);
  // The last function owns the counters that all of them use.
  check_registered(sqlite3_create_function_v2(connection, "jet_next_row", 0, flags, owned.release(),
                                              sqlite_function<next_row, NullRule::IsTaken>, nullptr, nullptr,
                                              [](void* numbering) { delete static_cast<Numbering*>(numbering); }));
  return shared;
}

}  // namespace

Numbering& register_functions(sqlite3* connection) {
  check_registered(sqlite3_create_collation_v2(connection, collation_name, SQLITE_UTF8, nullptr, collate, nullptr));
  for (const auto functions : {number_functions, text_functions, date_functions, format_functions, store_functions}) {
    for (const ScalarRow& function : functions) {
      check_registered(sqlite3_create_function_v2(connection, function.name, function.count, function_flags, nullptr,
                                                  function.function, nullptr, nullptr, nullptr));
    }
  }
  for (const AggregateRow& aggregate : aggregate_functions) {
    check_registered(sqlite3_create_function_v2(connection, aggregate.name, 1, function_flags, nullptr, nullptr,
                                                aggregate.step, aggregate.result, nullptr));
  }
  return register_numbering(connection);
}

}  // namespace engine::embedded::jet_sql
