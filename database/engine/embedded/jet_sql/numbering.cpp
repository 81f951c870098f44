// AutoNumbers of rows that a statement appends: the highest number is looked up once, then counted on.
#include <cstdint>
#include <limits>
#include <memory>

#include "database/engine/embedded/jet_sql/error_numbers.h"
#include "database/engine/embedded/jet_sql/sqlite_functions.h"

namespace engine::embedded::jet_sql {

namespace {

/// The number given last; a connection runs one appending statement at a time.
using LastNumber = std::int64_t;

LastNumber& last_number(const FunctionCall& call) noexcept {
  return *static_cast<LastNumber*>(sqlite3_user_data(call.context()));
}

/// jet_start_numbers(highest): once per statement, before the first jet_next_number().
void start_numbers(FunctionCall& call) {
  last_number(call) = call.is_null(0) ? 0 : call.whole64(0);
  call.result(0);
}

void next_number(FunctionCall& call) {
  if (last_number(call) >= std::numeric_limits<std::int32_t>::max()) raise(error_overflow);
  call.result(++last_number(call));
}

}  // namespace

void register_numbering(sqlite3* connection) {
  constexpr int flags = SQLITE_UTF8 | SQLITE_DIRECTONLY;
  auto number = std::make_unique<LastNumber>(0);
  LastNumber* const shared = number.get();
  check_registered(sqlite3_create_function_v2(connection, "jet_next_number", 1, flags, shared,
                                              sqlite_function<next_number, NullRule::IsTaken>, nullptr, nullptr,
                                              nullptr));
  // The second function owns what both use.
  check_registered(sqlite3_create_function_v2(connection, "jet_start_numbers", 1, flags, number.release(),
                                              sqlite_function<start_numbers, NullRule::IsTaken>, nullptr, nullptr,
                                              [](void* owned) { delete static_cast<LastNumber*>(owned); }));
}

}  // namespace engine::embedded::jet_sql
