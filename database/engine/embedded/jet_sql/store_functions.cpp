// These functions convert and check what is stored in a field. StoredRowWriter writes them around the values.
#include <cmath>
#include <limits>
#include <optional>

#include "database/engine/date_text.h"
#include "database/engine/embedded/jet_sql/sqlite_functions.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"
#include "support/user_locale.h"

namespace engine::embedded::jet_sql {

namespace {

double number_to_store(FunctionCall& call) {
  if (!call.is_text(0)) return call.number(0);
  const std::optional<double> number = support::parse_number(call.text(0));
  if (!number) raise(error_number::conversion);
  return *number;
}

template <typename Whole>
void store_whole(FunctionCall& call) {
  const double rounded = support::round_half_even(number_to_store(call));
  if (!(rounded >= std::numeric_limits<Whole>::min() && rounded <= std::numeric_limits<Whole>::max())) {
    raise(error_number::conversion);
  }
  call.result(static_cast<std::int32_t>(rounded));
}

void store_boolean(FunctionCall& call) {
  if (call.is_text(0)) {
    const std::string_view text = call.text(0);
    if (support::equal_ignoring_case(text, "true")) return call.result(-1);
    if (support::equal_ignoring_case(text, "false")) return call.result(0);
  }
  call.result(number_to_store(call) != 0 ? -1 : 0);
}

void store_single(FunctionCall& call) {
  const auto single = static_cast<float>(number_to_store(call));
  if (!std::isfinite(single)) raise(error_number::conversion);
  call.result(static_cast<double>(single));
}

void store_double(FunctionCall& call) {
  const double number = number_to_store(call);
  if (!std::isfinite(number)) raise(error_number::conversion);
  call.result(number);
}

void store_date(FunctionCall& call) {
  const std::optional<Date> date = call.is_text(0) ? parse_user_date(call.text(0)) : Date{call.number(0)};
  if (!date || !in_calendar(date->days)) raise(error_number::conversion);
  call.result(*date);
}

/// Arguments: the text, the largest number of characters (0: any number), whether it may be empty, the field's name.
void store_text(FunctionCall& call) {
  const std::string_view text = call.text(0);
  const std::int64_t size = call.whole64(1);
  if (text.empty() && call.whole64(2) == 0) raise(error_number::zero_length, call.text(3));
  if (size > 0 && text.size() > static_cast<std::size_t>(size) &&
      support::character_count(text) > static_cast<std::size_t>(size)) {
    raise(error_number::field_too_small, call.text(3));
  }
  call.result_argument(0);
}

void cut_text(FunctionCall& call) {
  const std::int64_t size = call.whole64(1);
  if (size <= 0) return call.result_argument(0);
  call.result(support::first_characters(call.text(0), static_cast<std::size_t>(size)));
}

/// Arguments: the value, the error for Null, the field's name.
void required(FunctionCall& call) {
  if (call.is_null(0)) raise(static_cast<error_number::Number>(call.whole64(1)), call.text(2));
  call.result_argument(0);
}

/// Arguments: the condition, and the number and text of the error where it is false.
void check_rule(FunctionCall& call) {
  if (!call.is_null(0) && call.number(0) == 0) {
    throw support::RuntimeError(static_cast<int>(call.whole64(1)), std::string(call.text(2)));
  }
  call.result(1);
}

constexpr ScalarRow store_rows[] = {
    row<store_boolean>("jet_store_boolean", 1),
    row<store_whole<std::uint8_t>>("jet_store_byte", 1),
    row<store_whole<std::int16_t>>("jet_store_integer", 1),
    row<store_whole<std::int32_t>>("jet_store_long", 1),
    row<store_single>("jet_store_single", 1),
    row<store_double>("jet_store_double", 1),
    row<store_date>("jet_store_date", 1),
    row<store_text>("jet_store_text", 4),
    row<cut_text>("jet_cut_text", 2),
    row<required>("jet_required", 3, NullRule::IsTaken),
    row<check_rule>("jet_check_rule", 3, NullRule::IsTaken),
};

}  // namespace

const std::span<const ScalarRow> store_functions = store_rows;

}  // namespace engine::embedded::jet_sql
