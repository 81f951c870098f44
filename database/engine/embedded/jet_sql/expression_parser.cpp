#include "database/engine/embedded/jet_sql/expression_parser.h"

#include <algorithm>
#include <utility>

#include "database/engine/embedded/jet_sql/conversion.h"
#include "database/engine/embedded/jet_sql/query_parser.h"
#include "database/engine/embedded/jet_sql/refusal.h"
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

/// Changes the sign of the number. Returns false where the literal is no number.
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

ExpressionPtr ExpressionParser::parse_expression() {
  const error_number::Number clause = cursor_.exchange_clause(error_number::expression_syntax);
  ExpressionPtr expression = parse_binary(0);
  refuse_after_expression(cursor_);
  // If something follows an expression and belongs to no clause, an operator is missing before it.
  const TokenKind next = cursor_.peek().kind;
  if (next == TokenKind::Number || next == TokenKind::Text || next == TokenKind::Date) cursor_.fail_here();
  const bool pivot = in_transform_ && cursor_.at_word("PIVOT");
  if (cursor_.at_name() && !cursor_.at_word("ASC") && !cursor_.at_word("DESC") && !pivot) cursor_.fail_here();
  cursor_.set_clause(clause);
  return expression;
}

ExpressionPtr ExpressionParser::parse_binary(int lowest_precedence) {
  const TokenCursor::Level level(cursor_);
  const bool implied = lacks_field(lowest_precedence);
  ExpressionPtr left = implied ? make(ColumnName{.table = {}, .column = implied_field_}, 0) : parse_prefix();
  while (true) {
    if (lowest_precedence <= predicate_precedence && at_predicate()) {
      left = parse_predicate(std::move(left));
      continue;
    }
    const OperatorRow* const row = find_operator(cursor_.peek());
    if (row == nullptr || row->precedence < lowest_precedence) return left;
    cursor_.take();
    if (at_quantifier() && is_comparison(row->op)) {
      left = parse_quantified(row->op, std::move(left));
      continue;
    }
    ExpressionPtr right = parse_binary(row->precedence + 1);
    const int height = std::max(left->height, right->height);
    left = make(Binary{row->op, std::move(left), std::move(right)}, height);
  }
}

bool ExpressionParser::at_quantifier() const noexcept {
  return (cursor_.at_word("ANY") || cursor_.at_word("SOME") || cursor_.at_word("ALL")) &&
         cursor_.peek(1).is_symbol("(") && queries_.at_query(2);
}

ExpressionPtr ExpressionParser::parse_quantified(BinaryOperator op, ExpressionPtr value) {
  const bool all = cursor_.take().is_word("ALL");
  cursor_.take();
  QueryPtr query = queries_.parse_query(nullptr);
  cursor_.expect_symbol(")");
  const int height = std::max(value->height, query->height);
  return make(Quantified{op, std::move(value), std::move(query), all}, height);
}

/// True in a rule, at a condition whose left side is missing.
bool ExpressionParser::lacks_field(int lowest_precedence) const noexcept {
  if (implied_field_.empty() || lowest_precedence > not_precedence) return false;
  const OperatorRow* const row = find_operator(cursor_.peek());
  return at_predicate() || (row != nullptr && is_comparison(row->op));
}

ExpressionPtr ExpressionParser::parse_prefix() {
  const TokenCursor::Level level(cursor_);
  if (cursor_.accept_word("NOT")) {
    ExpressionPtr operand = parse_binary(not_precedence);
    const int height = operand->height;
    return make(Unary{UnaryOperator::Not, std::move(operand)}, height);
  }
  if (cursor_.accept_symbol("-")) return parse_minus();
  if (cursor_.accept_symbol("+")) {
    ExpressionPtr operand = parse_binary(power_precedence);
    const int height = operand->height;
    return make(Unary{UnaryOperator::Plus, std::move(operand)}, height);
  }
  return parse_primary();
}

ExpressionPtr ExpressionParser::parse_minus() {
  ExpressionPtr operand = parse_binary(power_precedence);
  if (auto* literal = std::get_if<Literal>(&operand->node); literal != nullptr && negate(*literal)) return operand;
  const int height = operand->height;
  return make(Unary{UnaryOperator::Minus, std::move(operand)}, height);
}

ExpressionPtr ExpressionParser::parse_primary() {
  switch (cursor_.peek().kind) {
    case TokenKind::Number:
    case TokenKind::Text:
    case TokenKind::Date:
      return make(literal_of(cursor_.take()), 0);
    case TokenKind::Word:
      return parse_word();
    case TokenKind::QuotedName:
      return parse_column();
    case TokenKind::Symbol:
      if (cursor_.peek().is_symbol("(")) return parse_parenthesis();
      if (cursor_.peek().is_symbol("&")) return parse_prefixed_number();
      cursor_.fail_here();
    case TokenKind::End:
      cursor_.fail_here();
  }
  cursor_.fail_here();
}

/// Reads "&HFF" and "&O17". A "&" directly behind the digits makes it a number of 32 bits.
ExpressionPtr ExpressionParser::parse_prefixed_number() {
  const Token sign = cursor_.take();
  const Token& digits = cursor_.peek();
  const char letter = digits.kind == TokenKind::Word ? static_cast<char>(digits.text.front() | 0x20) : ' ';
  const int base = letter == 'h' ? 16 : letter == 'o' ? 8 : 0;
  if (base == 0 || digits.begin != sign.end) cursor_.fail_here();
  const std::string text = digits.text.substr(1);
  if (text.empty() || prefixed_digits(text, base) != text.size()) cursor_.fail_here();
  const std::size_t end = cursor_.take().end;
  const bool wide = cursor_.peek().is_symbol("&") && cursor_.peek().begin == end;
  if (wide) cursor_.take();
  return make(Literal{static_cast<std::int64_t>(prefixed_number(text, base, wide))}, 0);
}

