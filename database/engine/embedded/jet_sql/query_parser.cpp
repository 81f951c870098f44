#include "database/engine/embedded/jet_sql/query_parser.h"

#include <algorithm>
#include <utility>

#include "database/engine/embedded/jet_sql/refusal.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr int deepest_select = 30;
constexpr std::size_t most_unions = 100;
constexpr std::size_t most_groups = 64;

void raise_height(int& height, int below) {
  height = std::max(height, below + 1);
  if (height > max_tree_height) raise(error_number::too_complex);
}

void raise_height(int& height, const ExpressionPtr& expression) {
  if (expression != nullptr) raise_height(height, expression->height);
}

void raise_height(int& height, const Select& select) {
  for (const SelectItem& item : select.items) raise_height(height, item.expression);
  for (const TableReferencePtr& reference : select.from) raise_height(height, reference->height);
  for (const ExpressionPtr& group : select.group_by) raise_height(height, group);
  raise_height(height, select.where);
  raise_height(height, select.having);
}

template <typename Node>
TableReferencePtr make_reference(Node node, int height_below) {
  if (height_below >= max_tree_height) raise(error_number::too_complex);
  auto reference = std::make_unique<TableReference>();
  reference->node = std::move(node);
  reference->height = height_below + 1;
  return reference;
}

}  // namespace

QueryPtr QueryParser::parse_query(SelectStatement* into) {
  const error_number::Number clause = cursor_.clause();
  if (select_depth_ >= deepest_select) raise(error_number::too_complex);
  ++select_depth_;
  auto query = std::make_unique<QueryTree>();
  const bool first_is_table = cursor_.at_word("TABLE");
  query->selects.push_back(parse_member(into));
  if (first_is_table && !cursor_.at_word("UNION")) cursor_.fail_here();
  while (cursor_.accept_word("UNION")) {
    if (query->selects.size() >= most_unions) raise(error_number::too_complex);
    query->union_all.push_back(cursor_.accept_word("ALL"));
    query->selects.push_back(parse_member(nullptr));
  }
  query->order_by = parse_order_by();
  for (const auto& select : query->selects) raise_height(query->height, *select);
  for (const OrderItem& item : query->order_by) raise_height(query->height, item.expression);
  --select_depth_;
  // Inside another clause, an error behind the query belongs to that clause.
  if (into == nullptr) cursor_.set_clause(clause);
  return query;
}

/// Returns how far from here the token behind the parenthesis stands; the parenthesis begins `ahead` tokens from here.
std::size_t QueryParser::behind_parenthesis(std::size_t ahead) const noexcept {
  int open = 0;
  for (; cursor_.peek(ahead).kind != TokenKind::End; ++ahead) {
    if (cursor_.peek(ahead).is_symbol("(")) ++open;
    if (cursor_.peek(ahead).is_symbol(")") && --open == 0) return ahead + 1;
  }
  return ahead;
}

bool QueryParser::at_query(std::size_t ahead) const noexcept {
  if (cursor_.at_word("SELECT", ahead)) return true;
  if (cursor_.at_word("TABLE", ahead)) return cursor_.at_name(ahead + 1) && cursor_.at_word("UNION", ahead + 2);
  // True for "((SELECT …) UNION …", but not for "((SELECT …) AS x INNER JOIN …" or "((SELECT …) + 1".
  std::size_t inner = ahead;
  while (cursor_.peek(inner).is_symbol("(")) ++inner;
  if (inner == ahead || !cursor_.at_word("SELECT", inner)) return false;
  return cursor_.at_word("UNION", behind_parenthesis(ahead));
}

/// Reads a SELECT, one in parentheses, or TABLE and a name.
std::unique_ptr<Select> QueryParser::parse_member(SelectStatement* into) {
  if (cursor_.at_word("TABLE")) return parse_whole_table();
  if (!cursor_.accept_symbol("(")) return parse_select(into);
  QueryPtr query = parse_query(nullptr);
  cursor_.expect_symbol(")");
  if (query->selects.size() == 1 && query->order_by.empty()) return std::move(query->selects.front());
  const int height = query->height;
  auto all = std::make_unique<Select>();
  all->items.emplace_back().star = true;
  all->from.push_back(make_reference(DerivedTable{.query = std::move(query), .alias = {}}, height));
  return all;
}

std::unique_ptr<Select> QueryParser::parse_whole_table() {
  cursor_.expect_word("TABLE");
  auto all = std::make_unique<Select>();
  all->items.emplace_back().star = true;
  all->from.push_back(make_reference(NamedTable{.table = cursor_.expect_name(), .alias = {}}, 0));
  return all;
}

