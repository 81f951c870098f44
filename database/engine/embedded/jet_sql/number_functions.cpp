#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "database/engine/embedded/jet_sql/collation.h"
#include "database/engine/embedded/jet_sql/conversion.h"
#include "database/engine/embedded/jet_sql/sqlite_functions.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"
#include "support/user_locale.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr int most_round_decimals = 22;

double finite(double value) {
  if (!std::isfinite(value)) raise(error_number::overflow);
  return value;
}

void number(FunctionCall& call) {
  if (call.is_text(0)) {
    call.result(call.number(0));
  } else {
    call.result_argument(0);
  }
}

void single(FunctionCall& call) {
  const auto value = static_cast<float>(call.number(0));
  call.result(finite(static_cast<double>(value)));
}

void widen(FunctionCall& call) { call.result(widened(call.number(0))); }

void divide(FunctionCall& call) {
  const double divisor = call.number(1);
  if (divisor == 0) raise(error_number::division_by_zero);
  call.result(finite(call.number(0) / divisor));
}

void whole_divide(FunctionCall& call) {
  const std::int64_t divisor = call.whole(1);
  if (divisor == 0) raise(error_number::division_by_zero);
  const std::int64_t quotient = call.whole(0) / divisor;
  if (quotient > std::numeric_limits<std::int32_t>::max()) raise(error_number::overflow);
  call.result(quotient);
}

void modulo(FunctionCall& call) {
  const std::int64_t divisor = call.whole(1);
  if (divisor == 0) raise(error_number::division_by_zero);
  call.result(call.whole(0) % divisor);
}

void power(FunctionCall& call) {
  const double base = call.number(0);
  const double exponent = call.number(1);
  if (base == 0 && exponent < 0) raise(error_number::division_by_zero);
  const double value = std::pow(base, exponent);
  if (std::isnan(value)) raise(error_number::invalid_call);
  call.result(finite(value));
}

void add(FunctionCall& call) {
  if (call.is_text(0) && call.is_text(1)) {
    std::string text(call.text(0));
    call.result(text += call.text(1));
  } else {
    call.result(finite(call.number(0) + call.number(1)));
  }
}

/// Checks the result of one of SQLite's operators. SQLite's arithmetic goes on with infinity, and makes Null of what is
/// no number.
void check_finite(FunctionCall& call) { call.result(finite(call.number(0))); }

void check_date(FunctionCall& call) { call.result(call.date(0)); }

/// Negative, 0 or positive. A text beside a number is error 3464.
void compare_values(FunctionCall& call) {
  if (call.is_text(0) != call.is_text(1)) raise(error_number::criterion_mismatch);
  if (call.is_text(0)) {
    call.result(compare_texts(call.text(0), call.text(1)));
  } else {
    const double left = call.number(0);
    const double right = call.number(1);
    call.result(left < right ? -1 : left > right ? 1 : 0);
  }
}

double rounded_to(double value, int decimals) {
  const double scale = std::pow(10.0, decimals);
  // A number of this size has no such decimals.
  if (!std::isfinite(value * scale)) return value;
  // Rounds the decimal number that the user sees, in which 2.675 is not a little less than 2.675.
  const double scaled = support::parse_number(number_text(value * scale)).value_or(value * scale);
  return support::round_half_even(scaled) / scale;
}

void round(FunctionCall& call) {
  const int decimals = call.has(1) ? call.whole(1) : 0;
  if (decimals < 0 || decimals > most_round_decimals) raise(error_number::invalid_call);
  if (call.is_whole(0)) return call.result_argument(0);
  call.result(rounded_to(call.number(0), decimals));
}

/// Money has four decimals and fits into 64 bits.
void to_currency(FunctionCall& call) {
  constexpr double beyond = 922337203685477.625;
  const double value = rounded_to(call.number(0), 4);
  if (!(std::abs(value) < beyond)) raise(error_number::overflow);
  call.result(value);
}

/// The digits of a whole number of 16 or 32 bits. A negative number gives the digits of its two's complement.
template <int bits_of_digit>
void in_digits(FunctionCall& call) {
  const std::int32_t value = call.whole(0);
  std::uint32_t rest = call.whole64(1) == 16 ? static_cast<std::uint16_t>(value) : static_cast<std::uint32_t>(value);
  std::string digits;
  do {
    digits.insert(digits.begin(), "0123456789ABCDEF"[rest % (1U << bits_of_digit)]);
    rest >>= bits_of_digit;
  } while (rest != 0);
  call.result(std::string_view(digits));
}

