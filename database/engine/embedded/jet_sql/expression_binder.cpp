#include "database/engine/embedded/jet_sql/expression_binder.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "database/engine/embedded/jet_sql/binder.h"
#include "database/engine/embedded/jet_sql/expression_type.h"
#include "database/engine/embedded/jet_sql/function_table.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

/// Aliases may stack trees on each other. SQLite takes 1000 levels; one level here needs at most four of them.
constexpr int most_levels = 200;

constexpr std::size_t most_tables = 32;

void check_comparable(const ValueType& left, const ValueType& right) {
  if ((left.is_text() && right.is_number()) || (left.is_number() && right.is_text()))
    raise(error_number::criterion_mismatch);
}

void check_condition(const ValueType& type) {
  if (type.is_text()) raise(error_number::criterion_mismatch);
}

void require_one_column(const QueryTree& query) {
  if (query.outputs.size() != 1) raise(error_number::subquery_columns);
}

ValueType fixed_type(const FunctionRow& row) {
  const bool never_null = row.form == FunctionForm::IsNull || row.form == FunctionForm::Now ||
                          row.form == FunctionForm::Today || row.form == FunctionForm::TimeOfDay || row.name == "count";
  ValueType type = type_of_kind(row.result, row.size).with_null(!never_null);
  return type;
}

ValueType type_of_first(const FunctionRow& row, const ValueType& first) {
  const bool number = argument_letter(row, 0) != 'x';
  if (number && (first.is_text() || first.kind == Kind::Variant)) return type_of_kind(Kind::Double);
  // The absolute value of the lowest Integer does not fit into an Integer.
  if (row.name == "abs" && first.is_whole()) {
    return type_of_whole(0, std::max(std::abs(first.low), std::abs(first.high))).with_null(first.nullable);
  }
  ValueType type = first.with_null(true);
  // The whole number below the first moment of the calendar is not a date.
  if (number) type.in_calendar = false;
  return type;
}

ValueType type_of_text(const FunctionRow& row, const ValueType& first) {
  ValueType type = first.kind == Kind::Text ? first : type_of_kind(row.result);
  return type.with_null(true);
}

/// The type of a call's result, by the types of its arguments.
ValueType type_of_call(const Call& call) {
  const FunctionRow& row = *call.row;
  if (row.rule == ResultRule::Fixed) return fixed_type(row);
  if (row.rule == ResultRule::FirstArgument) return type_of_first(row, call.arguments.front()->type);
  if (row.rule == ResultRule::FirstText) return type_of_text(row, call.arguments.front()->type);
  ValueType type;
  for (std::size_t i = 0; i < call.arguments.size(); ++i) {
    if (argument_letter(row, i) == 'x')
      type = i == 0 ? call.arguments[i]->type : common_type(type, call.arguments[i]->type);
  }
  return type.with_null(true);
}

}  // namespace

void Scope::count_tables(std::size_t tables) const {
  if (select == nullptr) return;
  select->tables += tables;
  if (select->tables > most_tables) raise(error_number::too_complex);
}

void ExpressionBinder::declare(const std::vector<std::string>& parameters) {
  for (const std::string& name : parameters) parameters_.insert(support::to_lower(name));
}

void ExpressionBinder::add_unknown_name(std::string_view name) { unknown_names_.insert(support::to_lower(name)); }

void ExpressionBinder::raise_unknown_names() const {
  if (!unknown_names_.empty()) raise(error_number::too_few_parameters, std::to_string(unknown_names_.size()));
}

void ExpressionBinder::bind(Expression& expression, Scope& scope) {
  expression.height = 1;
  std::visit([&](auto& node) { bind_node(expression, node, scope); }, expression.node);
}

void ExpressionBinder::bind_criterion(const ExpressionPtr& expression, Scope& scope) {
  bind(expression, scope);
  check_condition(expression->type);
}

void ExpressionBinder::contain(Expression& whole, int height) const {
  whole.height = std::max(whole.height, height + 1);
  if (whole.height > most_levels) raise(error_number::too_complex);
}

void ExpressionBinder::contain(Expression& whole, const ExpressionPtr& part) {
  contain(whole, part->height);
  whole.has_aggregate = whole.has_aggregate || part->has_aggregate;
}

void ExpressionBinder::bind_node(Expression& expression, Literal& literal, Scope&) {
  expression.type = type_of_literal(literal);
}