std::unique_ptr<Select> QueryParser::parse_select(SelectStatement* into) {
  cursor_.set_clause(error_number::select_syntax);
  cursor_.expect_word("SELECT");
  auto select = std::make_unique<Select>();
  parse_predicates(*select);
  parse_items(*select);
  if (into != nullptr && cursor_.at_word("INTO")) parse_into(*into);
  if (cursor_.accept_word("FROM")) {
    select->from = parse_from();
    if (cursor_.at_word("IN")) parse_external(into);
  }
  if (cursor_.accept_word("WHERE")) {
    select->where = expressions_.parse_expression();
    cursor_.set_clause(error_number::expression_syntax);
  }
  parse_groups(*select);
  return select;
}

/// Reads TRANSFORM value SELECT … GROUP BY … PIVOT expression [IN (headings)].
SelectStatement QueryParser::parse_transform() {
  cursor_.set_clause(error_number::transform_syntax);
  auto pivot = std::make_unique<Pivot>();
  pivot->value = expressions_.parse_expression();
  if (cursor_.accept_word("AS")) cursor_.expect_any_name();
  if (!cursor_.at_word("SELECT")) cursor_.fail_here();
  SelectStatement statement;
  expressions_.set_in_transform(true);
  statement.query = parse_query(nullptr);
  expressions_.set_in_transform(false);
  Select& select = *statement.query->selects.front();
  if (statement.query->selects.size() > 1) raise(error_number::not_supported, "UNION in TRANSFORM");
  if (select.distinct || select.distinct_row || select.top)
    raise(error_number::not_supported, "DISTINCT and TOP in TRANSFORM");
  if (select.having != nullptr) raise(error_number::not_supported, "HAVING in TRANSFORM");
  cursor_.set_clause(error_number::transform_syntax);
  if (select.group_by.empty()) cursor_.fail_here();
  parse_pivot(*pivot);
  raise_height(statement.query->height, pivot->value);
  raise_height(statement.query->height, pivot->head);
  select.pivot = std::move(pivot);
  return statement;
}

void QueryParser::parse_pivot(Pivot& pivot) {
  cursor_.expect_word("PIVOT");
  // Here IN begins the list of headings.
  expressions_.set_in_pivot(true);
  pivot.head = expressions_.parse_expression();
  expressions_.set_in_pivot(false);
  if (!cursor_.accept_word("IN")) return;
  cursor_.expect_symbol("(");
  do {
    if (pivot.headings.size() >= most_fields) raise(error_number::too_many_fields);
    pivot.headings.push_back(expressions_.parse_expression());
    const auto* const literal = std::get_if<Literal>(&pivot.headings.back()->node);
    if (literal == nullptr || std::holds_alternative<std::monostate>(literal->value)) cursor_.fail_here();
  } while (cursor_.accept_symbol(","));
  cursor_.expect_symbol(")");
}

void QueryParser::parse_predicates(Select& select) {
  if (cursor_.accept_word("DISTINCT")) {
    select.distinct = true;
  } else if (cursor_.accept_word("DISTINCTROW")) {
    select.distinct_row = true;
  } else {
    cursor_.accept_word("ALL");
  }
  if (!cursor_.at_word("TOP") || cursor_.peek(1).kind != TokenKind::Number) return;
  cursor_.take();
  const Token count = cursor_.take();
  if (!count.whole || count.number < 1 || count.number > 2147483647.0) cursor_.fail_here();
  select.top = Top{static_cast<std::int64_t>(count.number), cursor_.accept_word("PERCENT")};
  if (select.top->percent && select.top->count > 100) cursor_.fail_here();
}

void QueryParser::parse_items(Select& select) {
  do {
    if (select.items.size() >= most_fields) raise(error_number::too_many_fields);
    select.items.push_back(parse_item());
  } while (cursor_.accept_symbol(","));
}

SelectItem QueryParser::parse_item() {
  SelectItem item;
  if (cursor_.accept_symbol("*")) {
    item.star = true;
    return item;
  }
  if (cursor_.at_name() && (cursor_.peek(1).is_symbol(".") || cursor_.peek(1).is_symbol("!")) &&
      cursor_.peek(2).is_symbol("*")) {
    item.star = true;
    item.star_table = cursor_.take().text;
    cursor_.skip(2);
    return item;
  }
  if (cursor_.peek().kind == TokenKind::End || cursor_.peek().is_symbol(",") || cursor_.at_word("FROM"))
    cursor_.fail_here();
  item.expression = expressions_.parse_expression();
  if (cursor_.accept_word("AS")) item.alias = cursor_.expect_any_name();
  return item;
}

