#include "database/engine/embedded/jet_sql/function_table.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>

namespace engine::embedded::jet_sql {

namespace {

using enum FunctionForm;
using enum ResultRule;

// Sorted by name: find_function relies on it.
constexpr FunctionRow function_rows[] = {
    {"abs", Plain, "abs", "n", 1, FirstArgument, Kind::Variant},
    {"asc", Plain, "jet_asc", "t", 1, Fixed, Kind::Integer},
    {"ascw", Plain, "jet_ascw", "t", 1, Fixed, Kind::Integer},
    {"atn", Plain, "jet_atn", "n", 1, Fixed, Kind::Double},
    {"avg", Aggregate, "jet_avg", "n", 1, Fixed, Kind::Double},
    {"cbool", Conversion, "jet_cbool", "x", 1, Fixed, Kind::Boolean},
    {"cbyte", Conversion, "jet_cbyte", "n", 1, Fixed, Kind::Byte},
    {"ccur", Conversion, "jet_ccur", "w", 1, Fixed, Kind::Double},
    {"cdate", Conversion, "jet_cdate", "x", 1, Fixed, Kind::Date},
    {"cdbl", Conversion, "jet_cdbl", "n", 1, Fixed, Kind::Double},
    {"choose", Choose, "", "nx*", 2, CommonType, Kind::Variant},
    {"chr", Plain, "jet_chr", "n", 1, Fixed, Kind::Text, 1},
    {"chrw", Plain, "jet_chrw", "n", 1, Fixed, Kind::Text, 1},
    {"cint", Conversion, "jet_cint", "n", 1, Fixed, Kind::Integer},
    {"clng", Conversion, "jet_clng", "n", 1, Fixed, Kind::Long},
    {"cos", Plain, "jet_cos", "n", 1, Fixed, Kind::Double},
    {"count", Aggregate, "count", "x", 1, Fixed, Kind::Long},
    {"csng", Conversion, "jet_csng", "n", 1, Fixed, Kind::Single},
    {"cstr", Conversion, "jet_cstr", "t", 1, Fixed, Kind::Text},
    {"cvdate", Plain, "jet_cdate", "x", 1, Fixed, Kind::Date},
    {"date", Today, "", "", 0, Fixed, Kind::Date},
    {"dateadd", Plain, "jet_dateadd", "tnd", 3, Fixed, Kind::Date},
    {"datediff", Plain, "jet_datediff", "tddnn", 3, Fixed, Kind::Long},
    {"datepart", Plain, "jet_datepart", "tdnn", 2, Fixed, Kind::Integer},
    {"dateserial", Plain, "jet_dateserial", "nnn", 3, Fixed, Kind::Date},
    {"datevalue", Plain, "jet_datevalue", "d", 1, Fixed, Kind::Date},
    {"day", Plain, "jet_day", "d", 1, Fixed, Kind::Integer},
    {"exp", Plain, "jet_exp", "n", 1, Fixed, Kind::Double},
    {"first", Aggregate, "jet_first", "x", 1, FirstArgument, Kind::Variant},
    {"fix", Plain, "jet_fix", "n", 1, FirstArgument, Kind::Variant},
    {"format", Plain, "jet_format", "vtnn", 1, Fixed, Kind::Text},
    {"hex", Plain, "jet_hex", "i", 1, Fixed, Kind::Text, 8},
    {"hour", Plain, "jet_hour", "d", 1, Fixed, Kind::Integer},
    {"iif", IIf, "", "cxx", 3, CommonType, Kind::Variant},
    {"instr", Plain, "jet_instr", "xttn", 2, Fixed, Kind::Long},
    {"instrrev", Plain, "jet_instrrev", "ttnn", 2, Fixed, Kind::Long},
    {"int", Plain, "jet_int", "n", 1, FirstArgument, Kind::Variant},
    {"isdate", Plain, "jet_isdate", "v", 1, Fixed, Kind::Boolean},
    {"isnull", IsNull, "", "x", 1, Fixed, Kind::Boolean},
    {"isnumeric", Plain, "jet_isnumeric", "x", 1, Fixed, Kind::Boolean},
    {"last", Aggregate, "jet_last", "x", 1, FirstArgument, Kind::Variant},
    {"lcase", Plain, "jet_lcase", "t", 1, FirstText, Kind::Memo},
    {"left", Plain, "jet_left", "tn", 2, FirstText, Kind::Memo},
    {"len", Plain, "jet_len", "t", 1, Fixed, Kind::Long},
    {"log", Plain, "jet_log", "n", 1, Fixed, Kind::Double},
    {"ltrim", Plain, "jet_ltrim", "t", 1, FirstText, Kind::Memo},
    {"max", Aggregate, "max", "x", 1, FirstArgument, Kind::Variant},
    {"mid", Plain, "jet_mid", "tnn", 2, FirstText, Kind::Memo},
    {"min", Aggregate, "min", "x", 1, FirstArgument, Kind::Variant},
    {"minute", Plain, "jet_minute", "d", 1, Fixed, Kind::Integer},
    {"month", Plain, "jet_month", "d", 1, Fixed, Kind::Integer},
    {"monthname", Plain, "jet_monthname", "nn", 1, Fixed, Kind::Text},
    {"now", Now, "", "", 0, Fixed, Kind::Date},
    {"nz", Nz, "", "xx", 1, CommonType, Kind::Variant},
    {"oct", Plain, "jet_oct", "i", 1, Fixed, Kind::Text, 11},
    {"partition", Plain, "jet_partition", "nnnn", 4, Fixed, Kind::Text, 23},
    {"replace", Plain, "jet_replace", "tttnnn", 3, Fixed, Kind::Memo},
    {"right", Plain, "jet_right", "tn", 2, FirstText, Kind::Memo},
    {"round", Plain, "jet_round", "wn", 1, FirstArgument, Kind::Variant},
    {"rtrim", Plain, "jet_rtrim", "t", 1, FirstText, Kind::Memo},
    {"second", Plain, "jet_second", "d", 1, Fixed, Kind::Integer},
    {"sgn", Plain, "jet_sgn", "n", 1, Fixed, Kind::Integer},
    {"sin", Plain, "jet_sin", "n", 1, Fixed, Kind::Double},
    {"space", Plain, "jet_space", "n", 1, Fixed, Kind::Memo},
    {"sqr", Plain, "jet_sqr", "n", 1, Fixed, Kind::Double},
    {"stdev", Aggregate, "jet_stdev", "n", 1, Fixed, Kind::Double},
    {"stdevp", Aggregate, "jet_stdevp", "n", 1, Fixed, Kind::Double},
    {"str", Plain, "jet_str", "w", 1, Fixed, Kind::Text, 24},
    {"strcomp", Plain, "jet_strcomp", "ttn", 2, Fixed, Kind::Integer},
    {"strconv", Plain, "jet_strconv", "tn", 2, FirstText, Kind::Memo},
    {"string", Plain, "jet_string", "nx", 2, Fixed, Kind::Memo},
    {"strreverse", Plain, "jet_strreverse", "t", 1, FirstText, Kind::Memo},
    {"sum", Aggregate, "jet_sum", "n", 1, Fixed, Kind::Double},
    {"switch", Switch, "", "cx*", 2, CommonType, Kind::Variant},
    {"tan", Plain, "jet_tan", "n", 1, Fixed, Kind::Double},
    {"time", TimeOfDay, "", "", 0, Fixed, Kind::Date},
    {"timeserial", Plain, "jet_timeserial", "nnn", 3, Fixed, Kind::Date},
    {"timevalue", Plain, "jet_timevalue", "d", 1, Fixed, Kind::Date},
    {"trim", Plain, "jet_trim", "t", 1, FirstText, Kind::Memo},
    {"ucase", Plain, "jet_ucase", "t", 1, FirstText, Kind::Memo},
    {"val", Plain, "jet_val", "t", 1, Fixed, Kind::Double},
    {"var", Aggregate, "jet_var", "n", 1, Fixed, Kind::Double},
    {"varp", Aggregate, "jet_varp", "n", 1, Fixed, Kind::Double},
    {"weekday", Plain, "jet_weekday", "dn", 1, Fixed, Kind::Integer},
    {"weekdayname", Plain, "jet_weekdayname", "nnn", 1, Fixed, Kind::Text},
    {"year", Plain, "jet_year", "d", 1, Fixed, Kind::Integer},
};

static_assert(std::ranges::is_sorted(function_rows, std::less{}, &FunctionRow::name));

constexpr std::size_t most_arguments = 60;

}  // namespace

const FunctionRow* find_function(std::string_view name) noexcept {
  if (name.ends_with('$')) name.remove_suffix(1);
  std::string lower(name.substr(0, 16));
  if (name.size() > lower.size()) return nullptr;
  for (char& character : lower) {
    if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
  }
  const auto* const found = std::ranges::lower_bound(function_rows, lower, std::less{}, &FunctionRow::name);
  return found != std::end(function_rows) && found->name == lower ? found : nullptr;
}

char argument_letter(const FunctionRow& row, std::size_t position) noexcept {
  if (position >= most_arguments) return '\0';
  const std::string_view letters = row.arguments;
  if (row.form == Switch) return letters[position % 2];
  if (letters.ends_with('*') && position + 1 >= letters.size()) return letters[letters.size() - 2];
  return position < letters.size() ? letters[position] : '\0';
}

}  // namespace engine::embedded::jet_sql