/// Partition(number, start, stop, interval): the range in which the number lies, " 20: 29", with the numbers
/// right-aligned.
void partition(FunctionCall& call) {
  const std::int64_t number = call.whole(0);
  const std::int64_t start = call.whole(1);
  const std::int64_t stop = call.whole(2);
  const std::int64_t interval = call.whole(3);
  if (start < 0 || stop <= start || interval < 1) raise(error_number::invalid_call);
  const std::size_t width = std::to_string(stop + 1).size();
  std::string low;
  std::string high;
  if (number < start) {
    high = std::to_string(start - 1);
  } else if (number > stop) {
    low = std::to_string(stop + 1);
  } else {
    const std::int64_t first = start + (number - start) / interval * interval;
    low = std::to_string(first);
    high = std::to_string(std::min(first + interval - 1, stop));
  }
  call.result(std::string_view(fmt::format("{:>{}}:{:>{}}", low, width, high, width)));
}

template <double (*function)(double)>
void to_whole(FunctionCall& call) {
  if (call.is_whole(0)) return call.result_argument(0);
  call.result(function(call.number(0)));
}
double down(double value) { return std::floor(value); }
double towards_zero(double value) { return std::trunc(value); }

void sign(FunctionCall& call) {
  const double value = call.number(0);
  call.result(value > 0 ? 1 : value < 0 ? -1 : 0);
}

void square_root(FunctionCall& call) {
  const double value = call.number(0);
  if (value < 0) raise(error_number::invalid_call);
  call.result(std::sqrt(value));
}

void logarithm(FunctionCall& call) {
  const double value = call.number(0);
  if (value <= 0) raise(error_number::invalid_call);
  call.result(std::log(value));
}

template <double (*function)(double)>
void apply(FunctionCall& call) {
  call.result(finite(function(call.number(0))));
}
double exponential(double value) { return std::exp(value); }
double sine(double value) { return std::sin(value); }
double cosine(double value) { return std::cos(value); }
double tangent(double value) { return std::tan(value); }
double arc_tangent(double value) { return std::atan(value); }

template <int low, int high>
void rounded(FunctionCall& call) {
  const std::int32_t value = call.whole(0);
  if (value < low || value > high) raise(error_number::overflow);
  call.result(value);
}

void to_double(FunctionCall& call) { call.result(call.number(0)); }

void to_boolean(FunctionCall& call) {
  if (call.is_text(0)) {
    const std::string_view text = call.text(0);
    if (support::equal_ignoring_case(text, "true")) return call.result(-1);
    if (support::equal_ignoring_case(text, "false")) return call.result(0);
  }
  call.result(call.number(0) != 0 ? -1 : 0);
}

void val(FunctionCall& call) {
  if (call.is_text(0)) {
    call.result(leading_number(call.text(0)));
  } else {
    call.result(call.number(0));
  }
}

/// Writes a blank in place of the sign of a positive number, and no 0 before the point.
void str(FunctionCall& call) {
  const double value = call.number(0);
  std::string text = number_text(std::abs(value), '.');
  if (text.starts_with("0.")) text.erase(0, 1);
  call.result((value < 0 ? "-" : " ") + text);
}

void is_numeric(FunctionCall& call) {
  if (call.is_null(0)) return call.result(0);
  call.result(!call.is_text(0) || support::parse_number(call.text(0)) ? -1 : 0);
}

constexpr ScalarRow number_rows[] = {
    row<number>("jet_number", 1),
    row<single>("jet_single", 1),
    row<single>("jet_csng", 1),
    row<widen>("jet_widen", 1),
    row<divide>("jet_divide", 2),
    row<whole_divide>("jet_whole_divide", 2),
    row<modulo>("jet_modulo", 2),
    row<power>("jet_power", 2),
    row<add>("jet_add", 2),
    row<check_finite>("jet_finite", 1),
    row<check_date>("jet_in_calendar", 1),
    row<compare_values>("jet_compare", 2),
    row<round>("jet_round", 1),
    row<round>("jet_round", 2),
    row<to_currency>("jet_ccur", 1),
    row<in_digits<4>>("jet_hex", 2),
    row<in_digits<3>>("jet_oct", 2),
    row<partition>("jet_partition", 4),
    row<to_whole<down>>("jet_int", 1),
    row<to_whole<towards_zero>>("jet_fix", 1),
    row<sign>("jet_sgn", 1),
    row<square_root>("jet_sqr", 1),
    row<logarithm>("jet_log", 1),
    row<apply<exponential>>("jet_exp", 1),
    row<apply<sine>>("jet_sin", 1),
    row<apply<cosine>>("jet_cos", 1),
    row<apply<tangent>>("jet_tan", 1),
    row<apply<arc_tangent>>("jet_atn", 1),
    row<rounded<0, 255>>("jet_cbyte", 1),
    row<rounded<-32768, 32767>>("jet_cint", 1),
    row<rounded<std::numeric_limits<int>::min(), std::numeric_limits<int>::max()>>("jet_clng", 1),
    row<to_double>("jet_cdbl", 1),
    row<to_boolean>("jet_cbool", 1),
    row<val>("jet_val", 1),
    row<str>("jet_str", 1),
    row<is_numeric>("jet_isnumeric", 1, NullRule::IsTaken),
};

}  // namespace

const std::span<const ScalarRow> number_functions = number_rows;

}  // namespace engine::embedded::jet_sql
