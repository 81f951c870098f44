#include "database/engine/embedded/jet_sql/expression_writer.h"

#include <cmath>
#include <utility>

#include "database/engine/embedded/jet_sql/condition_writer.h"
#include "database/engine/embedded/jet_sql/function_table.h"
#include "database/engine/embedded/jet_sql/query_writer.h"

namespace engine::embedded::jet_sql {

namespace {

// The local time in whole seconds since 1899-12-30. SQLite gives the same moment everywhere in one statement.
constexpr std::string_view seconds_now = "CAST(round((julianday('now', 'localtime') - 2415018.5) * 86400) AS INTEGER)";

/// True where the expression is a constant that is surely a number of 1 or more. Dividing by it makes no number larger
/// and changes no sign.
bool is_safe_divisor(const Expression& expression) noexcept {
  const Literal* const literal = as_literal(expression);
  if (literal == nullptr) return false;
  if (const auto* whole = std::get_if<std::int64_t>(&literal->value)) return *whole >= 1;
  const auto* number = std::get_if<double>(&literal->value);
  return number != nullptr && *number >= 1;
}

/// True where no sum or product of two such values can be infinite.
bool is_bounded(const ValueType& type) noexcept {
  return type.is_whole() || type.kind == Kind::Single || type.kind == Kind::Null ||
         (type.kind == Kind::Date && type.in_calendar);
}

bool is_whole_type(const Expression& expression) noexcept { return expression.type.is_whole(); }

/// True where the form of the query gives at most one row: aggregates over all rows.
bool gives_one_row(const QueryTree& query) noexcept {
  return query.selects.size() == 1 && query.selects.front()->grouped && query.selects.front()->group_by.empty();
}

}  // namespace

void ExpressionWriter::value(const Expression& expression) {
  if (is_predicate(expression)) {
    sql_.write("(-(");
    conditions_.condition(expression);
    sql_.write("))");
    return;
  }
  std::visit(Overloaded{[&](const Literal& node) { literal(node); },
                        [&](const ColumnName& node) {
                          node.alias_of != nullptr ? value(*node.alias_of) : column(*node.source, node.index);
                        },
                        [&](const Unary& node) {
                          sql_.write(node.op == UnaryOperator::Minus ? "(-" : "(");
                          node.op == UnaryOperator::Minus ? number(*node.operand) : value(*node.operand);
                          sql_.write(")");
                        },
                        [&](const Binary& node) { binary(expression, node); }, [&](const Call& node) { call(node); },
                        [&](const ScalarSelect& node) { scalar(node); }, [](const auto&) {}},
             expression.node);
}

void ExpressionWriter::output_value(const OutputColumn& shown) {
  const OutputColumn* const cell = std::exchange(cell_, shown.pivot != nullptr ? &shown : nullptr);
  value(*shown.expression);
  cell_ = cell;
}

void ExpressionWriter::column(const Source& source, std::size_t index) {
  sql_.write(source.sqlite_name).write(".");
  sql_.name(source.columns[index].name);
}

void ExpressionWriter::number(const Expression& expression) {
  const bool converted = expression.type.is_text() || expression.type.kind == Kind::Variant;
  if (converted) sql_.write("jet_number(");
  value(expression);
  if (converted) sql_.write(")");
}

void ExpressionWriter::collated(const Expression& expression) {
  value(expression);
  if (expression.type.is_text()) sql_.write(" COLLATE JET");
}

void ExpressionWriter::text(const Expression& expression) {
  as_text(expression.type, [&] { value(expression); });
}

void ExpressionWriter::operand(const Expression& expression, const ValueType& other) {
  const Literal* const constant = other.kind == Kind::Single ? as_literal(expression) : nullptr;
  const auto* const decimal = constant != nullptr ? std::get_if<double>(&constant->value) : nullptr;
  if (decimal == nullptr || !std::isfinite(static_cast<float>(*decimal))) return value(expression);
  sql_.number_literal(static_cast<float>(*decimal));
}

void ExpressionWriter::literal(const Literal& literal) {
  std::visit(
      Overloaded{[&](std::monostate) { sql_.write("NULL"); }, [&](bool yes) { sql_.whole_literal(yes ? -1 : 0); },
                 [&](std::int64_t whole) { sql_.whole_literal(whole); },
                 [&](double decimal) { sql_.number_literal(decimal); },
                 [&](DateLiteral date) { sql_.number_literal(date.days); },
                 [&](const std::string& content) { sql_.text_literal(content); }},
      literal.value);
}

void ExpressionWriter::binary(const Expression& expression, const Binary& binary) {
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
      sql_.write("jet_concat(");
      text(*binary.left);
      sql_.write(", ");
      text(*binary.right);
      sql_.write(")");
  }
}

