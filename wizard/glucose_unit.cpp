#include "wizard/glucose_unit.h"

#include <cmath>
#include <limits>

#include "support/measured_value.h"
#include "support/user_locale.h"

namespace wizard {

namespace {

std::optional<std::int16_t> whole_number(double value) {
  const double rounded = support::round_half_even(value);
  using Limits = std::numeric_limits<std::int16_t>;
  if (!(rounded >= Limits::min() && rounded <= Limits::max())) return std::nullopt;
  return static_cast<std::int16_t>(rounded);
}

}  // namespace

std::string_view unit_caption(GlucoseUnit unit) noexcept { return unit == GlucoseUnit::MgDl ? "mg/dl" : "mmol/l"; }

std::optional<std::int16_t> in_mg_dl(std::string_view text, GlucoseUnit unit) {
  const auto number = support::parse_number(text);
  if (!number) return std::nullopt;
  return whole_number(unit == GlucoseUnit::MgDl ? *number : *number * support::mg_dl_per_mmol_l);
}

std::optional<std::string> converted(std::string_view text, GlucoseUnit to) {
  const auto number = support::parse_number(text);
  if (!number) return std::nullopt;
  std::string result = to == GlucoseUnit::MgDl ? support::to_mg_dl(*number) : support::to_mmol_l(*number);
  if (result.empty()) return std::nullopt;
  return result;
}

std::string largest_value(GlucoseUnit unit) {
  constexpr double most = std::numeric_limits<std::int16_t>::max();
  if (unit == GlucoseUnit::MgDl) return support::number_text(most);
  return support::number_text(std::floor(most / support::mg_dl_per_mmol_l * 10) / 10);
}

std::string smallest_value(GlucoseUnit unit) { return support::number_text(unit == GlucoseUnit::MgDl ? 1 : 0.1); }

std::string shown_value(std::int16_t mg_dl, GlucoseUnit unit) {
  return unit == GlucoseUnit::MgDl ? std::to_string(mg_dl) : support::to_mmol_l(mg_dl);
}

}  // namespace wizard
