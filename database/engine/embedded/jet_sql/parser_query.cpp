#include <algorithm>
#include <utility>

#include "database/engine/embedded/jet_sql/parser.h"
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

QueryPtr Parser::parse_query(SelectStatement* into) {
  const error_number::Number clause = clause_;
  if (select_depth_ >= deepest_select) raise(error_number::too_complex);
  ++select_depth_;
  auto query = std::make_unique<QueryTree>();
  const bool first_is_table = at_word("TABLE");
  query->selects.push_back(parse_member(into));
  if (first_is_table && !at_word("UNION")) fail_here();
  while (accept_word("UNION")) {
    if (query->selects.size() >= most_unions) raise(error_number::too_complex);
    query->union_all.push_back(accept_word("ALL"));
    query->selects.push_back(parse_member(nullptr));
  }
  query->order_by = parse_order_by();
  for (const auto& select : query->selects) raise_height(query->height, *select);
  for (const OrderItem& item : query->order_by) raise_height(query->height, item.expression);
  --select_depth_;
  // Inside another clause, what follows is that clause's matter.
  if (into == nullptr) clause_ = clause;
  return query;
}

/// How many tokens from here the one stands that follows the parenthesis, which begins `ahead` tokens from here.
std::size_t Parser::behind_parenthesis(std::size_t ahead) const noexcept {
  int open = 0;
  for (; peek(ahead).kind != TokenKind::End; ++ahead) {
    if (peek(ahead).is_symbol("(")) ++open;
    if (peek(ahead).is_symbol(")") && --open == 0) return ahead + 1;
  }
  return ahead;
}

bool Parser::at_query(std::size_t ahead) const noexcept {
  if (at_word("SELECT", ahead)) return true;
  if (at_word("TABLE", ahead)) return at_name(ahead + 1) && at_word("UNION", ahead + 2);
  // "((SELECT …) UNION …" and not "((SELECT …) AS x INNER JOIN …" or "((SELECT …) + 1".
  std::size_t inner = ahead;
  while (peek(inner).is_symbol("(")) ++inner;
  if (inner == ahead || !at_word("SELECT", inner)) return false;
  return at_word("UNION", behind_parenthesis(ahead));
}

/// A SELECT, one in parentheses, or TABLE and a name.
std::unique_ptr<Select> Parser::parse_member(SelectStatement* into) {
  if (at_word("TABLE")) return parse_whole_table();
  if (!accept_symbol("(")) return parse_select(into);
  QueryPtr query = parse_query(nullptr);
  expect_symbol(")");
  if (query->selects.size() == 1 && query->order_by.empty()) return std::move(query->selects.front());
  const int height = query->height;
  auto all = std::make_unique<Select>();
  all->items.emplace_back().star = true;
  all->from.push_back(make_reference(DerivedTable{.query = std::move(query), .alias = {}}, height));
  return all;
}

std::unique_ptr<Select> Parser::parse_whole_table() {
  expect_word("TABLE");
  auto all = std::make_unique<Select>();
  all->items.emplace_back().star = true;
  all->from.push_back(make_reference(NamedTable{.table = expect_name(), .alias = {}}, 0));
  return all;
}

std::unique_ptr<Select> Parser::parse_select(SelectStatement* into) {
  clause_ = error_number::select_syntax;
  expect_word("SELECT");
  auto select = std::make_unique<Select>();
  parse_predicates(*select);
  parse_items(*select);
  if (into != nullptr && at_word("INTO")) parse_into(*into);
  if (accept_word("FROM")) {
    select->from = parse_from();
    if (at_word("IN")) parse_external(into);
  }
  if (accept_word("WHERE")) {
    select->where = parse_expression();
    clause_ = error_number::expression_syntax;
  }
  parse_groups(*select);
  return select;
}

/// TRANSFORM value SELECT … GROUP BY … PIVOT expression [IN (headings)].
SelectStatement Parser::parse_transform() {
  clause_ = error_number::transform_syntax;
  auto pivot = std::make_unique<Pivot>();
  pivot->value = parse_expression();
  if (accept_word("AS")) expect_any_name();
  if (!at_word("SELECT")) fail_here();
  SelectStatement statement;
  transforms_ = true;
  statement.query = parse_query(nullptr);
  transforms_ = false;
  Select& select = *statement.query->selects.front();
  if (statement.query->selects.size() > 1) raise(error_number::not_supported, "UNION in TRANSFORM");
  if (select.distinct || select.distinct_row || select.top)
    raise(error_number::not_supported, "DISTINCT and TOP in TRANSFORM");
  if (select.having != nullptr) raise(error_number::not_supported, "HAVING in TRANSFORM");
  clause_ = error_number::transform_syntax;
  if (select.group_by.empty()) fail_here();
  parse_pivot(*pivot);
  raise_height(statement.query->height, pivot->value);
  raise_height(statement.query->height, pivot->head);
  select.pivot = std::move(pivot);
  return statement;
}

void Parser::parse_pivot(Pivot& pivot) {
  expect_word("PIVOT");
  // A list behind IN is that of the headings.
  pivots_ = true;
  pivot.head = parse_expression();
  pivots_ = false;
  if (!accept_word("IN")) return;
  expect_symbol("(");
  do {
    if (pivot.headings.size() >= most_fields) raise(error_number::too_many_fields);
    pivot.headings.push_back(parse_expression());
    const auto* const literal = std::get_if<Literal>(&pivot.headings.back()->node);
    if (literal == nullptr || std::holds_alternative<std::monostate>(literal->value)) fail_here();
  } while (accept_symbol(","));
  expect_symbol(")");
}