void ExpressionWriter::add(const ValueType& type, const Binary& binary) {
  if (type.kind != Kind::Variant && !type.is_text()) return operation(type, " + ", binary);
  const bool known = type.is_text();
  sql_.write(known ? "(" : "jet_add(");
  value(*binary.left);
  sql_.write(known ? " || " : ", ");
  value(*binary.right);
  sql_.write(")");
}

void ExpressionWriter::operation(const ValueType& type, std::string_view sqlite_operator, const Binary& binary) {
  const bool checked = !is_bounded(binary.left->type) || !is_bounded(binary.right->type);
  if (type.kind == Kind::Single) sql_.write("jet_single");
  if (type.kind == Kind::Double && checked) sql_.write("jet_finite");
  if (type.kind == Kind::Date && checked) sql_.write("jet_in_calendar");
  sql_.write("(");
  // SQLite would keep digits of a whole product that a Double does not hold.
  if (type.kind == Kind::Double && binary.op == BinaryOperator::Multiply) sql_.write("1.0 * ");
  number(*binary.left);
  sql_.write(sqlite_operator);
  number(*binary.right);
  sql_.write(")");
}

void ExpressionWriter::function(std::string_view sqlite_name, const Binary& binary) {
  sql_.write(sqlite_name);
  number(*binary.left);
  sql_.write(", ");
  number(*binary.right);
  sql_.write(")");
}

void ExpressionWriter::divide(const Binary& binary) {
  if (!is_safe_divisor(*binary.right)) return function("jet_divide(", binary);
  sql_.write("(1.0 * ");
  number(*binary.left);
  sql_.write(" / ");
  number(*binary.right);
  sql_.write(")");
}

void ExpressionWriter::whole_divide(const Binary& binary) {
  const bool divide = binary.op == BinaryOperator::WholeDivide;
  // SQLite's own operators cut towards 0 as well, but they do not round their operands first.
  if (is_whole_type(*binary.left) && is_whole_type(*binary.right) && is_safe_divisor(*binary.right)) {
    return operation(type_of_kind(Kind::Long), divide ? " / " : " % ", binary);
  }
  function(divide ? "jet_whole_divide(" : "jet_modulo(", binary);
}

void ExpressionWriter::call(const Call& call) {
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
      sql_.write("(").write(seconds_now).write(" / 86400.0)");
      return;
    case FunctionForm::Today:
      sql_.write("(").write(seconds_now).write(" / 86400 * 1.0)");
      return;
    case FunctionForm::TimeOfDay:
      sql_.write("(").write(seconds_now).write(" % 86400 / 86400.0)");
      return;
    case FunctionForm::IsNull:
      return;  // a condition
  }
}

/// In a cell of a crosstab only the cell's rows count. Without rows even a count is Null there.
void ExpressionWriter::aggregate(const Call& call) {
  const OutputColumn* const cell = std::exchange(cell_, nullptr);
  if (cell == nullptr) return plain_call(call);
  const bool counts = call.row->name == "count";
  if (counts) {
    sql_.write("(CASE WHEN count(*)");
    of_cell(*cell);
    sql_.write(" > 0 THEN ");
  }
  plain_call(call);
  of_cell(*cell);
  if (counts) sql_.write(" END)");
  cell_ = cell;
}

void ExpressionWriter::of_cell(const OutputColumn& cell) {
  sql_.write(" FILTER (WHERE ");
  if (cell.heading) {
    text(*cell.pivot);
    sql_.write(" = ");
    sql_.text_literal(*cell.heading);
    sql_.write(" COLLATE JET)");
  } else {
    value(*cell.pivot);
    sql_.write(" IS NULL)");
  }
}

