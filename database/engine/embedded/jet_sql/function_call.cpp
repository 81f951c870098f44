#include "database/engine/embedded/jet_sql/function_call.h"

#include <cmath>
#include <exception>
#include <limits>
#include <new>

#include "database/engine/embedded/jet_sql/calendar.h"
#include "database/engine/embedded/jet_sql/collation.h"
#include "database/engine/embedded/jet_sql/conversion.h"
#include "database/engine/embedded/jet_sql/jet_error.h"
#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "support/user_locale.h"

namespace engine::embedded::jet_sql {

namespace {

int collate(void*, int left_size, const void* left, int right_size, const void* right) noexcept {
  return compare_texts({static_cast<const char*>(left), static_cast<std::size_t>(left_size)},
                       {static_cast<const char*>(right), static_cast<std::size_t>(right_size)});
}

}  // namespace

bool FunctionCall::any_null() const noexcept {
  for (int position = 0; position < count_; ++position) {
    if (is_null(position)) return true;
  }
  return false;
}

double FunctionCall::number(int position) const {
  if (!is_text(position)) return sqlite3_value_double(arguments_[position]);
  const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(arguments_[position]));
  const auto size = static_cast<std::size_t>(sqlite3_value_bytes(arguments_[position]));
  const auto value = number_of({text != nullptr ? text : "", text != nullptr ? size : 0});
  if (!value) fail(error_type_mismatch);
  return *value;
}

std::int32_t FunctionCall::whole(int position) const {
  const double rounded = support::round_half_even(number(position));
  if (!(rounded >= std::numeric_limits<std::int32_t>::min() && rounded <= std::numeric_limits<std::int32_t>::max())) {
    fail(error_overflow);
  }
  return static_cast<std::int32_t>(rounded);
}

double FunctionCall::date(int position) const {
  double days = 0;
  if (is_text(position)) {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(arguments_[position]));
    const auto parsed = date_of(text != nullptr ? text : "");
    if (!parsed) fail(error_type_mismatch);
    days = *parsed;
  } else {
    days = sqlite3_value_double(arguments_[position]);
  }
  if (!is_date(days)) fail(error_overflow);
  return days;
}

std::string_view FunctionCall::text(int position) {
  if (!is_text(position)) return buffer_ = number_text(sqlite3_value_double(arguments_[position]));
  const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(arguments_[position]));
  if (text == nullptr) throw std::bad_alloc();
  return {text, static_cast<std::size_t>(sqlite3_value_bytes(arguments_[position]))};
}

void FunctionCall::result(std::string_view text) noexcept {
  sqlite3_result_text64(context_, text.data() != nullptr ? text.data() : "", text.size(), SQLITE_TRANSIENT,
                        SQLITE_UTF8);
}

void report_current_exception(sqlite3_context* context) noexcept {
  try {
    throw;
  } catch (const support::RuntimeError& error) {
    try {
      const std::string text = "jet:" + std::to_string(error.number()) + ":" + error.what();
      sqlite3_result_error(context, text.c_str(), -1);
    } catch (...) {
      sqlite3_result_error_nomem(context);
    }
  } catch (...) {
    sqlite3_result_error_nomem(context);
  }
}

void check_registered(int result) {
  constexpr int out_of_memory = 7;
  if (result != SQLITE_OK) throw support::RuntimeError(out_of_memory, "Out of memory.");
}

void register_functions(sqlite3* connection) {
  check_registered(sqlite3_create_collation_v2(connection, collation_name, SQLITE_UTF8, nullptr, collate, nullptr));
  for (const auto functions :
       {number_functions(), text_functions(), date_functions(), format_functions(), store_functions()}) {
    for (const ScalarRow& function : functions) {
      check_registered(sqlite3_create_function_v2(connection, function.name, function.count, function_flags, nullptr,
                                                  function.function, nullptr, nullptr, nullptr));
    }
  }
  register_aggregates(connection);
  register_numbering(connection);
}

}  // namespace engine::embedded::jet_sql
