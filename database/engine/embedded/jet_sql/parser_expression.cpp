#include <algorithm>
#include <utility>

#include "database/engine/embedded/jet_sql/conversion.h"
#include "database/engine/embedded/jet_sql/parser.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr int not_precedence = 6;
constexpr int predicate_precedence = 7;
constexpr int concatenate_precedence = 8;
constexpr int power_precedence = 14;

struct OperatorRow {
  std::string_view text;
  BinaryOperator op;
  int precedence;
};

constexpr OperatorRow word_operators[] = {
    {"IMP", BinaryOperator::Imp, 1}, {"EQV", BinaryOperator::Eqv, 2}, {"XOR", BinaryOperator::Xor, 3},
    {"OR", BinaryOperator::Or, 4},   {"AND", BinaryOperator::And, 5}, {"MOD", BinaryOperator::Modulo, 10},
};

constexpr OperatorRow symbol_operators[] = {
    {"=", BinaryOperator::Equal, predicate_precedence},
    {"<>", BinaryOperator::NotEqual, predicate_precedence},
    {"<", BinaryOperator::Less, predicate_precedence},
    {">", BinaryOperator::Greater, predicate_precedence},
    {"<=", BinaryOperator::LessOrEqual, predicate_precedence},
    {">=", BinaryOperator::GreaterOrEqual, predicate_precedence},
    {"&", BinaryOperator::Concatenate, concatenate_precedence},
    {"+", BinaryOperator::Add, 9},
    {"-", BinaryOperator::Subtract, 9},
    {"\\", BinaryOperator::WholeDivide, 11},
    {"*", BinaryOperator::Multiply, 12},
    {"/", BinaryOperator::Divide, 12},
    {"^", BinaryOperator::Power, power_precedence},
};

const OperatorRow* find_operator(const Token& token) noexcept {
  if (token.kind == TokenKind::Word) {
    for (const OperatorRow& row : word_operators) {
      if (token.is_word(row.text)) return &row;
    }
  } else if (token.kind == TokenKind::Symbol) {
    for (const OperatorRow& row : symbol_operators) {
      if (token.text == row.text) return &row;
    }
  }
  return nullptr;
}

int height_of(const ExpressionPtr& expression) noexcept { return expression == nullptr ? 0 : expression->height; }

int height_of(const std::vector<ExpressionPtr>& expressions) noexcept {
  int height = 0;
  for (const ExpressionPtr& expression : expressions) height = std::max(height, expression->height);
  return height;
}

template <typename Node>
ExpressionPtr make(Node node, int height_below) {
  if (height_below >= max_tree_height) raise(error_number::too_complex);
  auto expression = std::make_unique<Expression>();
  expression->node = std::move(node);
  expression->height = height_below + 1;
  return expression;
}

Literal literal_of(const Token& token) {
  constexpr double largest_whole = 9007199254740992.0;  // 2^53
  if (token.kind == TokenKind::Text) return {token.text};
  if (token.kind == TokenKind::Date) return {DateLiteral{token.number}};
  if (token.whole && token.number <= largest_whole) return {static_cast<std::int64_t>(token.number)};
  return {token.number};
}

/// The number with its sign changed; false where the literal is none.
bool negate(Literal& literal) noexcept {
  if (auto* whole = std::get_if<std::int64_t>(&literal.value)) {
    *whole = -*whole;
    return true;
  }
  if (auto* number = std::get_if<double>(&literal.value)) {
    *number = -*number;
    return true;
  }
  return false;
}

}  // namespace

ExpressionPtr Parser::parse_expression() {
  const error_number::Number clause = std::exchange(clause_, error_number::expression_syntax);
  ExpressionPtr expression = parse_binary(0);
  refuse_after_expression();
  // What follows an expression and belongs to no clause lacks an operator before it.
  const TokenKind next = peek().kind;
  if (next == TokenKind::Number || next == TokenKind::Text || next == TokenKind::Date) fail_here();
  const bool pivot = transforms_ && at_word("PIVOT");
  if (at_name() && !at_word("ASC") && !at_word("DESC") && !pivot) fail_here();
  clause_ = clause;
  return expression;
}

