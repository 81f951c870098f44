#include "database/engine/embedded/jet_sql/token_cursor.h"

#include <algorithm>
#include <array>

#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

namespace {

/// Words that are names only in quotes, because otherwise nobody could tell where a clause ends. All other words of the
/// language are names wherever a name can stand.
constexpr auto reserved_words = std::to_array<std::string_view>(
    {"ALL",  "AND",   "AS",     "BETWEEN", "BY",     "DELETE", "DISTINCT", "DISTINCTROW", "EQV",   "FALSE",
     "FROM", "GROUP", "HAVING", "IMP",     "IN",     "INNER",  "INSERT",   "INTO",        "IS",    "JOIN",
     "LEFT", "LIKE",  "MOD",    "NOT",     "NULL",   "ON",     "OR",       "ORDER",       "RIGHT", "SELECT",
     "SET",  "TRUE",  "UNION",  "UPDATE",  "VALUES", "WHERE",  "XOR"});

}  // namespace

TokenCursor::Level::Level(TokenCursor& cursor) : depth_(cursor.depth_) {
  if (depth_ >= max_tree_height) raise(error_number::too_complex);
  ++depth_;
}

TokenCursor::TokenCursor(std::string_view statement) : statement_(statement), tokens_(tokenize(statement_)) {}

const Token& TokenCursor::peek(std::size_t ahead) const noexcept {
  return tokens_[std::min(position_ + ahead, tokens_.size() - 1)];
}

Token TokenCursor::take() {
  Token token = peek();
  if (token.kind != TokenKind::End) ++position_;
  return token;
}

bool TokenCursor::at_word(std::string_view keyword, std::size_t ahead) const noexcept {
  return peek(ahead).is_word(keyword);
}

bool TokenCursor::accept_word(std::string_view keyword) {
  if (!at_word(keyword)) return false;
  ++position_;
  return true;
}

bool TokenCursor::accept_symbol(std::string_view symbol) {
  if (!peek().is_symbol(symbol)) return false;
  ++position_;
  return true;
}

void TokenCursor::expect_word(std::string_view keyword) {
  if (!accept_word(keyword)) fail_here();
}

void TokenCursor::expect_symbol(std::string_view symbol) {
  if (!accept_symbol(symbol)) fail_here();
}

void TokenCursor::fail_here() const { raise(clause_, place_of(statement_, peek())); }

bool TokenCursor::at_name(std::size_t ahead) const noexcept {
  const Token& token = peek(ahead);
  if (token.kind == TokenKind::QuotedName) return true;
  return token.kind == TokenKind::Word && std::none_of(reserved_words.begin(), reserved_words.end(),
                                                       [&](std::string_view word) { return token.is_word(word); });
}

std::string TokenCursor::expect_name() {
  if (!at_name()) fail_here();
  return take().text;
}

std::string TokenCursor::expect_any_name() {
  if (peek().kind != TokenKind::Word && peek().kind != TokenKind::QuotedName) fail_here();
  return take().text;
}

void TokenCursor::expect_end() {
  const bool ended = accept_symbol(";");
  if (peek().kind == TokenKind::End) return;
  raise(ended ? error_number::text_after_end : clause_, place_of(statement_, peek()));
}

std::vector<std::string> TokenCursor::expect_names() {
  std::vector<std::string> names;
  expect_symbol("(");
  do {
    if (names.size() >= most_fields) raise(error_number::too_many_fields);
    names.push_back(expect_name());
    if (accept_symbol(".") || accept_symbol("!")) names.back() = expect_any_name();
    if (!accept_word("ASC")) accept_word("DESC");
  } while (accept_symbol(","));
  expect_symbol(")");
  return names;
}

std::string TokenCursor::text_since(std::size_t begin) const {
  return statement_.substr(begin, tokens_[position_ - 1].end - begin);
}

}  // namespace engine::embedded::jet_sql
