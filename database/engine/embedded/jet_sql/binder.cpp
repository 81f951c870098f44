#include "database/engine/embedded/jet_sql/binder.h"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

#include "database/engine/embedded/jet_sql/output_columns.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

void Binder::bind(SelectStatement& statement) {
  bind_query(*statement.query, nullptr);
  expressions_.raise_unknown_names();
}

void Binder::bind(InsertStatement& statement) {
  if (statement.query != nullptr) {
    bind_query(*statement.query, nullptr);
  } else {
    Select nothing;
    Scope scope{.select = &nothing, .visible = {}, .aggregate_error = error_number::aggregate_in_expression};
    for (const ExpressionPtr& value : statement.values) expressions_.bind(value, scope);
  }
  expressions_.raise_unknown_names();
}

void Binder::bind(UpdateStatement& statement) {
  Scope scope{.select = &statement.rows, .visible = {}, .aggregate_error = error_number::aggregate_in_expression};
  bind_rows(statement.rows, scope);
  for (Assignment& assignment : statement.assignments) {
    if (!expressions_.find_column(scope, assignment.target)) expressions_.add_unknown_name(assignment.target.column);
    expressions_.bind(assignment.value, scope);
  }
  expressions_.raise_unknown_names();
}

void Binder::bind(DeleteStatement& statement) {
  Scope scope{.select = &statement.rows, .visible = {}};
  bind_rows(statement.rows, scope);
  expressions_.raise_unknown_names();
}

void Binder::bind_default(Expression& expression) {
  expressions_.take_functions_without_parentheses();
  Select nothing;
  Scope scope{.select = &nothing, .visible = {}, .aggregate_error = error_number::aggregate_in_expression};
  expressions_.bind(expression, scope);
  expressions_.raise_unknown_names();
}

void Binder::bind_rule(const ExpressionPtr& condition, Select& row) {
  expressions_.take_functions_without_parentheses();
  Scope scope{
      .select = &row, .visible = {&row.sources.front()}, .aggregate_error = error_number::aggregate_in_expression};
  expressions_.bind_criterion(condition, scope);
  expressions_.raise_unknown_names();
}

const TableDefinition& Binder::table(std::string_view name) const {
  const TableDefinition* const found = catalogue_.find_table(name);
  if (found == nullptr) raise(error_number::unknown_table, name);
  return *found;
}

void Binder::bind_query(QueryTree& query, Scope* outer) {
  for (const auto& select : query.selects) {
    bind_select(query, *select, outer);
    query.tables = std::max(query.tables, select->tables);
  }
  if (query.selects.size() > 1) {
    unite_outputs(query);
    bind_union_order(query);
  } else {
    query.outputs = query.selects.front()->outputs;
  }
}

void Binder::bind_select(QueryTree& query, Select& select, Scope* outer) {
  Scope scope{.outer = outer, .select = &select, .visible = {}};
  bind_rows(select, scope);
  scope.aggregate_error = error_number::aggregate_in_group_by;
  scope.aliases = true;
  for (const ExpressionPtr& group : select.group_by) expressions_.bind(group, scope);
  scope.aggregate_error = error_number::none;
  bind_items(select, scope);
  if (select.having != nullptr) expressions_.bind_criterion(select.having, scope);
  if (select.pivot != nullptr) bind_pivot(*select.pivot, scope);
  const auto has_aggregate = [](const SelectItem& item) {
    return item.expression != nullptr && item.expression->has_aggregate;
  };
  select.grouped = !select.group_by.empty() || select.having != nullptr ||
                   std::any_of(select.items.begin(), select.items.end(), has_aggregate);
  collect_outputs(select);
  if (query.selects.size() == 1) bind_order(query, select, scope);
  if (select.grouped) check_grouping(select, query);
  if (select.distinct_row && select.sources.size() > 1)
    raise(error_number::not_supported, "DISTINCTROW over several tables");
  if (select.pivot != nullptr) add_headings(select, headings_);
}

void Binder::bind_pivot(Pivot& pivot, Scope& scope) {
  expressions_.bind(pivot.value, scope);
  if (!pivot.value->has_aggregate) raise(error_number::transform_syntax, "the value has no aggregate");
  const error_number::Number aggregate_error =
      std::exchange(scope.aggregate_error, error_number::aggregate_in_group_by);
  expressions_.bind(pivot.head, scope);
  scope.aggregate_error = aggregate_error;
}