void ExpressionWriter::plain_call(const Call& call) {
  // A function that rounds a Single works with the decimal number that the user sees.
  const bool single = call.row->rule == ResultRule::FirstArgument && argument_letter(*call.row, 0) == 'w' &&
                      call.arguments.front()->type.kind == Kind::Single;
  if (single) sql_.write("jet_single(");
  sql_.write(call.row->sqlite_name);
  const bool has_date_form = argument_letter(*call.row, 0) == 'v';
  if (has_date_form && call.arguments.front()->type.kind == Kind::Date) sql_.write("_date");
  sql_.write("(");
  if (call.star) sql_.write("*");
  bool first = true;
  for (std::size_t i = 0; i < call.arguments.size(); ++i) {
    if (!std::exchange(first, false)) sql_.write(", ");
    const Expression& given = *call.arguments[i];
    const bool refuses_null =
        call.row->form == FunctionForm::Conversion && given.type.nullable && is_same_for_all_rows(given);
    if (refuses_null) sql_.write("jet_required(");
    argument(given, argument_letter(*call.row, i));
    if (refuses_null) sql_.write(", 94, '')");
  }
  const bool aggregate = call.row->form == FunctionForm::Aggregate;
  if (aggregate && !call.star && call.arguments.front()->type.is_text()) sql_.write(" COLLATE JET");
  sql_.write(single ? "))" : ")");
}

void ExpressionWriter::argument(const Expression& expression, char letter) {
  const bool unknown = expression.type.is_text() || expression.type.kind == Kind::Variant;
  if ((letter == 'w' || letter == 'v') && expression.type.kind == Kind::Single) {
    sql_.write("jet_widen(");
    value(expression);
    sql_.write(")");
  } else if (letter == 'n' || letter == 'w') {
    number(expression);
  } else if (letter == 'i') {
    number(expression);
    const bool narrow = expression.type.is_whole() && expression.type.kind != Kind::Long;
    sql_.write(narrow ? ", 16" : ", 32");
  } else if (letter == 't') {
    text(expression);
  } else if (letter == 'd' && unknown) {
    sql_.write("jet_date(");
    value(expression);
    sql_.write(")");
  } else {
    value(expression);
  }
}

/// Writes IIf(condition, value, other value) and Switch(condition, value, …).
void ExpressionWriter::case_call(const Call& call) {
  sql_.write("(CASE");
  for (std::size_t i = 0; i + 1 < call.arguments.size(); i += 2) {
    sql_.write(" WHEN ");
    conditions_.condition(*call.arguments[i]);
    sql_.write(" THEN ");
    value(*call.arguments[i + 1]);
  }
  if (call.arguments.size() % 2 != 0) {
    sql_.write(" ELSE ");
    value(*call.arguments.back());
  }
  sql_.write(" END)");
}

void ExpressionWriter::choose_call(const Call& call) {
  sql_.write("(CASE jet_fix(");
  number(*call.arguments.front());
  sql_.write(")");
  for (std::size_t i = 1; i < call.arguments.size(); ++i) {
    sql_.write(" WHEN ");
    sql_.whole_literal(static_cast<std::int64_t>(i));
    sql_.write(" THEN ");
    value(*call.arguments[i]);
  }
  sql_.write(" END)");
}

/// Without a second argument Null becomes 0, or the empty text where the first argument is a text.
void ExpressionWriter::nz_call(const Call& call) {
  sql_.write("coalesce(");
  value(*call.arguments.front());
  sql_.write(", ");
  if (call.arguments.size() > 1) {
    value(*call.arguments.back());
  } else {
    sql_.write(call.arguments.front()->type.is_text() ? "''" : "0");
  }
  sql_.write(")");
}

void ExpressionWriter::scalar(const ScalarSelect& scalar) {
  sql_.write("(");
  if (gives_one_row(*scalar.query)) {
    subselect(*scalar.query);
  } else {
    sql_.write("SELECT jet_only(");
    sql_.name(scalar.query->outputs.front().name);
    sql_.write(") FROM (");
    subselect(*scalar.query);
    sql_.write(")");
  }
  sql_.write(")");
}

void ExpressionWriter::subselect(const QueryTree& inner) {
  const OutputColumn* const cell = std::exchange(cell_, nullptr);
  queries_.query(inner);
  cell_ = cell;
}

}  // namespace engine::embedded::jet_sql
