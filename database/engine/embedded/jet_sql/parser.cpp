#include "database/engine/embedded/jet_sql/parser.h"

#include <algorithm>
#include <array>

#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

namespace {

/// Words that are never names unless they are quoted: without them the ends of clauses could not be told. All other
/// words of the language are names wherever a name can stand.
constexpr auto reserved_words = std::to_array<std::string_view>(
    {"ALL",  "AND",   "AS",     "BETWEEN", "BY",     "DELETE", "DISTINCT", "DISTINCTROW", "EQV",   "FALSE",
     "FROM", "GROUP", "HAVING", "IMP",     "IN",     "INNER",  "INSERT",   "INTO",        "IS",    "JOIN",
     "LEFT", "LIKE",  "MOD",    "NOT",     "NULL",   "ON",     "OR",       "ORDER",       "RIGHT", "SELECT",
     "SET",  "TRUE",  "UNION",  "UPDATE",  "VALUES", "WHERE",  "XOR"});

}  // namespace

Parser::Level::Level(int& depth) : depth_(depth) {
  if (depth_ >= max_tree_height) raise(error_number::too_complex);
  ++depth_;
}

Parser::Parser(std::string_view statement) : statement_(statement), tokens_(tokenize(statement_)) {}

Statement Parser::parse_statement() {
  clause_ = error_number::no_statement;
  if (accept_word("PARAMETERS")) parse_parameters();
  refuse_statement();
  Statement statement;
  if (at_query()) {
    SelectStatement select;
    select.query = parse_query(&select);
    statement = std::move(select);
  } else if (accept_word("TRANSFORM")) {
    statement = parse_transform();
  } else if (accept_word("INSERT")) {
    statement = parse_insert();
  } else if (accept_word("UPDATE")) {
    statement = parse_update();
  } else if (accept_word("DELETE")) {
    statement = parse_delete();
  } else {
    statement = parse_layout_change();
  }
  expect_end();
  return statement;
}

/// Takes no parameters.
Statement Parser::parse_layout_change() {
  if (parameters_.empty()) {
    if (accept_word("CREATE")) return parse_create();
    if (accept_word("ALTER")) return parse_alter();
    if (accept_word("DROP")) return parse_drop();
  }
  fail_here();
}

ExpressionPtr Parser::parse_lone_expression() {
  clause_ = error_number::expression_syntax;
  accept_symbol("=");
  ExpressionPtr expression = parse_expression();
  expect_end();
  return expression;
}

ExpressionPtr Parser::parse_rule(std::string_view field) {
  clause_ = error_number::expression_syntax;
  implied_field_ = field;
  ExpressionPtr rule = parse_expression();
  expect_end();
  return rule;
}

const Token& Parser::peek(std::size_t ahead) const noexcept {
  return tokens_[std::min(position_ + ahead, tokens_.size() - 1)];
}

Token Parser::take() {
  Token token = peek();
  if (token.kind != TokenKind::End) ++position_;
  return token;
}

bool Parser::at_word(std::string_view keyword, std::size_t ahead) const noexcept {
  return peek(ahead).is_word(keyword);
}

bool Parser::accept_word(std::string_view keyword) {
  if (!at_word(keyword)) return false;
  ++position_;
  return true;
}

bool Parser::accept_symbol(std::string_view symbol) {
  if (!peek().is_symbol(symbol)) return false;
  ++position_;
  return true;
}

void Parser::expect_word(std::string_view keyword) {
  if (!accept_word(keyword)) fail_here();
}

void Parser::expect_symbol(std::string_view symbol) {
  if (!accept_symbol(symbol)) fail_here();
}

void Parser::fail_here() const { raise(clause_, place_of(statement_, peek())); }

bool Parser::at_name(std::size_t ahead) const noexcept {
  const Token& token = peek(ahead);
  if (token.kind == TokenKind::QuotedName) return true;
  return token.kind == TokenKind::Word && std::none_of(reserved_words.begin(), reserved_words.end(),
                                                       [&](std::string_view word) { return token.is_word(word); });
}

std::string Parser::expect_name() {
  if (!at_name()) fail_here();
  return take().text;
}

std::string Parser::expect_any_name() {
  if (peek().kind != TokenKind::Word && peek().kind != TokenKind::QuotedName) fail_here();
  return take().text;
}

void Parser::expect_end() {
  const bool ended = accept_symbol(";");
  if (peek().kind == TokenKind::End) return;
  raise(ended ? error_number::text_after_end : clause_, place_of(statement_, peek()));
}

}  // namespace engine::embedded::jet_sql
