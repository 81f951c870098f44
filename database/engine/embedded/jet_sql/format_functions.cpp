// Format(value [, picture [, first day of the week [, first week of the year]]]).
#include "database/engine/embedded/jet_sql/sqlite_functions.h"
#include "database/engine/format/format.h"

namespace engine::embedded::jet_sql {

namespace {

WeekRule weeks_of(const FunctionCall& call) {
  WeekRule weeks;
  if (call.has(2)) weeks.first_day = first_weekday_of(call.whole(2));
  if (call.has(3)) weeks.first_week = first_week_of(call.whole(3));
  return weeks;
}

void format_value(FunctionCall& call, const Value& value) {
  for (int position = 1; position < call.count(); ++position) {
    if (call.is_null(position)) return call.result_null();
  }
  const std::string picture(call.has(1) ? call.text(1) : std::string_view());
  const std::string text = format(value, picture, weeks_of(call));
  // Null stays Null unless the picture has words for it.
  if (text.empty() && is_null(value)) return call.result_null();
  call.result(std::string_view(text));
}

void format_any(FunctionCall& call) {
  if (call.is_null(0)) return format_value(call, Null{});
  if (call.is_text(0)) return format_value(call, std::string(call.text(0)));
  format_value(call, call.number(0));
}

void format_as_date(FunctionCall& call) {
  if (call.is_null(0)) return format_value(call, Null{});
  format_value(call, call.date(0));
}

constexpr ScalarRow format_rows[] = {
    row<format_any>("jet_format", 1, NullRule::IsTaken),
    row<format_any>("jet_format", 2, NullRule::IsTaken),
    row<format_any>("jet_format", 3, NullRule::IsTaken),
    row<format_any>("jet_format", 4, NullRule::IsTaken),
    row<format_as_date>("jet_format_date", 1, NullRule::IsTaken),
    row<format_as_date>("jet_format_date", 2, NullRule::IsTaken),
    row<format_as_date>("jet_format_date", 3, NullRule::IsTaken),
    row<format_as_date>("jet_format_date", 4, NullRule::IsTaken),
};

}  // namespace

const std::span<const ScalarRow> format_functions = format_rows;

}  // namespace engine::embedded::jet_sql