void Parser::parse_predicates(Select& select) {
  if (accept_word("DISTINCT")) {
    select.distinct = true;
  } else if (accept_word("DISTINCTROW")) {
    select.distinct_row = true;
  } else {
    accept_word("ALL");
  }
  if (!at_word("TOP") || peek(1).kind != TokenKind::Number) return;
  take();
  const Token count = take();
  if (!count.whole || count.number < 1 || count.number > 2147483647.0) fail_here();
  select.top = Top{static_cast<std::int64_t>(count.number), accept_word("PERCENT")};
  if (select.top->percent && select.top->count > 100) fail_here();
}

void Parser::parse_items(Select& select) {
  do {
    if (select.items.size() >= most_fields) raise(error_number::too_many_fields);
    select.items.push_back(parse_item());
  } while (accept_symbol(","));
}

SelectItem Parser::parse_item() {
  SelectItem item;
  if (accept_symbol("*")) {
    item.star = true;
    return item;
  }
  if (at_name() && (peek(1).is_symbol(".") || peek(1).is_symbol("!")) && peek(2).is_symbol("*")) {
    item.star = true;
    item.star_table = take().text;
    position_ += 2;
    return item;
  }
  if (peek().kind == TokenKind::End || peek().is_symbol(",") || at_word("FROM")) fail_here();
  item.expression = parse_expression();
  if (accept_word("AS")) item.alias = expect_any_name();
  return item;
}

void Parser::parse_into(SelectStatement& statement) {
  statement.into_clause.begin = peek().begin;
  expect_word("INTO");
  statement.into = expect_name();
  statement.into_clause.end = peek().begin;
  if (at_word("IN")) raise(error_number::not_supported, "SELECT INTO another database");
}

void Parser::parse_external(SelectStatement* statement) {
  if (statement == nullptr || statement->into.empty()) {
    raise(error_number::not_supported, "a query on another database, except SELECT INTO");
  }
  statement->in_clause.begin = peek().begin;
  expect_word("IN");
  if (peek().kind != TokenKind::Text || peek().text.empty()) fail_here();
  statement->external_file = take().text;
  statement->in_clause.end = peek().begin;
}

void Parser::parse_groups(Select& select) {
  if (accept_word("GROUP")) {
    clause_ = error_number::group_by_syntax;
    expect_word("BY");
    do {
      if (select.group_by.size() >= most_groups) raise(error_number::too_complex);
      select.group_by.push_back(parse_expression());
    } while (accept_symbol(","));
  }
  if (accept_word("HAVING")) {
    select.having = parse_expression();
    clause_ = error_number::expression_syntax;
  }
}

std::vector<OrderItem> Parser::parse_order_by() {
  std::vector<OrderItem> items;
  if (!accept_word("ORDER")) return items;
  clause_ = error_number::order_by_syntax;
  expect_word("BY");
  do {
    if (items.size() >= most_groups) raise(error_number::too_complex);
    OrderItem item;
    item.expression = parse_expression();
    if (!accept_word("ASC")) item.descending = accept_word("DESC");
    items.push_back(std::move(item));
  } while (accept_symbol(","));
  return items;
}

std::vector<TableReferencePtr> Parser::parse_from() {
  clause_ = error_number::from_syntax;
  std::vector<TableReferencePtr> references;
  do {
    references.push_back(parse_joins());
  } while (accept_symbol(","));
  return references;
}

TableReferencePtr Parser::parse_joins() {
  const Level level(depth_);
  TableReferencePtr left = parse_table();
  JoinKind kind{};
  while (accept_join(kind)) {
    clause_ = error_number::join_syntax;
    TableReferencePtr right = parse_table();
    clause_ = error_number::join_syntax;
    expect_word("ON");
    ExpressionPtr condition = parse_expression();
    clause_ = error_number::from_syntax;
    const int height = std::max({left->height, right->height, condition->height});
    left = make_reference(Join{kind, std::move(left), std::move(right), std::move(condition)}, height);
  }
  refuse_after_table();
  return left;
}

bool Parser::accept_join(JoinKind& kind) {
  if (accept_word("INNER")) {
    kind = JoinKind::Inner;
  } else if (accept_word("LEFT")) {
    kind = JoinKind::Left;
  } else if (accept_word("RIGHT")) {
    kind = JoinKind::Right;
  } else {
    return false;
  }
  if (kind != JoinKind::Inner) accept_word("OUTER");
  clause_ = error_number::join_syntax;
  expect_word("JOIN");
  return true;
}

TableReferencePtr Parser::parse_table() {
  const auto parse_alias = [this]() -> std::string {
    if (accept_word("AS")) return expect_name();
    refuse_after_table();
    return at_name() ? expect_name() : std::string{};
  };
  if (!accept_symbol("(")) {
    NamedTable table;
    table.table = expect_name();
    table.alias = parse_alias();
    return make_reference(std::move(table), 0);
  }
  if (!at_query()) {
    TableReferencePtr joined = parse_joins();
    expect_symbol(")");
    return joined;
  }
  DerivedTable table;
  table.query = parse_query(nullptr);
  expect_symbol(")");
  table.alias = parse_alias();
  const int height = table.query->height;
  return make_reference(std::move(table), height);
}

}  // namespace engine::embedded::jet_sql
