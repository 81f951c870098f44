#include "database/engine/embedded/jet_sql/ast.h"

#include <algorithm>

#include "database/engine/embedded/jet_sql/function_table.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

/// Compares trees. Aliases can make a small tree stand for a huge one, so the work is bounded.
class Comparison {
 public:
  bool same(const Expression& one, const Expression& other) noexcept {
    const Expression& left = behind_alias(one);
    const Expression& right = behind_alias(other);
    if (&left == &right) return true;
    if (left.height != right.height || left.node.index() != right.node.index() || --budget_ < 0) return false;
    return std::visit(
        [&]<typename Node>(const Node& node) noexcept { return same_node(node, std::get<Node>(right.node)); },
        left.node);
  }

 private:
  bool same(const ExpressionPtr& left, const ExpressionPtr& right) noexcept { return same(*left, *right); }
  bool same(const std::vector<ExpressionPtr>& left, const std::vector<ExpressionPtr>& right) noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [this](const ExpressionPtr& one, const ExpressionPtr& other) { return same(*one, *other); });
  }

  bool same_node(const Literal& left, const Literal& right) noexcept { return left.value == right.value; }
  bool same_node(const ColumnName& left, const ColumnName& right) noexcept {
    return left.source != nullptr && left.source == right.source && left.index == right.index;
  }
  bool same_node(const Unary& left, const Unary& right) noexcept {
    return left.op == right.op && same(left.operand, right.operand);
  }
  bool same_node(const Binary& left, const Binary& right) noexcept {
    return left.op == right.op && same(left.left, right.left) && same(left.right, right.right);
  }
  bool same_node(const Between& left, const Between& right) noexcept {
    return left.negated == right.negated && same(left.value, right.value) && same(left.low, right.low) &&
           same(left.high, right.high);
  }
  bool same_node(const Like& left, const Like& right) noexcept {
    return left.negated == right.negated && same(left.value, right.value) && same(left.pattern, right.pattern);
  }
  bool same_node(const NullTest& left, const NullTest& right) noexcept {
    return left.negated == right.negated && same(left.value, right.value);
  }
  bool same_node(const InList& left, const InList& right) noexcept {
    return left.negated == right.negated && same(left.value, right.value) && same(left.items, right.items);
  }
  bool same_node(const Call& left, const Call& right) noexcept {
    return left.row == right.row && left.star == right.star && same(left.arguments, right.arguments);
  }
  bool same_node(const InSelect&, const InSelect&) noexcept { return false; }
  bool same_node(const Quantified&, const Quantified&) noexcept { return false; }
  bool same_node(const Exists&, const Exists&) noexcept { return false; }
  bool same_node(const ScalarSelect&, const ScalarSelect&) noexcept { return false; }

  int budget_ = 10000;
};

}  // namespace

const Expression& behind_alias(const Expression& expression) noexcept {
  const Expression* current = &expression;
  // Aliases that are bound cannot be circular, so this ends.
  while (const auto* name = std::get_if<ColumnName>(&current->node)) {
    if (name->alias_of == nullptr) break;
    current = name->alias_of;
  }
  return *current;
}

const Literal* as_literal(const Expression& expression) noexcept {
  return std::get_if<Literal>(&behind_alias(expression).node);
}

std::optional<bool> constant_of(const ColumnName& name) noexcept {
  if (name.quoted || !name.table.empty()) return std::nullopt;
  if (support::equal_ignoring_case(name.column, "yes")) return true;
  const bool no = support::equal_ignoring_case(name.column, "no") || support::equal_ignoring_case(name.column, "off");
  return no ? std::optional(false) : std::nullopt;
}

bool is_same_for_all_rows(const Expression& expression) noexcept {
  const Expression& shown = behind_alias(expression);
  if (std::holds_alternative<ColumnName>(shown.node)) return false;
  bool same = true;
  visit_parts(
      shown, [&](const Expression& part) { same = same && is_same_for_all_rows(part); },
      [&](const QueryTree&) { same = false; });
  return same;
}

bool has_aggregate_without_column(const Expression& expression) noexcept {
  const Expression& shown = behind_alias(expression);
  const auto* const call = std::get_if<Call>(&shown.node);
  if (call != nullptr && call->row->form == FunctionForm::Aggregate && is_same_for_all_rows(shown)) return true;
  bool found = false;
  visit_parts(
      shown, [&](const Expression& part) { found = found || has_aggregate_without_column(part); },
      [](const QueryTree&) {});
  return found;
}

bool has_subselect(const Expression& expression) noexcept {
  bool found = false;
  visit_parts(
      expression, [&](const Expression& part) { found = found || has_subselect(part); },
      [&](const QueryTree&) { found = true; });
  return found;
}

bool is_predicate(const Expression& expression) noexcept {
  return std::visit(Overloaded{[](const Literal&) { return false; }, [](const ColumnName&) { return false; },
                               [](const ScalarSelect&) { return false; },
                               [](const Unary& unary) { return unary.op == UnaryOperator::Not; },
                               [](const Binary& binary) { return binary.op <= BinaryOperator::GreaterOrEqual; },
                               [](const Call& call) { return call.row->form == FunctionForm::IsNull; },
                               [](const auto&) { return true; }},
                    behind_alias(expression).node);
}

bool same_expression(const Expression& left, const Expression& right) noexcept {
  return Comparison().same(left, right);
}

}  // namespace engine::embedded::jet_sql
