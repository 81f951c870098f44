// The functions of the dialect as SQLite is given them: tables by subject, and their registration.
#pragma once

#include <span>

#include "database/engine/embedded/jet_sql/function_call.h"
#include "database/engine/embedded/jet_sql/jet_sql.h"

namespace engine::embedded::jet_sql {

using SqliteFunction = void (*)(sqlite3_context*, int, sqlite3_value**);

enum class NullRule {
  GivesNull,  ///< Null among the arguments makes the result Null, without a call
  IsTaken,
};

/// The body as SQLite calls it.
template <void (*body)(FunctionCall&), NullRule rule>
void sqlite_function(sqlite3_context* context, int count, sqlite3_value** arguments) noexcept {
  FunctionCall call(context, count, arguments);
  if (rule == NullRule::GivesNull && call.any_null()) return call.result_null();
  try {
    body(call);
  } catch (...) {
    report_current_exception(context);
  }
}

struct ScalarRow {
  const char* name;
  int count;  ///< of arguments; -1 for any
  SqliteFunction function;
};

template <void (*body)(FunctionCall&)>
constexpr ScalarRow row(const char* name, int count, NullRule rule = NullRule::GivesNull) {
  return {name, count,
          rule == NullRule::GivesNull ? &sqlite_function<body, NullRule::GivesNull>
                                      : &sqlite_function<body, NullRule::IsTaken>};
}

/// The functions by subject.
std::span<const ScalarRow> number_functions() noexcept;
std::span<const ScalarRow> text_functions() noexcept;
std::span<const ScalarRow> date_functions() noexcept;
std::span<const ScalarRow> format_functions() noexcept;
std::span<const ScalarRow> store_functions() noexcept;
void register_aggregates(sqlite3* connection);
Numbering& register_numbering(sqlite3* connection);

/// Raises the error of a failed registration.
void check_registered(int result);

inline constexpr int function_flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;

}  // namespace engine::embedded::jet_sql