ExpressionPtr Parser::parse_binary(int lowest_precedence) {
  const Level level(depth_);
  const bool implied = lacks_field(lowest_precedence);
  ExpressionPtr left = implied ? make(ColumnName{.table = {}, .column = implied_field_}, 0) : parse_prefix();
  while (true) {
    if (lowest_precedence <= predicate_precedence && at_predicate()) {
      left = parse_predicate(std::move(left));
      continue;
    }
    const OperatorRow* const row = find_operator(peek());
    if (row == nullptr || row->precedence < lowest_precedence) return left;
    take();
    if (at_quantifier() && is_comparison(row->op)) {
      left = parse_quantified(row->op, std::move(left));
      continue;
    }
    ExpressionPtr right = parse_binary(row->precedence + 1);
    const int height = std::max(left->height, right->height);
    left = make(Binary{row->op, std::move(left), std::move(right)}, height);
  }
}

bool Parser::at_quantifier() const noexcept {
  return (at_word("ANY") || at_word("SOME") || at_word("ALL")) && peek(1).is_symbol("(") && at_query(2);
}

ExpressionPtr Parser::parse_quantified(BinaryOperator op, ExpressionPtr value) {
  const bool all = take().is_word("ALL");
  take();
  QueryPtr query = parse_query(nullptr);
  expect_symbol(")");
  const int height = std::max(value->height, query->height);
  return make(Quantified{op, std::move(value), std::move(query), all}, height);
}

/// In a rule, at a condition whose left side is missing.
bool Parser::lacks_field(int lowest_precedence) const noexcept {
  if (implied_field_.empty() || lowest_precedence > not_precedence) return false;
  const OperatorRow* const row = find_operator(peek());
  return at_predicate() || (row != nullptr && is_comparison(row->op));
}

ExpressionPtr Parser::parse_prefix() {
  const Level level(depth_);
  if (accept_word("NOT")) {
    ExpressionPtr operand = parse_binary(not_precedence);
    const int height = operand->height;
    return make(Unary{UnaryOperator::Not, std::move(operand)}, height);
  }
  if (accept_symbol("-")) return parse_minus();
  if (accept_symbol("+")) {
    ExpressionPtr operand = parse_binary(power_precedence);
    const int height = operand->height;
    return make(Unary{UnaryOperator::Plus, std::move(operand)}, height);
  }
  return parse_primary();
}

ExpressionPtr Parser::parse_minus() {
  ExpressionPtr operand = parse_binary(power_precedence);
  if (auto* literal = std::get_if<Literal>(&operand->node); literal != nullptr && negate(*literal)) return operand;
  const int height = operand->height;
  return make(Unary{UnaryOperator::Minus, std::move(operand)}, height);
}

ExpressionPtr Parser::parse_primary() {
  switch (peek().kind) {
    case TokenKind::Number:
    case TokenKind::Text:
    case TokenKind::Date:
      return make(literal_of(take()), 0);
    case TokenKind::Word:
      return parse_word();
    case TokenKind::QuotedName:
      return parse_column();
    case TokenKind::Symbol:
      if (peek().is_symbol("(")) return parse_parenthesis();
      if (peek().is_symbol("&")) return parse_prefixed_number();
      fail_here();
    case TokenKind::End:
      fail_here();
  }
  fail_here();
}

/// "&HFF" and "&O17"; a "&" right behind makes a number of 32 bits.
ExpressionPtr Parser::parse_prefixed_number() {
  const Token sign = take();
  const Token& digits = peek();
  const char letter = digits.kind == TokenKind::Word ? static_cast<char>(digits.text.front() | 0x20) : ' ';
  const int base = letter == 'h' ? 16 : letter == 'o' ? 8 : 0;
  if (base == 0 || digits.begin != sign.end) fail_here();
  const std::string text = digits.text.substr(1);
  if (text.empty() || prefixed_digits(text, base) != text.size()) fail_here();
  const std::size_t end = take().end;
  const bool wide = peek().is_symbol("&") && peek().begin == end;
  if (wide) take();
  return make(Literal{static_cast<std::int64_t>(prefixed_number(text, base, wide))}, 0);
}

