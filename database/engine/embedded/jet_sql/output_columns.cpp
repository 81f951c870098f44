#include "database/engine/embedded/jet_sql/output_columns.h"

#include <fmt/core.h>

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "database/engine/date_text.h"
#include "database/engine/embedded/jet_sql/conversion.h"
#include "database/engine/embedded/jet_sql/function_table.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr std::size_t most_outputs = 1000;
constexpr std::size_t first_expression_number = 1000;

std::string qualified(const OutputColumn& output) { return output.source->name + "." + output.name; }

/// The name of a column without an alias; "" for an expression.
std::string natural_name(const Expression& expression) {
  const auto* const name = std::get_if<ColumnName>(&expression.node);
  if (name == nullptr) return {};
  return name->source != nullptr ? name->source->columns[name->index].name : name->column;
}

/// Writes the value as the dialect does where a value becomes a text.
std::string text_of(const Literal& literal) {
  return std::visit(
      Overloaded{[](std::monostate) { return std::string(); }, [](bool yes) { return std::string(yes ? "-1" : "0"); },
                 [](std::int64_t whole) { return number_text(static_cast<double>(whole)); },
                 [](double number) { return number_text(number); },
                 [](DateLiteral date) { return date_text(Date{date.days}); },
                 [](const std::string& text) { return text; }},
      literal.value);
}

std::set<std::string> names_of_several_sources(const std::vector<OutputColumn>& outputs) {
  std::map<std::string, const Source*> sources;
  std::set<std::string> shared;
  for (const OutputColumn& output : outputs) {
    const std::string name = support::to_lower(output.name);
    if (sources.emplace(name, output.source).first->second != output.source) shared.insert(name);
  }
  return shared;
}

void expand_star(Select& select, const SelectItem& item) {
  if (select.sources.empty()) raise(error_number::no_input);
  bool found = false;
  for (const Source& source : select.sources) {
    if (!item.star_table.empty() && !support::equal_ignoring_case(source.name, item.star_table)) continue;
    found = true;
    for (std::size_t index = 0; index < source.columns.size(); ++index) {
      const SourceColumn& column = source.columns[index];
      select.outputs.push_back({column.name, column.type, nullptr, &source, index, nullptr, {}});
      if (select.outputs.size() > most_outputs) raise(error_number::too_many_fields);
    }
  }
  if (!found) raise(error_number::unknown_table, item.star_table);
}

/// If columns of several tables have one name, they are named "table.column". Expressions are named "Expr1000" and so
/// on.
void name_outputs(Select& select) {
  const auto has_alias = [&](const OutputColumn& output) {
    return output.expression != nullptr &&
           std::any_of(select.items.begin(), select.items.end(), [&](const SelectItem& item) {
             return item.expression.get() == output.expression && !item.alias.empty();
           });
  };
  const std::set<std::string> shared = names_of_several_sources(select.outputs);
  std::set<std::string> taken;
  std::size_t expression_number = first_expression_number;
  for (OutputColumn& output : select.outputs) {
    const bool fixed = has_alias(output);
    if (!fixed && output.source != nullptr && !output.source->name.empty() &&
        shared.contains(support::to_lower(output.name))) {
      output.name = qualified(output);
    }
    if (fixed && taken.contains(support::to_lower(output.name)))
      raise(error_number::duplicate_destination, output.name);
    while (output.name.empty() || taken.contains(support::to_lower(output.name))) {
      output.name = fmt::format("Expr{}", expression_number++);
    }
    taken.insert(support::to_lower(output.name));
  }
}

bool is_group(const Select& select, const Expression& expression) {
  return std::any_of(select.group_by.begin(), select.group_by.end(),
                     [&](const ExpressionPtr& group) { return same_expression(*group, expression); });
}

/// Checks that every column stands in an aggregate or in an expression by which the rows are grouped.
void check_grouped(const Select& select, const Expression& expression) {
  if (is_group(select, expression)) return;
  if (const auto* name = std::get_if<ColumnName>(&expression.node)) {
    // What an alias stands for is checked as an item of its own.
    const auto own = [&](const Source& source) { return &source == name->source; };
    if (std::any_of(select.sources.begin(), select.sources.end(), own))
      raise(error_number::not_in_aggregate, name->column);
  }
  const auto* const call = std::get_if<Call>(&expression.node);
  if (call != nullptr && call->row->form == FunctionForm::Aggregate) return;
  visit_parts(
      expression, [&](const Expression& part) { check_grouped(select, part); },
      [&](const QueryTree& query) {
        for (const auto& inner : query.selects) {
          for (const Expression* const column : inner->outer_columns) check_grouped(select, *column);
        }
      });
}

}  // namespace

