#include "database/engine/embedded/jet_sql/function_call.h"

#include <fmt/core.h>

#include <exception>
#include <limits>
#include <new>
#include <optional>

#include "database/engine/date_text.h"
#include "database/engine/embedded/jet_sql/conversion.h"
#include "database/engine/engine_error.h"
#include "support/user_locale.h"

namespace engine::embedded::jet_sql {

bool FunctionCall::any_null() const noexcept {
  for (int position = 0; position < count_; ++position) {
    if (is_null(position)) return true;
  }
  return false;
}

double FunctionCall::number(int position) const {
  if (!is_text(position)) return sqlite3_value_double(arguments_[position]);
  const std::optional<double> number = support::parse_number(stored_text(position));
  if (!number) raise(error_number::type_mismatch);
  return *number;
}

std::int32_t FunctionCall::whole(int position) const {
  const double rounded = support::round_half_even(number(position));
  if (!(rounded >= std::numeric_limits<std::int32_t>::min() && rounded <= std::numeric_limits<std::int32_t>::max())) {
    raise(error_number::overflow);
  }
  return static_cast<std::int32_t>(rounded);
}

Date FunctionCall::date(int position) const {
  const std::optional<Date> date =
      is_text(position) ? parse_user_date(stored_text(position)) : Date{sqlite3_value_double(arguments_[position])};
  if (!date) raise(error_number::type_mismatch);
  if (!in_calendar(date->days)) raise(error_number::overflow);
  return *date;
}

std::string_view FunctionCall::text(int position) {
  if (is_text(position)) return stored_text(position);
  return buffer_ = number_text(sqlite3_value_double(arguments_[position]));
}

std::string_view FunctionCall::stored_text(int position) const {
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
      const std::string text = fmt::format("{}{}:{}", own_error_mark, error.number(), error.what());
      sqlite3_result_error(context, text.c_str(), -1);
    } catch (...) {
      sqlite3_result_error_nomem(context);
    }
  } catch (...) {
    sqlite3_result_error_nomem(context);
  }
}

}  // namespace engine::embedded::jet_sql
