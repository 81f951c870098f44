#include "database/engine/embedded/jet_sql/validation_rule.h"

#include <fmt/core.h>

#include <utility>

#include "database/engine/embedded/jet_sql/binder.h"
#include "database/engine/embedded/jet_sql/parser.h"
#include "database/engine/embedded/jet_sql/query_writer.h"
#include "database/engine/embedded/jet_sql/sql_text.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

class WithoutTables final : public Catalogue {
 public:
  const TableDefinition* find_table(std::string_view) const override { return nullptr; }
};

/// True for a constant or an expression of constants.
bool is_bare_value(const Expression& expression, const std::string& field) noexcept {
  if (const auto* const name = std::get_if<ColumnName>(&expression.node)) {
    return constant_of(*name) && !support::equal_ignoring_case(name->column, field);
  }
  const auto* const binary = std::get_if<Binary>(&expression.node);
  const bool works_out = binary != nullptr && !is_logical(binary->op) && !is_comparison(binary->op);
  const bool value =
      works_out || std::holds_alternative<Literal>(expression.node) || std::holds_alternative<Call>(expression.node);
  return value && is_same_for_all_rows(expression);
}

/// "a" OR "b" means that the field is one of them.
void compare_bare_values(ExpressionPtr& rule, const std::string& field) {
  if (auto* const binary = std::get_if<Binary>(&rule->node); binary != nullptr && is_logical(binary->op)) {
    compare_bare_values(binary->left, field);
    compare_bare_values(binary->right, field);
  } else if (auto* const unary = std::get_if<Unary>(&rule->node); unary != nullptr && unary->op == UnaryOperator::Not) {
    compare_bare_values(unary->operand, field);
  } else if (is_bare_value(*rule, field)) {
    auto name = std::make_unique<Expression>();
    name->node = ColumnName{.table = {}, .column = field};
    auto comparison = std::make_unique<Expression>();
    comparison->node = Binary{BinaryOperator::Equal, std::move(name), std::move(rule)};
    rule = std::move(comparison);
  }
}

Source row_of(const TableDefinition& table, const FieldDefinition* only) {
  Source row;
  row.name = table.name;
  row.sqlite_name = rule_row;
  row.table = &table;
  for (const FieldDefinition& field : table.fields) {
    if (only == nullptr || only == &field)
      row.columns.push_back({field.name, type_of_field(field).with_null(true), &field});
  }
  return row;
}

std::optional<Rule> compile(ExpressionPtr condition, const TableDefinition& table, const FieldDefinition* only) {
  const WithoutTables none;
  Select row;
  row.sources.push_back(row_of(table, only));
  Binder(none).bind_rule(condition, row);
  SqlText sql;
  QueryWriter(sql).conditions().condition(*condition);
  return Rule{sql.take(), error_number::none, {}};
}

void set_error(Rule& rule, const std::string& text, const std::string& own_text, const std::string& name) {
  rule.error = own_text.empty() ? error_number::rule_breached : error_number::rule_text;
  const std::string place = "'" + text + "' set for '" + name + "'";
  rule.message = engine_error(rule.error, own_text.empty() ? place : own_text).what();
}

}  // namespace

std::string Rule::raising() const {
  return fmt::format("jet_check_rule({}, {}, {})", condition, error, quoted_text(message));
}

std::optional<Rule> compile_rule(const FieldDefinition& field, const TableDefinition& table) {
  if (field.validation_rule.empty()) return std::nullopt;
  try {
    ExpressionPtr condition = Parser(field.validation_rule).parse_rule(field.name);
    compare_bare_values(condition, field.name);
    std::optional<Rule> rule = compile(std::move(condition), table, &field);
    set_error(*rule, field.validation_rule, field.validation_text, table.name + "." + field.name);
    return rule;
  } catch (const support::RuntimeError&) {
    return std::nullopt;
  }
}

std::optional<Rule> compile_rule(const TableDefinition& table) {
  if (table.validation_rule.empty()) return std::nullopt;
  try {
    std::optional<Rule> rule = compile(Parser(table.validation_rule).parse_lone_expression(), table, nullptr);
    set_error(*rule, table.validation_rule, table.validation_text, table.name);
    return rule;
  } catch (const support::RuntimeError&) {
    return std::nullopt;
  }
}

}  // namespace engine::embedded::jet_sql