void collect_outputs(Select& select) {
  for (const SelectItem& item : select.items) {
    if (item.star) {
      expand_star(select, item);
      continue;
    }
    OutputColumn output;
    output.expression = item.expression.get();
    output.type = item.expression->type;
    output.name = item.alias.empty() ? natural_name(*item.expression) : item.alias;
    if (const auto* name = std::get_if<ColumnName>(&item.expression->node)) {
      output.source = name->source;
      output.index = name->index;
    }
    select.outputs.push_back(std::move(output));
    if (select.outputs.size() > most_outputs) raise(error_number::too_many_fields);
  }
  name_outputs(select);
}

void add_headings(Select& select, std::vector<std::optional<std::string>> headings) {
  const Pivot& pivot = *select.pivot;
  for (const ExpressionPtr& heading : pivot.headings) headings.emplace_back(text_of(std::get<Literal>(heading->node)));
  std::set<std::string> taken;
  for (const OutputColumn& output : select.outputs) taken.insert(support::to_lower(output.name));
  std::set<std::string> seen;
  for (std::optional<std::string>& heading : headings) {
    std::string name = heading.value_or("<>");
    if (!seen.insert(support::to_lower(name)).second) {
      if (pivot.headings.empty()) continue;
      raise(error_number::repeated_heading, name);
    }
    if (name.empty() || taken.contains(support::to_lower(name))) raise(error_number::duplicate_destination, name);
    if (select.outputs.size() >= most_fields) raise(error_number::too_many_fields);
    select.outputs.push_back({.name = std::move(name),
                              .type = pivot.value->type.with_null(true),
                              .expression = pivot.value.get(),
                              .source = nullptr,
                              .index = 0,
                              .pivot = pivot.head.get(),
                              .heading = std::move(heading)});
  }
}

void unite_outputs(QueryTree& query) {
  query.outputs = query.selects.front()->outputs;
  for (std::size_t i = 1; i < query.selects.size(); ++i) {
    const std::vector<OutputColumn>& others = query.selects[i]->outputs;
    if (others.size() != query.outputs.size()) raise(error_number::union_columns);
    for (std::size_t column = 0; column < others.size(); ++column) {
      ValueType& type = query.outputs[column].type;
      type = common_type(type, others[column].type);
      // Where a text stands beside numbers, the numbers become texts.
      if (type.kind == Kind::Variant) type = type_of_kind(Kind::Text);
    }
  }
  for (OutputColumn& output : query.outputs) {
    output.expression = nullptr;
    output.source = nullptr;
  }
}

bool is_output(OrderItem& item, const std::vector<OutputColumn>& outputs) {
  if (const Literal* const literal = std::get_if<Literal>(&item.expression->node)) {
    const auto* const ordinal = std::get_if<std::int64_t>(&literal->value);
    if (ordinal == nullptr) return false;
    if (*ordinal < 1 || *ordinal > static_cast<std::int64_t>(outputs.size())) raise(error_number::order_by_syntax);
    item.output = static_cast<std::size_t>(*ordinal - 1);
    return true;
  }
  const auto* const name = std::get_if<ColumnName>(&item.expression->node);
  if (name == nullptr || !name->table.empty()) return false;
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    if (!support::equal_ignoring_case(outputs[i].name, name->column)) continue;
    item.output = i;
    return true;
  }
  return false;
}

void check_grouping(const Select& select, const QueryTree& query) {
  for (const SelectItem& item : select.items) {
    if (item.star) raise(error_number::group_on_star);
    check_grouped(select, *item.expression);
  }
  if (select.having != nullptr) check_grouped(select, *select.having);
  if (select.pivot != nullptr) check_grouped(select, *select.pivot->value);
  if (query.selects.size() > 1) return;
  for (const OrderItem& item : query.order_by) {
    if (!item.output) check_grouped(select, *item.expression);
  }
}

}  // namespace engine::embedded::jet_sql
