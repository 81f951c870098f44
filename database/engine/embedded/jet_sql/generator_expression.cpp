#include <cmath>
#include <utility>

#include "database/engine/embedded/jet_sql/function_table.h"
#include "database/engine/embedded/jet_sql/generator.h"

namespace engine::embedded::jet_sql {

namespace {

// Local time in whole seconds since 1899-12-30; SQLite gives one moment for the whole statement.
constexpr std::string_view seconds_now = "CAST(round((julianday('now', 'localtime') - 2415018.5) * 86400) AS INTEGER)";

/// A number of 1 or more that a constant surely is: dividing by it makes no number larger, nor another sign of it.
bool is_safe_divisor(const Expression& expression) noexcept {
  const Literal* const literal = as_literal(expression);
  if (literal == nullptr) return false;
  if (const auto* whole = std::get_if<std::int64_t>(&literal->value)) return *whole >= 1;
  const auto* number = std::get_if<double>(&literal->value);
  return number != nullptr && *number >= 1;
}

/// No sum or product of two such values is infinite.
bool is_bounded(const ValueType& type) noexcept {
  return type.is_whole() || type.kind == Kind::Single || type.kind == Kind::Null ||
         (type.kind == Kind::Date && type.in_calendar);
}

bool is_whole_type(const Expression& expression) noexcept { return expression.type.is_whole(); }

/// At most one row by its form: aggregates over all rows.
bool gives_one_row(const QueryTree& query) noexcept {
  return query.selects.size() == 1 && query.selects.front()->grouped && query.selects.front()->group_by.empty();
}

}  // namespace

void Generator::value(const Expression& expression) {
  if (is_predicate(expression)) {
    write("(-(");
    condition(expression);
    write("))");
    return;
  }
  std::visit(Overloaded{[&](const Literal& node) { literal(node); },
                        [&](const ColumnName& node) {
                          node.alias_of != nullptr ? value(*node.alias_of) : column(*node.source, node.index);
                        },
                        [&](const Unary& node) {
                          write(node.op == UnaryOperator::Minus ? "(-" : "(");
                          node.op == UnaryOperator::Minus ? number(*node.operand) : value(*node.operand);
                          write(")");
                        },
                        [&](const Binary& node) { binary(expression, node); }, [&](const Call& node) { call(node); },
                        [&](const ScalarSelect& node) { scalar(node); }, [](const auto&) {}},
             expression.node);
}

void Generator::column(const Source& source, std::size_t index) {
  write(source.sqlite_name).write(".");
  name(source.columns[index].name);
}

void Generator::number(const Expression& expression) {
  const bool converted = expression.type.is_text() || expression.type.kind == Kind::Variant;
  if (converted) write("jet_number(");
  value(expression);
  if (converted) write(")");
}

void Generator::text(const Expression& expression) {
  as_text(expression.type, [&] { value(expression); });
}

void Generator::operand(const Expression& expression, const ValueType& other) {
  const Literal* const constant = other.kind == Kind::Single ? as_literal(expression) : nullptr;
  const auto* const decimal = constant != nullptr ? std::get_if<double>(&constant->value) : nullptr;
  if (decimal == nullptr || !std::isfinite(static_cast<float>(*decimal))) return value(expression);
  number_literal(static_cast<float>(*decimal));
}

void Generator::literal(const Literal& literal) {
  std::visit(
      Overloaded{[&](std::monostate) { write("NULL"); }, [&](bool yes) { whole_literal(yes ? -1 : 0); },
                 [&](std::int64_t whole) { whole_literal(whole); }, [&](double decimal) { number_literal(decimal); },
                 [&](DateLiteral date) { number_literal(date.days); },
                 [&](const std::string& content) { text_literal(content); }},
      literal.value);
}

void Generator::binary(const Expression& expression, const Binary& binary) {
  switch (binary.op) {
    case BinaryOperator::Add:
      return add(expression.type, binary);
    case BinaryOperator::Subtract:
      return operation(expression.type, " - ", binary);
    case BinaryOperator::Multiply:
      return operation(expression.type, " * ", binary);
    case BinaryOperator::Divide:
      return divide(binary);
    case BinaryOperator::WholeDivide:
    case BinaryOperator::Modulo:
      return whole_divide(binary);
    case BinaryOperator::Power:
      return function("jet_power(", binary);
    default:
      write("jet_concat(");
      text(*binary.left);
      write(", ");
      text(*binary.right);
      write(")");
  }
}

void Generator::add(const ValueType& type, const Binary& binary) {
  if (type.kind != Kind::Variant && !type.is_text()) return operation(type, " + ", binary);
  const bool known = type.is_text();
  write(known ? "(" : "jet_add(");
  value(*binary.left);
  write(known ? " || " : ", ");
  value(*binary.right);
  write(")");
}

void Generator::operation(const ValueType& type, std::string_view sqlite_operator, const Binary& binary) {
  const bool checked = !is_bounded(binary.left->type) || !is_bounded(binary.right->type);
  if (type.kind == Kind::Single) write("jet_single");
  if (type.kind == Kind::Double && checked) write("jet_finite");
  if (type.kind == Kind::Date && checked) write("jet_in_calendar");
  write("(");
  // SQLite would give all digits of a product that a Double does not hold.
  if (type.kind == Kind::Double && binary.op == BinaryOperator::Multiply) write("1.0 * ");
  number(*binary.left);
  write(sqlite_operator);
  number(*binary.right);
  write(")");
}

void Generator::function(std::string_view sqlite_name, const Binary& binary) {
  write(sqlite_name);
  number(*binary.left);
  write(", ");
  number(*binary.right);
  write(")");
}

void Generator::divide(const Binary& binary) {
  if (!is_safe_divisor(*binary.right)) return function("jet_divide(", binary);
  write("(1.0 * ");
  number(*binary.left);
  write(" / ");
  number(*binary.right);
  write(")");
}

void Generator::whole_divide(const Binary& binary) {
  const bool divide = binary.op == BinaryOperator::WholeDivide;
  // SQLite's own operators cut towards 0 as well, but only where nothing has to be rounded first.
  if (is_whole_type(*binary.left) && is_whole_type(*binary.right) && is_safe_divisor(*binary.right)) {
    return operation(type_of_kind(Kind::Long), divide ? " / " : " % ", binary);
  }
  function(divide ? "jet_whole_divide(" : "jet_modulo(", binary);
}

void Generator::call(const Call& call) {
  switch (call.row->form) {
    case FunctionForm::Plain:
    case FunctionForm::Conversion:
      return plain_call(call);
    case FunctionForm::Aggregate:
      return aggregate(call);
    case FunctionForm::IIf:
    case FunctionForm::Switch:
      return case_call(call);
    case FunctionForm::Choose:
      return choose_call(call);
    case FunctionForm::Nz:
      return nz_call(call);
    case FunctionForm::Now:
      write("(").write(seconds_now).write(" / 86400.0)");
      return;
    case FunctionForm::Today:
      write("(").write(seconds_now).write(" / 86400 * 1.0)");
      return;
    case FunctionForm::TimeOfDay:
      write("(").write(seconds_now).write(" % 86400 / 86400.0)");
      return;
    case FunctionForm::IsNull:
      return;  // a condition
  }
}

/// In a cell of a crosstab over the cell's rows alone; without rows even a count is Null.
void Generator::aggregate(const Call& call) {
  const OutputColumn* const cell = std::exchange(cell_, nullptr);
  if (cell == nullptr) return plain_call(call);
  const bool counts = call.row->name == "count";
  if (counts) {
    write("(CASE WHEN count(*)");
    of_cell(*cell);
    write(" > 0 THEN ");
  }
  plain_call(call);
  of_cell(*cell);
  if (counts) write(" END)");
  cell_ = cell;
}

void Generator::of_cell(const OutputColumn& cell) {
  write(" FILTER (WHERE ");
  if (cell.heading) {
    text(*cell.pivot);
    write(" = ");
    text_literal(*cell.heading);
    write(" COLLATE JET)");
  } else {
    value(*cell.pivot);
    write(" IS NULL)");
  }
}

void Generator::plain_call(const Call& call) {
  // What rounds a Single works with the decimal number that the user sees.
  const bool single = call.row->rule == ResultRule::FirstArgument && argument_letter(*call.row, 0) == 'w' &&
                      call.arguments.front()->type.kind == Kind::Single;
  if (single) write("jet_single(");
  write(call.row->sqlite_name);
  const bool has_date_form = argument_letter(*call.row, 0) == 'v';
  if (has_date_form && call.arguments.front()->type.kind == Kind::Date) write("_date");
  write("(");
  if (call.star) write("*");
  bool first = true;
  for (std::size_t i = 0; i < call.arguments.size(); ++i) {
    if (!std::exchange(first, false)) write(", ");
    const Expression& given = *call.arguments[i];
    const bool refuses_null =
        call.row->form == FunctionForm::Conversion && given.type.nullable && is_same_for_all_rows(given);
    if (refuses_null) write("jet_required(");
    argument(given, argument_letter(*call.row, i));
    if (refuses_null) write(", 94, '')");
  }
  const bool aggregate = call.row->form == FunctionForm::Aggregate;
  if (aggregate && !call.star && call.arguments.front()->type.is_text()) write(" COLLATE JET");
  write(single ? "))" : ")");
}

void Generator::argument(const Expression& expression, char letter) {
  const bool unknown = expression.type.is_text() || expression.type.kind == Kind::Variant;
  if ((letter == 'w' || letter == 'v') && expression.type.kind == Kind::Single) {
    write("jet_widen(");
    value(expression);
    write(")");
  } else if (letter == 'n' || letter == 'w') {
    number(expression);
  } else if (letter == 'i') {
    number(expression);
    const bool narrow = expression.type.is_whole() && expression.type.kind != Kind::Long;
    write(narrow ? ", 16" : ", 32");
  } else if (letter == 't') {
    text(expression);
  } else if (letter == 'd' && unknown) {
    write("jet_date(");
    value(expression);
    write(")");
  } else {
    value(expression);
  }
}

/// IIf(condition, value, other value) and Switch(condition, value, …).
void Generator::case_call(const Call& call) {
  write("(CASE");
  for (std::size_t i = 0; i + 1 < call.arguments.size(); i += 2) {
    write(" WHEN ");
    condition(*call.arguments[i]);
    write(" THEN ");
    value(*call.arguments[i + 1]);
  }
  if (call.arguments.size() % 2 != 0) {
    write(" ELSE ");
    value(*call.arguments.back());
  }
  write(" END)");
}

void Generator::choose_call(const Call& call) {
  write("(CASE jet_fix(");
  number(*call.arguments.front());
  write(")");
  for (std::size_t i = 1; i < call.arguments.size(); ++i) {
    write(" WHEN ");
    whole_literal(static_cast<std::int64_t>(i));
    write(" THEN ");
    value(*call.arguments[i]);
  }
  write(" END)");
}

/// Without a second argument Null becomes 0, or the empty text where the first is a text.
void Generator::nz_call(const Call& call) {
  write("coalesce(");
  value(*call.arguments.front());
  write(", ");
  if (call.arguments.size() > 1) {
    value(*call.arguments.back());
  } else {
    write(call.arguments.front()->type.is_text() ? "''" : "0");
  }
  write(")");
}

void Generator::scalar(const ScalarSelect& scalar) {
  write("(");
  if (gives_one_row(*scalar.query)) {
    subselect(*scalar.query);
  } else {
    write("SELECT jet_only(");
    name(scalar.query->outputs.front().name);
    write(") FROM (");
    subselect(*scalar.query);
    write(")");
  }
  write(")");
}

void Generator::subselect(const QueryTree& inner) {
  const OutputColumn* const cell = std::exchange(cell_, nullptr);
  query(inner);
  cell_ = cell;
}

}  // namespace engine::embedded::jet_sql
