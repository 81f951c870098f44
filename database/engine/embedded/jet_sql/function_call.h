// One call of a function of the dialect from SQLite: its arguments, its result, its errors, which reach error_of() as
// "jet:NUMBER:description".
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace engine::embedded::jet_sql {

class FunctionCall {
 public:
  FunctionCall(sqlite3_context* context, int count, sqlite3_value** arguments) noexcept
      : context_(context), count_(count), arguments_(arguments) {}

  int count() const noexcept { return count_; }
  bool has(int position) const noexcept { return position < count_; }
  bool is_null(int position) const noexcept { return type(position) == SQLITE_NULL; }
  bool is_text(int position) const noexcept { return type(position) == SQLITE_TEXT; }
  bool is_whole(int position) const noexcept { return type(position) == SQLITE_INTEGER; }
  bool any_null() const noexcept;

  /// A text is read in the user's locale; 13 where it is no number.
  double number(int position) const;
  /// Halves to even; 6 beyond 32 bits.
  std::int32_t whole(int position) const;
  std::int64_t whole64(int position) const noexcept { return sqlite3_value_int64(arguments_[position]); }
  /// Days within the calendar; a text is read in the user's locale. 13 where it is no date, 6 beyond the calendar.
  double date(int position) const;
  /// A number as the user writes it. Lives until the next call on this object for a number, else as the call.
  std::string_view text(int position);
  sqlite3_value* raw(int position) const noexcept { return arguments_[position]; }

  void result(double number) noexcept { sqlite3_result_double(context_, number); }
  void result(std::int32_t number) noexcept { sqlite3_result_int(context_, number); }
  void result(std::int64_t number) noexcept { sqlite3_result_int64(context_, number); }
  void result(std::string_view text) noexcept;
  void result_null() noexcept { sqlite3_result_null(context_); }
  /// The argument as it came.
  void result_argument(int position) noexcept { sqlite3_result_value(context_, arguments_[position]); }
  sqlite3_context* context() const noexcept { return context_; }

 private:
  int type(int position) const noexcept { return sqlite3_value_type(arguments_[position]); }

  sqlite3_context* context_;
  int count_;
  sqlite3_value** arguments_;
  std::string buffer_;
};

/// Reports the exception that is being handled as the call's error.
void report_current_exception(sqlite3_context* context) noexcept;

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
void register_numbering(sqlite3* connection);

/// Raises the error of a failed registration.
void check_registered(int result);

inline constexpr int function_flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;

}  // namespace engine::embedded::jet_sql