void ExpressionBinder::bind_node(Expression& expression, ColumnName& name, Scope& scope) {
  if (name.table.empty() && parameters_.contains(support::to_lower(name.column)))
    return take_parameter(expression, name);
  for (Scope* place = &scope; place != nullptr; place = place->outer) {
    if (!find_column(*place, name)) {
      if (place != &scope || !find_alias(scope, name)) continue;
      contain(expression, name.alias_of->height - 1);
      expression.type = name.alias_of->type;
      expression.has_aggregate = name.alias_of->has_aggregate;
      if (expression.has_aggregate && scope.aggregate_error != error_number::none) raise(scope.aggregate_error);
      return;
    }
    expression.type = name.source->columns[name.index].type;
    for (Scope* inner = &scope; inner != place; inner = inner->outer) {
      inner->select->outer_columns.push_back(&expression);
    }
    return;
  }
  if (find_function_without_parentheses(expression, name)) return bind(expression, scope);
  if (const std::optional<bool> constant = constant_of(name)) {
    expression.node = Literal{*constant};
    return bind(expression, scope);
  }
  take_parameter(expression, name);
}

/// Takes the name for a parameter, which has no value.
void ExpressionBinder::take_parameter(Expression& expression, const ColumnName& name) {
  expression.type = type_of_kind(Kind::Variant);
  add_unknown_name(name.column);
}

bool ExpressionBinder::find_column(const Scope& scope, ColumnName& name) const {
  bool found = false;
  for (const Source* const source : scope.visible) {
    if (!name.table.empty() && !support::equal_ignoring_case(source->name, name.table)) continue;
    for (std::size_t index = 0; index < source->columns.size(); ++index) {
      if (!support::equal_ignoring_case(source->columns[index].name, name.column)) continue;
      if (found) raise(error_number::ambiguous_field, name.column);
      found = true;
      name.source = source;
      name.index = index;
      break;
    }
  }
  return found;
}

bool ExpressionBinder::find_alias(Scope& scope, ColumnName& name) {
  if (!scope.aliases || !name.table.empty()) return false;
  for (SelectItem& item : scope.select->items) {
    if (item.alias.empty() || !support::equal_ignoring_case(item.alias, name.column)) continue;
    if (item.state == SelectItem::State::InProgress) raise(error_number::circular_alias, name.column);
    if (item.state == SelectItem::State::Unbound) queries_.bind_item(item, scope);
    name.alias_of = item.expression.get();
    return true;
  }
  return false;
}

bool ExpressionBinder::find_function_without_parentheses(Expression& expression, const ColumnName& name) {
  const FunctionRow* const row = find_function(name.column);
  if (!functions_without_parentheses_ || row == nullptr || !row->arguments.empty() || !name.table.empty()) return false;
  expression.node = Call{.function = name.column, .arguments = {}};
  return true;
}

void ExpressionBinder::bind_node(Expression& expression, Unary& unary, Scope& scope) {
  bind(unary.operand, scope);
  contain(expression, unary.operand);
  const ValueType& type = unary.operand->type;
  if (unary.op == UnaryOperator::Not) {
    check_condition(type);
    expression.type = boolean_type(type.nullable);
  } else {
    expression.type = unary.op == UnaryOperator::Minus ? type_of_negative(type) : type;
  }
}

void ExpressionBinder::bind_node(Expression& expression, Binary& binary, Scope& scope) {
  bind(binary.left, scope);
  bind(binary.right, scope);
  contain(expression, binary.left);
  contain(expression, binary.right);
  if (is_comparison(binary.op)) check_comparable(binary.left->type, binary.right->type);
  if (is_logical(binary.op)) {
    check_condition(binary.left->type);
    check_condition(binary.right->type);
  }
  expression.type = type_of_binary(binary.op, binary.left->type, binary.right->type);
}

void ExpressionBinder::bind_node(Expression& expression, Between& between, Scope& scope) {
  for (const ExpressionPtr* part : {&between.value, &between.low, &between.high}) {
    bind(*part, scope);
    contain(expression, *part);
    check_comparable(between.value->type, (*part)->type);
  }
  check_comparable(between.low->type, between.high->type);
  expression.type = boolean_type(true);
}

void ExpressionBinder::bind_node(Expression& expression, Like& like, Scope& scope) {
  bind(like.value, scope);
  bind(like.pattern, scope);
  contain(expression, like.value);
  contain(expression, like.pattern);
  expression.type = boolean_type(true);
}