ExpressionPtr ExpressionParser::parse_word() {
  refuse_operand(cursor_);
  if (cursor_.at_word("EXISTS") && cursor_.peek(1).is_symbol("(") && queries_.at_query(2)) {
    cursor_.skip(2);
    QueryPtr query = queries_.parse_query(nullptr);
    cursor_.expect_symbol(")");
    const int height = query->height;
    return make(Exists{std::move(query)}, height);
  }
  // LEFT and RIGHT are also words of a join.
  const bool function = cursor_.at_name() || cursor_.at_word("LEFT") || cursor_.at_word("RIGHT");
  if (function && cursor_.peek(1).is_symbol("(")) return parse_call();
  if (cursor_.accept_word("NULL")) return make(Literal{}, 0);
  // ON is a word of a join. Where an operand stands, it is the constant.
  if (cursor_.accept_word("ON")) return make(Literal{true}, 0);
  if (cursor_.at_word("TRUE") || cursor_.at_word("FALSE")) return make(Literal{cursor_.take().is_word("TRUE")}, 0);
  return parse_column();
}

ExpressionPtr ExpressionParser::parse_call() {
  Call call;
  call.function = cursor_.take().text;
  cursor_.expect_symbol("(");
  if (cursor_.at_word("DISTINCT")) raise(error_number::not_supported, "aggregates with DISTINCT");
  if (cursor_.accept_symbol("*")) {
    call.star = true;
  } else if (!cursor_.peek().is_symbol(")")) {
    call.arguments = parse_list();
  }
  cursor_.expect_symbol(")");
  if (cursor_.at_word("OVER") && cursor_.peek(1).is_symbol("(")) raise(error_number::not_supported, "window functions");
  const int height = height_of(call.arguments);
  return make(std::move(call), height);
}

ExpressionPtr ExpressionParser::parse_column() {
  ColumnName name;
  name.quoted = cursor_.peek().kind == TokenKind::QuotedName;
  name.column = cursor_.expect_name();
  if (cursor_.accept_symbol(".") || cursor_.accept_symbol("!")) {
    name.table = std::exchange(name.column, {});
    name.column = cursor_.expect_any_name();
  }
  return make(std::move(name), 0);
}

ExpressionPtr ExpressionParser::parse_parenthesis() {
  cursor_.expect_symbol("(");
  if (queries_.at_query()) {
    QueryPtr query = queries_.parse_query(nullptr);
    cursor_.expect_symbol(")");
    const int height = query->height;
    return make(ScalarSelect{std::move(query)}, height);
  }
  ExpressionPtr expression = parse_binary(0);
  cursor_.expect_symbol(")");
  return expression;
}

bool ExpressionParser::at_predicate() const noexcept {
  const std::size_t negation = cursor_.at_word("NOT") ? 1 : 0;
  for (const std::string_view keyword : {"BETWEEN", "LIKE", "IN"}) {
    if (in_pivot_ && keyword == "IN") continue;
    if (cursor_.at_word(keyword, negation)) return true;
  }
  return cursor_.at_word("IS");
}

ExpressionPtr ExpressionParser::parse_predicate(ExpressionPtr value) {
  if (cursor_.accept_word("IS")) {
    const bool negated = cursor_.accept_word("NOT");
    cursor_.expect_word("NULL");
    const int height = value->height;
    return make(NullTest{std::move(value), negated}, height);
  }
  const bool negated = cursor_.accept_word("NOT");
  if (cursor_.accept_word("BETWEEN")) return parse_between(std::move(value), negated);
  if (cursor_.accept_word("IN")) return parse_in(std::move(value), negated);
  cursor_.expect_word("LIKE");
  ExpressionPtr pattern = parse_binary(concatenate_precedence);
  const int height = std::max(value->height, pattern->height);
  return make(Like{std::move(value), std::move(pattern), negated}, height);
}

ExpressionPtr ExpressionParser::parse_between(ExpressionPtr value, bool negated) {
  ExpressionPtr low = parse_binary(concatenate_precedence);
  cursor_.expect_word("AND");
  ExpressionPtr high = parse_binary(concatenate_precedence);
  const int height = std::max({value->height, low->height, high->height});
  return make(Between{std::move(value), std::move(low), std::move(high), negated}, height);
}

ExpressionPtr ExpressionParser::parse_in(ExpressionPtr value, bool negated) {
  cursor_.expect_symbol("(");
  if (queries_.at_query()) {
    QueryPtr query = queries_.parse_query(nullptr);
    cursor_.expect_symbol(")");
    const int height = std::max(value->height, query->height);
    return make(InSelect{std::move(value), std::move(query), negated}, height);
  }
  std::vector<ExpressionPtr> items = parse_list();
  cursor_.expect_symbol(")");
  const int height = std::max(height_of(value), height_of(items));
  return make(InList{std::move(value), std::move(items), negated}, height);
}

std::vector<ExpressionPtr> ExpressionParser::parse_list() {
  const std::string implied = std::exchange(implied_field_, {});
  std::vector<ExpressionPtr> items;
  do {
    items.push_back(parse_binary(0));
  } while (cursor_.accept_symbol(","));
  implied_field_ = implied;
  return items;
}

}  // namespace engine::embedded::jet_sql
