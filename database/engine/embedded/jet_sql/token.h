// Tokens of the dialect. Here the words of the language are plain words: only the parser knows, by its place, whether a
// word is a keyword or a name.
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
  /// The word as written, the content of a quoted name or text, the digits of a number, or the characters of a symbol.
  std::string text;
  /// The value of a number; of a date, its days since 1899-12-30.
  double number = 0;
  /// True for a number without point and exponent.
  bool whole = false;
  /// Where the token begins and ends in the statement, in bytes.
  std::size_t begin = 0;
  std::size_t end = 0;

  /// Precondition: `keyword` is in upper case.
  bool is_word(std::string_view keyword) const noexcept;
  bool is_symbol(std::string_view symbol) const noexcept { return kind == TokenKind::Symbol && text == symbol; }
};

/// Tells for an error's text where a token stands and what it is: "line 1, column 8: 'FROM'". A text, number or date is
/// not quoted, only named as such: errors do not show what a statement stores.
std::string place_of(std::string_view statement, const Token& token);

/// Returns the statement's tokens; the last one has the kind End. Raises 3075 for an invalid character, text or date,
/// 3126 for a bracket that is not closed, 3360 for a statement beyond the size limit.
std::vector<Token> tokenize(std::string_view statement);

}  // namespace engine::embedded::jet_sql