void Binder::bind_items(Select& select, Scope& scope) {
  for (SelectItem& item : select.items) {
    if (item.expression != nullptr && item.state == SelectItem::State::Unbound) bind_item(item, scope);
  }
}

void Binder::bind_item(SelectItem& item, Scope& scope) {
  item.state = SelectItem::State::InProgress;
  const error_number::Number aggregate_error = std::exchange(scope.aggregate_error, error_number::none);
  expressions_.bind(item.expression, scope);
  scope.aggregate_error = aggregate_error;
  item.state = SelectItem::State::Bound;
}

void Binder::bind_rows(Select& rows, Scope& scope) {
  for (const TableReferencePtr& reference : rows.from) bind_from(*reference, scope);
  if (rows.where == nullptr) return;
  const error_number::Number aggregate_error = std::exchange(scope.aggregate_error, error_number::aggregate_in_where);
  expressions_.bind_criterion(rows.where, scope);
  scope.aggregate_error = aggregate_error;
}

void Binder::bind_from(TableReference& reference, Scope& scope) {
  std::visit(Overloaded{[&](NamedTable& named) {
                          const TableDefinition& definition = table(named.table);
                          named.source = &add_source(scope, named.alias.empty() ? definition.name : named.alias);
                          named.source->table = &definition;
                          for (const FieldDefinition& field : definition.fields) {
                            named.source->columns.push_back({field.name, type_of_field(field), &field});
                          }
                          scope.count_tables(1);
                        },
                        [&](DerivedTable& derived) {
                          bind_query(*derived.query, scope.outer);
                          derived.source = &add_source(scope, derived.alias);
                          for (const OutputColumn& output : derived.query->outputs) {
                            derived.source->columns.push_back({output.name, output.type, nullptr});
                          }
                          scope.count_tables(derived.query->tables);
                        },
                        [&](Join& join) { bind_join(join, scope); }},
             reference.node);
}

/// The condition may name only the tables of the join.
void Binder::bind_join(Join& join, Scope& scope) {
  const std::size_t first = scope.visible.size();
  bind_from(*join.left, scope);
  bind_from(*join.right, scope);
  Scope inner{
      .outer = scope.outer, .select = scope.select, .visible = {}, .aggregate_error = error_number::aggregate_in_join};
  inner.visible.assign(scope.visible.begin() + static_cast<std::ptrdiff_t>(first), scope.visible.end());
  expressions_.bind_criterion(join.condition, inner);
}

Source& Binder::add_source(Scope& scope, std::string name) {
  for (const Source* const other : scope.visible) {
    if (!name.empty() && support::equal_ignoring_case(other->name, name)) raise(error_number::repeated_table, name);
  }
  Source& source = scope.select->sources.emplace_back();
  source.name = std::move(name);
  source.sqlite_name = fmt::format("s{}", ++source_count_);
  scope.visible.push_back(&source);
  return source;
}

void Binder::bind_order(QueryTree& query, Select& select, Scope& scope) {
  for (OrderItem& item : query.order_by) {
    if (std::holds_alternative<Literal>(item.expression->node) && is_output(item, select.outputs)) continue;
    scope.aggregate_error = select.grouped ? error_number::none : error_number::aggregate_in_order_by;
    expressions_.bind(item.expression, scope);
    for (std::size_t i = 0; i < select.outputs.size() && !item.output; ++i) {
      const OutputColumn& output = select.outputs[i];
      const auto* const name = std::get_if<ColumnName>(&behind_alias(*item.expression).node);
      const bool same_column =
          name != nullptr && name->source != nullptr && name->source == output.source && name->index == output.index;
      if (same_column || (output.expression != nullptr && same_expression(*item.expression, *output.expression))) {
        item.output = i;
      }
    }
    if (select.distinct && !item.output) raise(error_number::order_with_distinct);
  }
}

void Binder::bind_union_order(QueryTree& query) {
  for (OrderItem& item : query.order_by) {
    if (is_output(item, query.outputs)) continue;
    const auto* const name = std::get_if<ColumnName>(&item.expression->node);
    if (name == nullptr) raise(error_number::order_by_syntax);
    expressions_.add_unknown_name(name->column);
  }
}

}  // namespace engine::embedded::jet_sql
