#include "support/measured_value.h"

#include <array>
#include <limits>

#include "support/user_locale.h"

namespace support {

namespace {

struct ValueFormat {
  std::string_view unit;
  int default_decimals;
};

// By ValueKind. Kinds that are usually given with a fraction show one decimal by default.
constexpr std::array<ValueFormat, 7> value_formats = {
    {{" mg/dL", 0}, {" mmol/L", 1}, {" %", 1}, {" mg/l", 0}, {" kg", 1}, {" g", 0}, {" lbs", 1}}};

}  // namespace

std::string to_mg_dl(double mmol_l) {
  const double whole = round_half_even(mmol_l * mg_dl_per_mmol_l);
  const bool fits =
      whole >= std::numeric_limits<std::int16_t>::min() && whole <= std::numeric_limits<std::int16_t>::max();
  return fits ? number_text(whole) : std::string();
}

std::string to_mmol_l(double mg_dl) {
  const auto rounded = parse_number(fixed_text(mg_dl * mmol_l_per_mg_dl, 1));
  return rounded ? number_text(static_cast<float>(*rounded)) : std::string();
}

std::string format_value(double value, ValueKind kind, int decimals, bool show_unit) {
  const ValueFormat& format = value_formats[static_cast<std::size_t>(kind)];
  const int places = decimals > 0 ? decimals : format.default_decimals;
  std::string text = value > 0 ? fixed_text(value, places) : number_text(value);
  return show_unit ? text.append(format.unit) : text;
}

}  // namespace support
