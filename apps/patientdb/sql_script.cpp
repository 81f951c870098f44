#include "apps/patientdb/sql_script.h"

#include <algorithm>

#include "support/encoding.h"

namespace patientdb {
namespace {

constexpr std::string_view blanks = " \t\r\n";

/// The position behind the quoted text that begins at `start`, or the end of the script; `start` itself if no quoted
/// text begins there. A doubled quote inside counts as the end of one text and the start of the next, with the same
/// result.
std::size_t quoted_end(std::string_view text, std::size_t start) {
  const char opening = text[start];
  if (opening != '\'' && opening != '"' && opening != '[') return start;
  const std::size_t closing = text.find(opening == '[' ? ']' : opening, start + 1);
  return closing == std::string_view::npos ? text.size() : closing + 1;
}

bool begins_comment(std::string_view text, std::size_t position) {
  if (!text.substr(position).starts_with("--")) return false;
  const std::size_t before = text.substr(0, position).find_last_not_of(" \t");
  return before == std::string_view::npos || text[before] == '\n';
}

bool is_word_character(char character) {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') || character == '_' ||
         (character >= '0' && character <= '9') || static_cast<unsigned char>(character) >= 0x80;
}

bool begins_with_parameters(std::string_view statement) {
  constexpr std::string_view word = "PARAMETERS";
  return support::equal_ignoring_case(statement.substr(0, word.size()), word) &&
         (statement.size() == word.size() || !is_word_character(statement[word.size()]));
}

/// The position behind the statement's first ";"; its end if it has none.
std::size_t parameters_end(std::string_view statement) {
  std::size_t i = 0;
  while (i < statement.size() && statement[i] != ';') i = std::max(quoted_end(statement, i), i + 1);
  return std::min(i + 1, statement.size());
}

class ScriptSplitter {
 public:
  explicit ScriptSplitter(std::string_view script) : script_(script) {}

  std::vector<ScriptStatement> split() {
    for (std::size_t i = 0; i < script_.size();) {
      if (begins_comment(script_, i)) {
        i = std::min(script_.find('\n', i), script_.size());
      } else if (script_[i] == ';' && !declares_only()) {
        finish_statement();
        ++i;
      } else {
        const std::size_t end = std::max(quoted_end(script_, i), i + 1);
        take(script_.substr(i, end - i));
        i = end;
      }
    }
    finish_statement();
    return std::move(statements_);
  }

 private:
  /// True right behind a clause PARAMETERS. That clause is no statement of its own: it belongs to the statement behind
  /// its ";".
  bool declares_only() const {
    return begins_with_parameters(current_.text) && parameters_end(current_.text) == current_.text.size();
  }

  void take(std::string_view piece) {
    if (current_.text.empty()) {
      if (piece.find_first_not_of(blanks) == std::string_view::npos) {
        line_ += static_cast<int>(std::ranges::count(piece, '\n'));
        return;
      }
      current_.line = line_;
    }
    current_.text += piece;
    line_ += static_cast<int>(std::ranges::count(piece, '\n'));
  }

  void finish_statement() {
    if (!current_.text.empty()) {
      current_.text.erase(current_.text.find_last_not_of(blanks) + 1);
      statements_.push_back(std::move(current_));
    }
    current_ = {};
  }

  std::string_view script_;
  std::vector<ScriptStatement> statements_;
  ScriptStatement current_;
  int line_ = 1;
};

/// The words of a statement outside of quotes and parentheses, one after the other.
class WordReader {
 public:
  explicit WordReader(std::string_view text) : text_(text) {}

  /// Empty at the end.
  std::string_view next() {
    int depth = 0;
    while (position_ < text_.size()) {
      const char character = text_[position_];
      if (const std::size_t end = quoted_end(text_, position_); end != position_) {
        position_ = end;
      } else if (depth == 0 && is_word_character(character)) {
        return word();
      } else {
        if (character == '(') ++depth;
        if (character == ')') --depth;
        ++position_;
      }
    }
    return {};
  }

 private:
  std::string_view word() {
    const std::size_t start = position_;
    while (position_ < text_.size() && is_word_character(text_[position_])) ++position_;
    return text_.substr(start, position_ - start);
  }

  std::string_view text_;
  std::size_t position_ = 0;
};

}  // namespace

std::vector<ScriptStatement> split_script(std::string_view script) { return ScriptSplitter(script).split(); }

bool is_query(std::string_view statement) {
  statement.remove_prefix(std::min(statement.find_first_not_of(blanks), statement.size()));
  if (begins_with_parameters(statement)) statement.remove_prefix(parameters_end(statement));
  const std::size_t start = statement.find_first_not_of(" \t\r\n(");
  if (start == std::string_view::npos) return false;
  WordReader words(statement.substr(start));
  const std::string_view first = words.next();
  for (const std::string_view always : {"TRANSFORM", "TABLE"}) {
    if (support::equal_ignoring_case(first, always)) return true;
  }
  if (!support::equal_ignoring_case(first, "SELECT")) return false;
  for (std::string_view word = words.next(); !word.empty(); word = words.next()) {
    if (support::equal_ignoring_case(word, "INTO")) return false;
    if (support::equal_ignoring_case(word, "FROM")) return true;
  }
  return true;
}

}  // namespace patientdb
