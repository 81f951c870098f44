#include "database/engine/embedded/jet_sql/condition_writer.h"

#include <algorithm>
#include <optional>

#include "database/engine/embedded/jet_sql/collation.h"
#include "database/engine/embedded/jet_sql/expression_writer.h"

namespace engine::embedded::jet_sql {

namespace {

std::string_view sqlite_operator(BinaryOperator op) noexcept {
  switch (op) {
    case BinaryOperator::Equal:
      return " = ";
    case BinaryOperator::NotEqual:
      return " <> ";
    case BinaryOperator::Less:
      return " < ";
    case BinaryOperator::Greater:
      return " > ";
    case BinaryOperator::LessOrEqual:
      return " <= ";
    default:
      return " >= ";
  }
}

/// Yes or No where the expression is a constant that is one of them as a number.
std::optional<bool> truth_of(const Expression& expression) noexcept {
  const Literal* const literal = as_literal(expression);
  if (literal == nullptr) return std::nullopt;
  if (const auto* yes = std::get_if<bool>(&literal->value)) return *yes;
  const auto* const whole = std::get_if<std::int64_t>(&literal->value);
  if (whole == nullptr || (*whole != 0 && *whole != -1)) return std::nullopt;
  return *whole == -1;
}

std::optional<double> number_of(const Literal& literal) noexcept {
  if (const auto* whole = std::get_if<std::int64_t>(&literal.value)) return static_cast<double>(*whole);
  if (const auto* date = std::get_if<DateLiteral>(&literal.value)) return date->days;
  if (const auto* number = std::get_if<double>(&literal.value)) return *number;
  return std::nullopt;
}

enum class BoundOrder { Unknown, Ascending, Descending };

/// The order of two constant bounds.
BoundOrder order_of(const Expression& low, const Expression& high) noexcept {
  const Literal* const first = as_literal(low);
  const Literal* const second = as_literal(high);
  if (first == nullptr || second == nullptr) return BoundOrder::Unknown;
  const auto* const first_text = std::get_if<std::string>(&first->value);
  const auto* const second_text = std::get_if<std::string>(&second->value);
  if (first_text != nullptr && second_text != nullptr) {
    return compare_texts(*first_text, *second_text) <= 0 ? BoundOrder::Ascending : BoundOrder::Descending;
  }
  const auto first_number = number_of(*first);
  const auto second_number = number_of(*second);
  if (!first_number || !second_number) return BoundOrder::Unknown;
  return *first_number <= *second_number ? BoundOrder::Ascending : BoundOrder::Descending;
}

/// A column and at most eight whole numbers. SQLite compares these sooner than it looks them up in a list.
bool is_short(const InList& list) noexcept {
  constexpr std::size_t most = 8;
  const Kind kind = list.value->type.kind;
  return std::holds_alternative<ColumnName>(list.value->node) && list.items.size() <= most &&
         (kind == Kind::Byte || kind == Kind::Integer || kind == Kind::Long) &&
         std::ranges::all_of(list.items, [](const ExpressionPtr& item) {
           const Literal* const literal = as_literal(*item);
           return literal != nullptr && std::holds_alternative<std::int64_t>(literal->value);
         });
}

bool is_variant(const Expression& expression) noexcept { return expression.type.kind == Kind::Variant; }

}  // namespace

void ConditionWriter::condition(const Expression& expression) {
  const Expression& tested = behind_alias(expression);
  if (is_predicate(tested)) {
    predicate(tested);
  } else {
    expressions_.value(tested);
  }
}

void ConditionWriter::predicate(const Expression& expression) {
  std::visit(Overloaded{[&](const Unary& node) {
                          sql_.write("(NOT ");
                          condition(*node.operand);
                          sql_.write(")");
                        },
                        [&](const Binary& node) { is_logical(node.op) ? logical(node) : comparison(node); },
                        [&](const Between& node) { between(node); }, [&](const Like& node) { like(node); },
                        [&](const NullTest& node) {
                          sql_.write("(");
                          expressions_.value(*node.value);
                          sql_.write(node.negated ? " IS NOT NULL)" : " IS NULL)");
                        },
                        [&](const InList& node) { in_list(node); }, [&](const InSelect& node) { in_select(node); },
                        [&](const Quantified& node) { quantified(node); },
                        [&](const Exists& node) {
                          sql_.write("(EXISTS (");
                          expressions_.subselect(*node.query);
                          sql_.write("))");
                        },
                        [&](const Call& node) {
                          sql_.write("(");
                          expressions_.value(*node.arguments.front());
                          sql_.write(" IS NULL)");
                        },
                        [](const auto&) {}},
             expression.node);
}

/// NOT makes 0 or 1 of any number, so that conditions can be compared.
void ConditionWriter::logical(const Binary& binary) {
  const bool compared = binary.op == BinaryOperator::Xor || binary.op == BinaryOperator::Eqv;
  const bool left_negated = compared || binary.op == BinaryOperator::Imp;
  sql_.write(left_negated ? "((NOT " : "(");
  condition(*binary.left);
  if (left_negated) sql_.write(")");
  switch (binary.op) {
    case BinaryOperator::And:
      sql_.write(" AND ");
      break;
    case BinaryOperator::Xor:
      sql_.write(" <> ");
      break;
    case BinaryOperator::Eqv:
      sql_.write(" = ");
      break;
    default:
      sql_.write(" OR ");
  }
  if (compared) sql_.write("(NOT ");
  condition(*binary.right);
  sql_.write(compared ? "))" : ")");
}

void ConditionWriter::comparison(const Binary& binary) {
  const Expression& left = *binary.left;
  const Expression& right = *binary.right;
  if (truth_comparison(binary, left, right) || truth_comparison(binary, right, left)) return;
  if (is_variant(left) || is_variant(right)) {
    sql_.write("(jet_compare(");
    expressions_.value(left);
    sql_.write(", ");
    expressions_.value(right);
    sql_.write(")").write(sqlite_operator(binary.op)).write("0)");
    return;
  }
  sql_.write("(");
  expressions_.operand(left, right.type);
  sql_.write(sqlite_operator(binary.op));
  expressions_.operand(right, left.type);
  sql_.write(left.type.is_text() || right.type.is_text() ? " COLLATE JET)" : ")");
}

/// A condition that is compared with Yes or No is written as the condition or its opposite. For "isnull(d)=0" this lets
/// SQLite use an index.
bool ConditionWriter::truth_comparison(const Binary& binary, const Expression& tested, const Expression& truth) {
  const bool equal = binary.op == BinaryOperator::Equal;
  const std::optional<bool> yes = truth_of(truth);
  if ((!equal && binary.op != BinaryOperator::NotEqual) || !yes || !is_predicate(tested)) return false;
  const bool as_it_stands = equal == *yes;
  sql_.write(as_it_stands ? "(" : "(NOT ");
  condition(tested);
  sql_.write(")");
  return true;
}

void ConditionWriter::between(const Between& between) {
  sql_.write(between.negated ? "(NOT (" : "((");
  if (is_variant(*between.value) || is_variant(*between.low) || is_variant(*between.high)) {
    // A value lies between the bounds, in either order, where it does not lie on the same side of both.
    for (const ExpressionPtr* bound : {&between.low, &between.high}) {
      sql_.write(bound == &between.low ? "jet_compare(" : " * jet_compare(");
      expressions_.value(*between.value);
      sql_.write(", ");
      expressions_.value(**bound);
      sql_.write(")");
    }
    sql_.write(" <= 0))");
    return;
  }
  expressions_.collated(*between.value);
  sql_.write(" BETWEEN ");
  bounds(between);
  sql_.write("))");
}

void ConditionWriter::bounds(const Between& between) {
  const ValueType& type = between.value->type;
  const BoundOrder order = order_of(*between.low, *between.high);
  if (order != BoundOrder::Unknown) {
    const bool ascending = order == BoundOrder::Ascending;
    expressions_.operand(ascending ? *between.low : *between.high, type);
    sql_.write(" AND ");
    expressions_.operand(ascending ? *between.high : *between.low, type);
    return;
  }
  // SQLite's min and max of several values are Null where one value is.
  for (const std::string_view function : {"min(", "max("}) {
    sql_.write(function == "max(" ? " AND " : "").write(function);
    expressions_.operand(*between.low, type);
    sql_.write(between.low->type.is_text() ? " COLLATE JET, " : ", ");
    expressions_.operand(*between.high, type);
    sql_.write(")");
  }
}

void ConditionWriter::in_list(const InList& list_node) {
  if (is_short(list_node)) {
    sql_.write(list_node.negated ? "(NOT (" : "((");
    sql_.list(list_node.items, " OR ", [&](const ExpressionPtr& item) {
      expressions_.operand(*list_node.value, item->type);
      sql_.write(" = ");
      expressions_.operand(*item, list_node.value->type);
    });
    sql_.write("))");
    return;
  }
  sql_.write("(");
  expressions_.collated(*list_node.value);
  sql_.write(list_node.negated ? " NOT IN (" : " IN (");
  sql_.list(list_node.items, ", ",
            [&](const ExpressionPtr& item) { expressions_.operand(*item, list_node.value->type); });
  sql_.write("))");
}

void ConditionWriter::in_select(const InSelect& in) {
  sql_.write("(");
  expressions_.collated(*in.value);
  sql_.write(in.negated ? " NOT IN (" : " IN (");
  expressions_.subselect(*in.query);
  sql_.write("))");
}

/// One true comparison decides ANY, one false comparison decides ALL; after that one with Null decides.
void ConditionWriter::quantified(const Quantified& quantified) {
  const OutputColumn& column = quantified.query->outputs.front();
  const bool by_function = is_variant(*quantified.value) || column.type.kind == Kind::Variant;
  const bool text = quantified.value->type.is_text() || column.type.is_text();
  sql_.write(quantified.all ? "(SELECT CASE WHEN min(c) = 0 THEN 0" : "(SELECT CASE WHEN max(c) = 1 THEN 1");
  sql_.write(" WHEN count(*) > count(c) THEN NULL ELSE ").write(quantified.all ? "1" : "0");
  sql_.write(by_function ? " END FROM (SELECT jet_compare(" : " END FROM (SELECT (");
  expressions_.operand(*quantified.value, column.type);
  sql_.write(by_function ? ", " : sqlite_operator(quantified.op)).write("jet_each.");
  sql_.name(column.name);
  if (by_function) sql_.write(")").write(sqlite_operator(quantified.op)).write("0");
  if (!by_function) sql_.write(text ? " COLLATE JET)" : ")");
  sql_.write(" AS c FROM (");
  expressions_.subselect(*quantified.query);
  sql_.write(") AS jet_each))");
}

void ConditionWriter::like(const Like& like) {
  sql_.write(like.negated ? "(NOT jet_like(" : "(jet_like(");
  expressions_.text(*like.pattern);
  sql_.write(", ");
  expressions_.text(*like.value);
  sql_.write("))");
}

}  // namespace engine::embedded::jet_sql
