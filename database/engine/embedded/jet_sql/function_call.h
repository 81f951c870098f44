// One call of a function of the dialect by SQLite: its arguments, its result and its error.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "database/engine/date.h"

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

  /// Reads a text in the user's locale. Raises 13 where it is no number.
  double number(int position) const;
  /// Rounds halves to even. Raises 6 beyond 32 bits.
  std::int32_t whole(int position) const;
  std::int64_t whole64(int position) const noexcept { return sqlite3_value_int64(arguments_[position]); }
  /// Reads a text in the user's locale. Raises 13 where it is no date, 6 outside the calendar.
  Date date(int position) const;
  /// A number becomes a text as the user writes it. That text lives until the next number is asked for on this object;
  /// any other text lives as long as the call.
  std::string_view text(int position);

  void result(double number) noexcept { sqlite3_result_double(context_, number); }
  void result(Date date) noexcept { result(date.days); }
  void result(std::int32_t number) noexcept { sqlite3_result_int(context_, number); }
  void result(std::int64_t number) noexcept { sqlite3_result_int64(context_, number); }
  void result(std::string_view text) noexcept;
  void result_null() noexcept { sqlite3_result_null(context_); }
  /// Returns the argument unchanged.
  void result_argument(int position) noexcept { sqlite3_result_value(context_, arguments_[position]); }
  sqlite3_context* context() const noexcept { return context_; }

 private:
  /// Precondition: is_text.
  std::string_view stored_text(int position) const;
  int type(int position) const noexcept { return sqlite3_value_type(arguments_[position]); }

  sqlite3_context* context_;
  int count_;
  sqlite3_value** arguments_;
  std::string buffer_;
};

/// Reports the exception that is being handled as the call's error, in the form "jet:NUMBER:description" that
/// error_of() reads.
void report_current_exception(sqlite3_context* context) noexcept;

inline constexpr std::string_view own_error_mark = "jet:";

}  // namespace engine::embedded::jet_sql