void ExpressionBinder::bind_node(Expression& expression, NullTest& test, Scope& scope) {
  bind(test.value, scope);
  contain(expression, test.value);
  expression.type = boolean_type(false);
}

void ExpressionBinder::bind_node(Expression& expression, InList& list, Scope& scope) {
  bind(list.value, scope);
  contain(expression, list.value);
  for (const ExpressionPtr& item : list.items) {
    bind(item, scope);
    contain(expression, item);
    check_comparable(list.value->type, item->type);
  }
  expression.type = boolean_type(true);
}

void ExpressionBinder::bind_subselect(Expression& whole, QueryTree& query, Scope& scope) {
  queries_.bind_query(query, &scope);
  scope.count_tables(query.tables);
  contain(whole, query.height);
}

void ExpressionBinder::bind_node(Expression& expression, InSelect& in, Scope& scope) {
  bind(in.value, scope);
  bind_subselect(expression, *in.query, scope);
  contain(expression, in.value);
  require_one_column(*in.query);
  check_comparable(in.value->type, in.query->outputs.front().type);
  expression.type = boolean_type(true);
}

void ExpressionBinder::bind_node(Expression& expression, Quantified& quantified, Scope& scope) {
  bind(quantified.value, scope);
  bind_subselect(expression, *quantified.query, scope);
  contain(expression, quantified.value);
  require_one_column(*quantified.query);
  check_comparable(quantified.value->type, quantified.query->outputs.front().type);
  // The value is written inside the subselect. SQLite needs a column to see that an aggregate does not belong to the
  // subselect.
  if (has_aggregate_without_column(*quantified.value)) {
    raise(error_number::not_supported, "an aggregate of no field before ANY or ALL");
  }
  expression.type = boolean_type(true);
}

void ExpressionBinder::bind_node(Expression& expression, Exists& exists, Scope& scope) {
  bind_subselect(expression, *exists.query, scope);
  expression.type = boolean_type(false);
}

void ExpressionBinder::bind_node(Expression& expression, ScalarSelect& select, Scope& scope) {
  bind_subselect(expression, *select.query, scope);
  require_one_column(*select.query);
  expression.type = select.query->outputs.front().type.with_null(true);
}

void ExpressionBinder::bind_node(Expression& expression, Call& call, Scope& scope) {
  call.row = find_function(call.function);
  if (call.row == nullptr) raise(error_number::unknown_function, call.function);
  const FunctionRow& row = *call.row;
  const bool counts_rows = call.star && row.name == "count";
  const bool one_too_many = !call.arguments.empty() && argument_letter(row, call.arguments.size() - 1) == '\0';
  const bool half_pair = row.form == FunctionForm::Switch && call.arguments.size() % 2 != 0;
  if (!counts_rows && (call.star || call.arguments.size() < row.required || one_too_many || half_pair)) {
    raise(error_number::expression_syntax, "wrong number of arguments for " + call.function);
  }
  if (row.form == FunctionForm::Aggregate) {
    if (scope.aggregate_error != error_number::none) raise(scope.aggregate_error);
    const std::size_t outer_columns = scope.select->outer_columns.size();
    const error_number::Number aggregate_error =
        std::exchange(scope.aggregate_error, error_number::aggregate_in_expression);
    bind_arguments(call, scope);
    scope.aggregate_error = aggregate_error;
    // SQLite would count such an aggregate to the query around this one.
    if (scope.select->outer_columns.size() != outer_columns) raise(error_number::aggregate_in_expression);
    if (row.arguments == "n" && call.arguments.front()->type.is_text()) raise(error_number::criterion_mismatch);
    expression.has_aggregate = true;
  } else {
    bind_arguments(call, scope);
  }
  for (const ExpressionPtr& argument : call.arguments) contain(expression, argument);
  if (row.form == FunctionForm::Conversion && call.arguments.front()->type.kind == Kind::Null &&
      is_same_for_all_rows(*call.arguments.front())) {
    raise(error_number::invalid_null);
  }
  expression.type = counts_rows ? type_of_kind(Kind::Long).with_null(false) : type_of_call(call);
}

void ExpressionBinder::bind_arguments(Call& call, Scope& scope) {
  for (std::size_t i = 0; i < call.arguments.size(); ++i) {
    bind(call.arguments[i], scope);
    if (argument_letter(*call.row, i) == 'c') check_condition(call.arguments[i]->type);
  }
}

}  // namespace engine::embedded::jet_sql
