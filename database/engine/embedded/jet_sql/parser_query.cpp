#include <algorithm>
#include <utility>

#include "database/engine/embedded/jet_sql/error_numbers.h"
#include "database/engine/embedded/jet_sql/parser.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr int deepest_select = 30;
constexpr std::size_t most_unions = 100;
constexpr std::size_t most_groups = 64;

void raise_height(int& height, int below) {
  height = std::max(height, below + 1);
  if (height > max_tree_height) raise(error_too_complex);
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
  if (height_below >= max_tree_height) raise(error_too_complex);
  auto reference = std::make_unique<TableReference>();
  reference->node = std::move(node);
  reference->height = height_below + 1;
  return reference;
}

}  // namespace

QueryPtr Parser::parse_query(SelectStatement* into) {
  const int clause = clause_;
  if (select_depth_ >= deepest_select) raise(error_too_complex);
  ++select_depth_;
  auto query = std::make_unique<QueryTree>();
  query->selects.push_back(parse_select(into));
  while (accept_word("UNION")) {
    if (query->selects.size() >= most_unions) raise(error_too_complex);
    query->union_all.push_back(accept_word("ALL"));
    query->selects.push_back(parse_select(nullptr));
  }
  query->order_by = parse_order_by();
  for (const auto& select : query->selects) raise_height(query->height, *select);
  for (const OrderItem& item : query->order_by) raise_height(query->height, item.expression);
  --select_depth_;
  // Inside another clause, what follows is that clause's matter.
  if (into == nullptr) clause_ = clause;
  return query;
}

std::unique_ptr<Select> Parser::parse_select(SelectStatement* into) {
  clause_ = error_select_syntax;
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
    clause_ = error_expression_syntax;
  }
  parse_groups(*select);
  return select;
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
    if (select.items.size() >= most_fields) raise(error_too_many_fields);
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
  if (at_word("IN")) raise(error_not_supported, "SELECT INTO another database");
}

void Parser::parse_external(SelectStatement* statement) {
  if (statement == nullptr || statement->into.empty()) {
    raise(error_not_supported, "a query on another database, except SELECT INTO");
  }
  statement->in_clause.begin = peek().begin;
  expect_word("IN");
  if (peek().kind != TokenKind::Text || peek().text.empty()) fail_here();
  statement->external_file = take().text;
  statement->in_clause.end = peek().begin;
}

void Parser::parse_groups(Select& select) {
  if (accept_word("GROUP")) {
    clause_ = error_group_by_syntax;
    expect_word("BY");
    do {
      if (select.group_by.size() >= most_groups) raise(error_too_complex);
      select.group_by.push_back(parse_expression());
    } while (accept_symbol(","));
  }
  if (accept_word("HAVING")) {
    select.having = parse_expression();
    clause_ = error_expression_syntax;
  }
}

std::vector<OrderItem> Parser::parse_order_by() {
  std::vector<OrderItem> items;
  if (!accept_word("ORDER")) return items;
  clause_ = error_order_by_syntax;
  expect_word("BY");
  do {
    if (items.size() >= most_groups) raise(error_too_complex);
    OrderItem item;
    item.expression = parse_expression();
    if (!accept_word("ASC")) item.descending = accept_word("DESC");
    items.push_back(std::move(item));
  } while (accept_symbol(","));
  return items;
}

std::vector<TableReferencePtr> Parser::parse_from() {
  clause_ = error_from_syntax;
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
    clause_ = error_join_syntax;
    TableReferencePtr right = parse_table();
    clause_ = error_join_syntax;
    expect_word("ON");
    ExpressionPtr condition = parse_expression();
    clause_ = error_from_syntax;
    const int height = std::max({left->height, right->height, condition->height});
    left = make_reference(Join{kind, std::move(left), std::move(right), std::move(condition)}, height);
  }
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
  clause_ = error_join_syntax;
  expect_word("JOIN");
  return true;
}

TableReferencePtr Parser::parse_table() {
  const auto parse_alias = [this]() -> std::string {
    if (accept_word("AS")) return expect_name();
    return at_name() ? expect_name() : std::string{};
  };
  if (!accept_symbol("(")) {
    NamedTable table;
    table.table = expect_name();
    table.alias = parse_alias();
    return make_reference(std::move(table), 0);
  }
  if (!at_word("SELECT")) {
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