ExpressionPtr Parser::parse_word() {
  refuse_operand();
  if (at_word("EXISTS") && peek(1).is_symbol("(") && at_query(2)) {
    position_ += 2;
    QueryPtr query = parse_query(nullptr);
    expect_symbol(")");
    const int height = query->height;
    return make(Exists{std::move(query)}, height);
  }
  // LEFT and RIGHT are words of a join as well.
  const bool function = at_name() || at_word("LEFT") || at_word("RIGHT");
  if (function && peek(1).is_symbol("(")) return parse_call();
  if (accept_word("NULL")) return make(Literal{}, 0);
  // A word of a join; where an operand stands it is the constant.
  if (accept_word("ON")) return make(Literal{true}, 0);
  if (at_word("TRUE") || at_word("FALSE")) return make(Literal{take().is_word("TRUE")}, 0);
  return parse_column();
}

ExpressionPtr Parser::parse_call() {
  Call call;
  call.function = take().text;
  expect_symbol("(");
  if (at_word("DISTINCT")) raise(error_number::not_supported, "aggregates with DISTINCT");
  if (accept_symbol("*")) {
    call.star = true;
  } else if (!peek().is_symbol(")")) {
    call.arguments = parse_list();
  }
  expect_symbol(")");
  if (at_word("OVER") && peek(1).is_symbol("(")) raise(error_number::not_supported, "window functions");
  const int height = height_of(call.arguments);
  return make(std::move(call), height);
}

ExpressionPtr Parser::parse_column() {
  ColumnName name;
  name.quoted = peek().kind == TokenKind::QuotedName;
  name.column = expect_name();
  if (accept_symbol(".") || accept_symbol("!")) {
    name.table = std::exchange(name.column, {});
    name.column = expect_any_name();
  }
  return make(std::move(name), 0);
}

ExpressionPtr Parser::parse_parenthesis() {
  expect_symbol("(");
  if (at_query()) {
    QueryPtr query = parse_query(nullptr);
    expect_symbol(")");
    const int height = query->height;
    return make(ScalarSelect{std::move(query)}, height);
  }
  ExpressionPtr expression = parse_binary(0);
  expect_symbol(")");
  return expression;
}

bool Parser::at_predicate() const noexcept {
  const std::size_t negation = at_word("NOT") ? 1 : 0;
  for (const std::string_view keyword : {"BETWEEN", "LIKE", "IN"}) {
    if (pivots_ && keyword == "IN") continue;
    if (at_word(keyword, negation)) return true;
  }
  return at_word("IS");
}

ExpressionPtr Parser::parse_predicate(ExpressionPtr value) {
  if (accept_word("IS")) {
    const bool negated = accept_word("NOT");
    expect_word("NULL");
    const int height = value->height;
    return make(NullTest{std::move(value), negated}, height);
  }
  const bool negated = accept_word("NOT");
  if (accept_word("BETWEEN")) return parse_between(std::move(value), negated);
  if (accept_word("IN")) return parse_in(std::move(value), negated);
  expect_word("LIKE");
  ExpressionPtr pattern = parse_binary(concatenate_precedence);
  const int height = std::max(value->height, pattern->height);
  return make(Like{std::move(value), std::move(pattern), negated}, height);
}

ExpressionPtr Parser::parse_between(ExpressionPtr value, bool negated) {
  ExpressionPtr low = parse_binary(concatenate_precedence);
  expect_word("AND");
  ExpressionPtr high = parse_binary(concatenate_precedence);
  const int height = std::max({value->height, low->height, high->height});
  return make(Between{std::move(value), std::move(low), std::move(high), negated}, height);
}

ExpressionPtr Parser::parse_in(ExpressionPtr value, bool negated) {
  expect_symbol("(");
  if (at_query()) {
    QueryPtr query = parse_query(nullptr);
    expect_symbol(")");
    const int height = std::max(value->height, query->height);
    return make(InSelect{std::move(value), std::move(query), negated}, height);
  }
  std::vector<ExpressionPtr> items = parse_list();
  expect_symbol(")");
  const int height = std::max(height_of(value), height_of(items));
  return make(InList{std::move(value), std::move(items), negated}, height);
}

std::vector<ExpressionPtr> Parser::parse_list() {
  const std::string implied = std::exchange(implied_field_, {});
  std::vector<ExpressionPtr> items;
  do {
    items.push_back(parse_binary(0));
  } while (accept_symbol(","));
  implied_field_ = implied;
  return items;
}

}  // namespace engine::embedded::jet_sql
