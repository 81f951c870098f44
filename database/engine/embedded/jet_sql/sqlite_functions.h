// The functions of the dialect in the form in which SQLite takes them: a table for each subject, and the registration.
#pragma once

#include <span>

#include "database/engine/embedded/jet_sql/function_call.h"
#include "database/engine/embedded/jet_sql/jet_sql.h"

namespace engine::embedded::jet_sql {

using SqliteFunction = void (*)(sqlite3_context*, int, sqlite3_value**);

enum class NullRule {
  GivesNull,  ///< if an argument is Null, the result is Null, without a call
  IsTaken,
};

/// Calls the body as SQLite calls a function.
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
  int count;  ///< number of arguments; -1 for any
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

/// Registers the dialect's functions and its text collation "JET" (case and trailing blanks do not count). Returns the
/// counters of the statements that add rows; they live as long as the connection.
Numbering& register_functions(sqlite3* connection);

}  // namespace engine::embedded::jet_sql
