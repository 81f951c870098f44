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

struct AggregateRow {
  const char* name;
  SqliteFunction step;
  void (*result)(sqlite3_context*);
};

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

/// The functions of each subject.
extern const std::span<const ScalarRow> number_functions, text_functions, date_functions, format_functions,
    store_functions;
extern const std::span<const AggregateRow> aggregate_functions;

/// Registers the dialect's functions and its text collation "JET" (no regard to case, trailing blanks do not count).
/// Returns what statements that add rows count by; it lives as long as the connection.
Numbering& register_functions(sqlite3* connection);

}  // namespace engine::embedded::jet_sql