void QueryParser::parse_into(SelectStatement& statement) {
  statement.into_clause.begin = cursor_.peek().begin;
  cursor_.expect_word("INTO");
  statement.into = cursor_.expect_name();
  statement.into_clause.end = cursor_.peek().begin;
  if (cursor_.at_word("IN")) raise(error_number::not_supported, "SELECT INTO another database");
}

void QueryParser::parse_external(SelectStatement* statement) {
  if (statement == nullptr || statement->into.empty()) {
    raise(error_number::not_supported, "a query on another database, except SELECT INTO");
  }
  statement->in_clause.begin = cursor_.peek().begin;
  cursor_.expect_word("IN");
  if (cursor_.peek().kind != TokenKind::Text || cursor_.peek().text.empty()) cursor_.fail_here();
  statement->external_file = cursor_.take().text;
  statement->in_clause.end = cursor_.peek().begin;
}

void QueryParser::parse_groups(Select& select) {
  if (cursor_.accept_word("GROUP")) {
    cursor_.set_clause(error_number::group_by_syntax);
    cursor_.expect_word("BY");
    do {
      if (select.group_by.size() >= most_groups) raise(error_number::too_complex);
      select.group_by.push_back(expressions_.parse_expression());
    } while (cursor_.accept_symbol(","));
  }
  if (cursor_.accept_word("HAVING")) {
    select.having = expressions_.parse_expression();
    cursor_.set_clause(error_number::expression_syntax);
  }
}

std::vector<OrderItem> QueryParser::parse_order_by() {
  std::vector<OrderItem> items;
  if (!cursor_.accept_word("ORDER")) return items;
  cursor_.set_clause(error_number::order_by_syntax);
  cursor_.expect_word("BY");
  do {
    if (items.size() >= most_groups) raise(error_number::too_complex);
    OrderItem item;
    item.expression = expressions_.parse_expression();
    if (!cursor_.accept_word("ASC")) item.descending = cursor_.accept_word("DESC");
    items.push_back(std::move(item));
  } while (cursor_.accept_symbol(","));
  return items;
}

std::vector<TableReferencePtr> QueryParser::parse_from() {
  cursor_.set_clause(error_number::from_syntax);
  std::vector<TableReferencePtr> references;
  do {
    references.push_back(parse_joins());
  } while (cursor_.accept_symbol(","));
  return references;
}

TableReferencePtr QueryParser::parse_joins() {
  const TokenCursor::Level level(cursor_);
  TableReferencePtr left = parse_table();
  JoinKind kind{};
  while (accept_join(kind)) {
    cursor_.set_clause(error_number::join_syntax);
    TableReferencePtr right = parse_table();
    cursor_.set_clause(error_number::join_syntax);
    cursor_.expect_word("ON");
    ExpressionPtr condition = expressions_.parse_expression();
    cursor_.set_clause(error_number::from_syntax);
    const int height = std::max({left->height, right->height, condition->height});
    left = make_reference(Join{kind, std::move(left), std::move(right), std::move(condition)}, height);
  }
  refuse_after_table(cursor_);
  return left;
}

bool QueryParser::accept_join(JoinKind& kind) {
  if (cursor_.accept_word("INNER")) {
    kind = JoinKind::Inner;
  } else if (cursor_.accept_word("LEFT")) {
    kind = JoinKind::Left;
  } else if (cursor_.accept_word("RIGHT")) {
    kind = JoinKind::Right;
  } else {
    return false;
  }
  if (kind != JoinKind::Inner) cursor_.accept_word("OUTER");
  cursor_.set_clause(error_number::join_syntax);
  cursor_.expect_word("JOIN");
  return true;
}

TableReferencePtr QueryParser::parse_table() {
  const auto parse_alias = [this]() -> std::string {
    if (cursor_.accept_word("AS")) return cursor_.expect_name();
    refuse_after_table(cursor_);
    return cursor_.at_name() ? cursor_.expect_name() : std::string{};
  };
  if (!cursor_.accept_symbol("(")) {
    NamedTable table;
    table.table = cursor_.expect_name();
    table.alias = parse_alias();
    return make_reference(std::move(table), 0);
  }
  if (!at_query()) {
    TableReferencePtr joined = parse_joins();
    cursor_.expect_symbol(")");
    return joined;
  }
  DerivedTable table;
  table.query = parse_query(nullptr);
  cursor_.expect_symbol(")");
  table.alias = parse_alias();
  const int height = table.query->height;
  return make_reference(std::move(table), height);
}

}  // namespace engine::embedded::jet_sql
