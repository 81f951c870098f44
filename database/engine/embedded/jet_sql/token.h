// Tokens of the dialect. Words of the language are plain words here: whether one is a keyword or a name depends on
// where it stands, which only the parser knows.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace engine::embedded::jet_sql {

enum class TokenKind {
  Word,
  QuotedName,  ///< […] or `…`
  Number,
  Text,
  Date,
  Symbol,
  End,
};

struct Token {
  TokenKind kind = TokenKind::End;
  /// A word as written, the content of a quoted name or text, the digits of a number, the characters of a symbol.
  std::string text;
  /// Value of a number, and of a date in days since 1899-12-30.
  double number = 0;
  /// A number without point and exponent.
  bool whole = false;
  /// Where it begins and ends in the statement, in bytes.
  std::size_t begin = 0;
  std::size_t end = 0;

  /// Precondition: `keyword` is in upper case.
  bool is_word(std::string_view keyword) const noexcept;
  bool is_symbol(std::string_view symbol) const noexcept { return kind == TokenKind::Symbol && text == symbol; }
};

/// Where a token stands and what it is, for an error's text: "line 1, column 8: 'FROM'". Of a text, a number and a date
/// only that they are one: what a statement stores stays out of errors.
std::string place_of(std::string_view statement, const Token& token);

/// The statement's tokens, one of kind End last. Raises 3075 for a character, text or date that is none, 3126 for a
/// bracket that is not closed, 3360 for a statement beyond the size limit.
std::vector<Token> tokenize(std::string_view statement);

}  // namespace engine::embedded::jet_sql
