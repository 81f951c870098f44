#include "database/engine/embedded/jet_sql/token.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>

#include "database/engine/date_text.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"
#include "support/text.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr std::size_t longest_statement = 1 << 20;
constexpr std::size_t longest_name = std::size_t{64} * 4;  // 64 characters
constexpr std::string_view symbol_tokens[] = {"<=", ">=", "<>", "(", ")", ",", ".",  "!", ";", "=",
                                              "<",  ">",  "+",  "-", "*", "/", "\\", "^", "&"};

bool is_blank(char character) noexcept {
  return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}
char upper(char character) noexcept {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}
bool begins_word(char character) noexcept {
  const char letter = upper(character);
  return (letter >= 'A' && letter <= 'Z') || character == '_' || static_cast<unsigned char>(character) >= 0x80;
}
bool continues_word(char character) noexcept {
  return begins_word(character) || support::is_digit(character) || character == '$';
}

class Tokenizer {
 public:
  explicit Tokenizer(std::string_view statement) : statement_(statement) {}

  Token next() {
    while (position_ < statement_.size() && is_blank(statement_[position_])) ++position_;
    Token token;
    token.begin = position_;
    if (position_ < statement_.size()) read(token);
    token.end = position_;
    return token;
  }

 private:
  char peek(std::size_t ahead = 0) const noexcept {
    return position_ + ahead < statement_.size() ? statement_[position_ + ahead] : '\0';
  }

  void read(Token& token) {
    const char first = peek();
    if (begins_word(first)) {
      read_word(token);
    } else if (support::is_digit(first) || (first == '.' && support::is_digit(peek(1)))) {
      read_number(token);
    } else if (first == '\'' || first == '"') {
      token.kind = TokenKind::Text;
      token.text = read_quoted(first);
    } else if (first == '[' || first == '`') {
      read_quoted_name(token, first == '[' ? ']' : '`');
    } else if (first == '#') {
      read_date(token);
    } else {
      read_symbol(token);
    }
  }

  void read_word(Token& token) {
    const std::size_t begin = position_;
    while (position_ < statement_.size() && continues_word(statement_[position_])) ++position_;
    token.kind = TokenKind::Word;
    token.text = statement_.substr(begin, position_ - begin);
    if (token.text.size() > longest_name) raise(error_number::invalid_name, "…");
  }

  /// Raises this number for the token that begins at the place.
  [[noreturn]] void fail(error_number::Number number, std::size_t begin, TokenKind kind,
                         std::string_view text = {}) const {
    Token token;
    token.kind = kind;
    token.text = text;
    token.begin = begin;
    raise(number, place_of(statement_, token));
  }

  void skip_digits() {
    while (support::is_digit(peek())) ++position_;
  }

  /// A letter after the digits begins the next token ("1AND"), unless it is an exponent followed by digits.
  void read_number(Token& token) {
    const std::size_t begin = position_;
    skip_digits();
    token.whole = true;
    if (peek() == '.') {
      token.whole = false;
      ++position_;
      skip_digits();
    }
    const std::size_t sign = peek(1) == '+' || peek(1) == '-' ? 1 : 0;
    if (upper(peek()) == 'E' && support::is_digit(peek(1 + sign))) {
      token.whole = false;
      position_ += 1 + sign;
      skip_digits();
    }
    token.kind = TokenKind::Number;
    token.text = statement_.substr(begin, position_ - begin);
    const auto result = std::from_chars(token.text.data(), token.text.data() + token.text.size(), token.number);
    if (result.ec != std::errc{}) raise(error_number::overflow);
  }

  /// Inside, a quote is written twice.
  std::string read_quoted(char quote) {
    const std::size_t begin = position_;
    std::string content;
    for (++position_; position_ < statement_.size(); ++position_) {
      if (statement_[position_] == quote) {
        ++position_;
        if (peek() != quote || position_ >= statement_.size()) return content;
      }
      content += statement_[position_];
    }
    fail(error_number::expression_syntax, begin, TokenKind::Text);
  }

  void read_quoted_name(Token& token, char closing) {
    const std::size_t end = statement_.find(closing, position_ + 1);
    if (end == std::string_view::npos) fail(error_number::invalid_bracketing, position_, TokenKind::Symbol, "[");
    token.kind = TokenKind::QuotedName;
    token.text = statement_.substr(position_ + 1, end - position_ - 1);
    if (token.text.empty() || token.text.size() > longest_name) {
      fail(error_number::invalid_bracketing, position_, TokenKind::Symbol, "[");
    }
    position_ = end + 1;
  }

  void read_date(Token& token) {
    const std::size_t end = statement_.find('#', position_ + 1);
    if (end == std::string_view::npos) fail(error_number::expression_syntax, position_, TokenKind::Date);
    const std::optional<Date> date = parse_date(statement_.substr(position_ + 1, end - position_ - 1), "mdy");
    if (!date) fail(error_number::expression_syntax, position_, TokenKind::Date);
    token.kind = TokenKind::Date;
    token.number = date->days;
    position_ = end + 1;
  }

  void read_symbol(Token& token) {
    const std::string_view rest = statement_.substr(position_);
    if (rest.starts_with("/*")) raise(error_number::not_supported, "remarks in the text");
    for (const std::string_view symbol : symbol_tokens) {
      if (!rest.starts_with(symbol)) continue;
      token.kind = TokenKind::Symbol;
      token.text = symbol;
      position_ += symbol.size();
      return;
    }
    fail(error_number::expression_syntax, position_, TokenKind::Symbol, support::first_characters(rest, 1));
  }

  std::string_view statement_;
  std::size_t position_ = 0;
};

}  // namespace

bool Token::is_word(std::string_view keyword) const noexcept {
  if (kind != TokenKind::Word || text.size() != keyword.size()) return false;
  for (std::size_t i = 0; i < keyword.size(); ++i) {
    if (upper(text[i]) != keyword[i]) return false;
  }
  return true;
}

std::string place_of(std::string_view statement, const Token& token) {
  const std::string_view before = statement.substr(0, token.begin);
  const std::size_t line_begin = before.find_last_of('\n') + 1;
  std::string place = fmt::format("line {}, column {}", std::ranges::count(before, '\n') + 1,
                                  support::character_count(before.substr(line_begin)) + 1);
  // A word directly behind a quote is the rest of a text that holds a quote.
  const bool rest_of_text = before.ends_with('\'') || before.ends_with('"');
  if (token.kind == TokenKind::Word && rest_of_text) return place + ": a word";
  switch (token.kind) {
    case TokenKind::Word:
    case TokenKind::Symbol:
      return place + ": '" + token.text + "'";
    case TokenKind::QuotedName:
      return place + ": [" + token.text + "]";
    case TokenKind::Number:
      return place + ": a number";
    case TokenKind::Text:
      return place + ": a text";
    case TokenKind::Date:
      return place + ": a date";
    case TokenKind::End:
      return place + ": the end";
  }
  return place;
}

std::vector<Token> tokenize(std::string_view statement) {
  if (statement.size() > longest_statement) raise(error_number::too_complex);
  // SQLite takes neither, and no user means anything by them.
  if (statement.find('\0') != std::string_view::npos || !support::is_utf8(statement))
    raise(error_number::expression_syntax);
  Tokenizer tokenizer(statement);
  std::vector<Token> tokens;
  do {
    tokens.push_back(tokenizer.next());
  } while (tokens.back().kind != TokenKind::End);
  return tokens;
}

}  // namespace engine::embedded::jet_sql
