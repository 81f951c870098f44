#include "database/engine/embedded/jet_sql/query_writer.h"

#include <fmt/core.h>

#include <algorithm>
#include <utility>

namespace engine::embedded::jet_sql {

namespace {

/// True where no two rows are equal in this order. TOP then has no ties to keep.
bool orders_every_row(const Select& select, const QueryTree& query) {
  if (select.sources.size() != 1 || select.grouped) return false;
  return std::any_of(query.order_by.begin(), query.order_by.end(), [&](const OrderItem& item) {
    const auto* const name = std::get_if<ColumnName>(&item.expression->node);
    if (name == nullptr || name->source == nullptr) return false;
    const FieldDefinition* const field = name->source->columns[name->index].field;
    return field != nullptr && field->auto_increment();
  });
}

/// SQLite's LIMIT is no substitute for TOP with ties or with PERCENT.
bool needs_rank(const Select& select, const QueryTree& query) {
  if (!select.top) return false;
  return select.top->percent || (!query.order_by.empty() && !orders_every_row(select, query));
}

bool is_constant(const Expression& expression) noexcept {
  const Expression& shown = behind_alias(expression);
  if (const auto* unary = std::get_if<Unary>(&shown.node)) return is_constant(*unary->operand);
  return std::holds_alternative<Literal>(shown.node);
}

std::string output_name(std::size_t position) { return fmt::format("c{}", position + 1); }
std::string key_name(std::size_t position) { return fmt::format("k{}", position + 1); }

}  // namespace

void QueryWriter::query(const QueryTree& query, const Source* rows_of) {
  if (query.selects.size() > 1) {
    for (std::size_t i = 0; i < query.selects.size(); ++i) {
      if (i > 0) sql_.write(query.union_all[i - 1] ? " UNION ALL " : " UNION ");
      union_member(*query.selects[i], query);
    }
    order_by(query, true);
    return;
  }
  const Select& only = *query.selects.front();
  if (needs_rank(only, query)) return ranked(only, query, rows_of);
  select(only, query, rows_of);
  order_by(query, true);
  if (!only.top) return;
  sql_.write(" LIMIT ");
  sql_.whole_literal(only.top->count);
}

void QueryWriter::union_member(const Select& member, const QueryTree& query) {
  if (!member.top) return select(member, query, nullptr);
  // TOP counts the rows of this SELECT before they are united, but ORDER BY belongs to the whole union.
  QueryTree alone;
  sql_.write("SELECT * FROM (");
  if (member.top->percent) {
    alone.outputs = query.outputs;
    ranked(member, alone, nullptr);
  } else {
    select(member, query, nullptr);
    sql_.write(" LIMIT ");
    sql_.whole_literal(member.top->count);
  }
  sql_.write(")");
}

void QueryWriter::one_row(const QueryTree& query, const Source& rows_of) {
  sql_.write("SELECT ");
  sql_.list(query.outputs, ", ", [&](const OutputColumn& shown) { output_as(shown, shown.type, false); });
  sql_.write(" FROM ");
  table(rows_of);
  sql_.write(" WHERE ");
  row_id(rows_of);
  sql_.write("=?1");
}

void QueryWriter::select(const Select& select, const QueryTree& query, const Source* rows_of) {
  const bool united = query.selects.size() > 1;
  sql_.write(select.distinct ? "SELECT DISTINCT " : "SELECT ");
  for (std::size_t i = 0; i < select.outputs.size(); ++i) {
    if (i > 0) sql_.write(", ");
    output_at(select, i, query.outputs[i].type, united || select.distinct);
    sql_.write(" AS ");
    sql_.name(query.outputs[i].name);
  }
  if (rows_of != nullptr) {
    sql_.write(", ");
    row_id(*rows_of);
  }
  tail(select);
}

void QueryWriter::headings(const Select& select) {
  const Expression& head = *select.pivot->head;
  sql_.write("SELECT ");
  expressions_.as_text(head.type, [&] { expressions_.value(head); });
  rows(select);
  sql_.write(" GROUP BY ");
  sort_key(head);
  sql_.write(" ORDER BY ");
  sort_key(head);
}

/// Writes FROM and WHERE.
void QueryWriter::rows(const Select& select) {
  if (!select.from.empty()) {
    sql_.write(" FROM ");
    from(select.from);
  }
  if (select.where == nullptr) return;
  sql_.write(" WHERE ");
  conditions_.condition(*select.where);
}

/// Writes FROM, WHERE, GROUP BY and HAVING.
void QueryWriter::tail(const Select& select) {
  rows(select);
  if (!select.group_by.empty()) {
    sql_.write(" GROUP BY ");
    sql_.list(select.group_by, ", ", [&](const ExpressionPtr& group) { sort_key(*group); });
  }
  if (select.having == nullptr) return;
  sql_.write(" HAVING ");
  conditions_.condition(*select.having);
}

/// TOP keeps the rows that are equal to the last one. Therefore the rows are ranked, and those within the rank are
/// shown.
void QueryWriter::ranked(const Select& select, const QueryTree& query, const Source* rows_of) {
  sql_.write("SELECT ");
  for (std::size_t i = 0; i < query.outputs.size(); ++i) {
    sql_.write(i > 0 ? ", " : "").write(output_name(i)).write(" AS ");
    sql_.name(query.outputs[i].name);
  }
  if (rows_of != nullptr) sql_.write(", jet_row");
  sql_.write(" FROM (SELECT *, ");
  rank(query);
  sql_.write(" AS jet_rank, count(*) OVER () AS jet_count FROM (");
  sql_.write(select.distinct ? "SELECT DISTINCT " : "SELECT ");
  for (std::size_t i = 0; i < select.outputs.size(); ++i) {
    if (i > 0) sql_.write(", ");
    output_at(select, i, query.outputs[i].type, true);
    sql_.write(" AS ").write(output_name(i));
  }
  for (std::size_t i = 0; i < query.order_by.size(); ++i) {
    if (query.order_by[i].output) continue;
    sql_.write(", ");
    expressions_.collated(*query.order_by[i].expression);
    sql_.write(" AS ").write(key_name(i));
  }
  if (rows_of != nullptr) {
    sql_.write(", ");
    row_id(*rows_of);
    sql_.write(" AS jet_row");
  }
  tail(select);
  sql_.write(select.top->percent ? ")) WHERE jet_rank <= (jet_count * " : ")) WHERE jet_rank <= ");
  sql_.whole_literal(select.top->count);
  sql_.write(select.top->percent ? " + 99) / 100 ORDER BY jet_rank" : " ORDER BY jet_rank");
}

void QueryWriter::rank(const QueryTree& query) {
  sql_.write(query.order_by.empty() ? "row_number() OVER (" : "rank() OVER (ORDER BY ");
  for (std::size_t i = 0; i < query.order_by.size(); ++i) {
    const OrderItem& item = query.order_by[i];
    sql_.write(i > 0 ? ", " : "").write(item.output ? output_name(*item.output) : key_name(i));
    const ValueType& type = item.output ? query.outputs[*item.output].type : item.expression->type;
    if (type.is_text()) sql_.write(" COLLATE JET");
    if (item.descending) sql_.write(" DESC");
  }
  sql_.write(")");
}

void QueryWriter::output(const OutputColumn& shown) {
  if (shown.expression != nullptr) {
    expressions_.output_value(shown);
  } else {
    expressions_.column(*shown.source, shown.index);
  }
}

void QueryWriter::output_at(const Select& select, std::size_t position, const ValueType& type, bool collate) {
  // With HAVING and without GROUP BY, all rows are one group. SQLite sees that only if the list has an aggregate.
  const bool counted = position == 0 && select.having != nullptr && select.group_by.empty();
  if (counted) sql_.write("CASE WHEN count(*) >= 0 THEN ");
  output_as(select.outputs[position], type, collate);
  if (counted) sql_.write(" END");
}

void QueryWriter::output_as(const OutputColumn& shown, const ValueType& type, bool collate) {
  const bool date = type.kind == Kind::Date && shown.type.kind != Kind::Null;
  if (type.is_text() || shown.type.kind == Kind::Variant) {
    expressions_.as_text(shown.type, [&] { output(shown); });
  } else if (date && (shown.type.kind != Kind::Date || !shown.type.in_calendar)) {
    sql_.write("jet_in_calendar(");
    output(shown);
    sql_.write(")");
  } else {
    output(shown);
  }
  if (collate && (type.is_text() || shown.type.kind == Kind::Variant)) sql_.write(" COLLATE JET");
}

/// SQLite takes a number for the position of a column, even a number that it has computed from a condition.
void QueryWriter::sort_key(const Expression& expression) {
  if (is_constant(expression)) {
    sql_.write("NULL");
    return;
  }
  expressions_.collated(expression);
  const bool worked_out = is_predicate(expression) || std::holds_alternative<Unary>(behind_alias(expression).node);
  if (worked_out && !expression.type.is_text()) sql_.write(" + 0");
}

void QueryWriter::order_by(const QueryTree& query, bool by_position) {
  if (query.order_by.empty()) return;
  sql_.write(" ORDER BY ");
  sql_.list(query.order_by, ", ", [&](const OrderItem& item) {
    order_term(query, item, by_position);
    if (item.descending) sql_.write(" DESC");
  });
}

void QueryWriter::order_term(const QueryTree& query, const OrderItem& item, bool by_position) {
  if (!item.output) {
    sort_key(*item.expression);
    return;
  }
  const OutputColumn& shown = query.outputs[*item.output];
  if (by_position) {
    sql_.whole_literal(static_cast<std::int64_t>(*item.output) + 1);
    // The columns of a union carry their collation already. If it were named again, SQLite would not find the columns
    // of grouped members.
    if (query.selects.size() > 1) return;
  } else if (shown.expression != nullptr && is_constant(*shown.expression)) {
    sql_.write("NULL");
    return;
  } else {
    output(shown);
  }
  if (shown.type.is_text() || shown.type.kind == Kind::Variant) sql_.write(" COLLATE JET");
}

void QueryWriter::from(const std::vector<TableReferencePtr>& references) {
  for (std::size_t i = 0; i < references.size(); ++i) {
    const bool nested = i > 0 && std::holds_alternative<Join>(references[i]->node);
    if (i > 0) sql_.write(", ");
    if (nested) sql_.write("(");
    reference(*references[i]);
    if (nested) sql_.write(")");
  }
}

void QueryWriter::reference(const TableReference& reference_node) {
  std::visit(Overloaded{[&](const NamedTable& named) { table(*named.source); },
                        [&](const DerivedTable& derived) {
                          sql_.write("(");
                          query(*derived.query);
                          sql_.write(") AS ").write(derived.source->sqlite_name);
                        },
                        [&](const Join& join) {
                          reference(*join.left);
                          sql_.write(join.kind == JoinKind::Inner  ? " JOIN "
                                     : join.kind == JoinKind::Left ? " LEFT JOIN "
                                                                   : " RIGHT JOIN ");
                          const bool nested = std::holds_alternative<Join>(join.right->node);
                          if (nested) sql_.write("(");
                          reference(*join.right);
                          sql_.write(nested ? ") ON " : " ON ");
                          conditions_.condition(*join.condition);
                        }},
             reference_node.node);
}

void QueryWriter::table(const Source& source) {
  sql_.name(source.table->name);
  sql_.write(" AS ").write(source.sqlite_name);
}

void QueryWriter::row_id(const Source& source) {
  sql_.write(source.sqlite_name).write(".").write(source.table->row_id_column());
}

}  // namespace engine::embedded::jet_sql
