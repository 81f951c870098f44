#include "database/engine/embedded/jet_sql/sqlite_functions.h"

#include "database/engine/embedded/jet_sql/collation.h"
#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

namespace {

int collate(void*, int left_size, const void* left, int right_size, const void* right) noexcept {
  return compare_texts({static_cast<const char*>(left), static_cast<std::size_t>(left_size)},
                       {static_cast<const char*>(right), static_cast<std::size_t>(right_size)});
}

}  // namespace

void check_registered(int result) {
  if (result != SQLITE_OK) raise(error_number::out_of_memory);
}

Numbering& register_functions(sqlite3* connection) {
  check_registered(sqlite3_create_collation_v2(connection, collation_name, SQLITE_UTF8, nullptr, collate, nullptr));
  for (const auto functions :
       {number_functions(), text_functions(), date_functions(), format_functions(), store_functions()}) {
    for (const ScalarRow& function : functions) {
      check_registered(sqlite3_create_function_v2(connection, function.name, function.count, function_flags, nullptr,
                                                  function.function, nullptr, nullptr, nullptr));
    }
  }
  register_aggregates(connection);
  return register_numbering(connection);
}

}  // namespace engine::embedded::jet_sql
