#include "database/engine/automation/bracketed_words.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "support/encoding.h"

namespace engine::automation {
namespace {

bool is_word_character(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte >= 0x80 || std::isalnum(byte) != 0 || character == '_';
}

bool is_any_of(std::string_view word, std::initializer_list<std::string_view> words) {
  return std::ranges::any_of(words,
                             [word](std::string_view known) { return support::equal_ignoring_case(word, known); });
}

/// True where a name can follow this word or sign. There `desc` is a field.
bool expects_expression(std::string_view before) {
  if (before.empty()) return false;
  const char last = before.back();
  if (!is_word_character(last)) return last != ')' && last != ']' && last != '\'' && last != '"' && last != '#';
  return is_any_of(before, {"SELECT", "DISTINCT", "ALL", "WHERE", "AND", "OR", "NOT", "BY", "SET", "ON", "HAVING",
                            "BETWEEN", "LIKE", "IN", "AS", "MOD", "XOR"});
}

bool expects_table(std::string_view before) {
  return before == "," || is_any_of(before, {"FROM", "INTO", "UPDATE", "JOIN", "TABLE"});
}

/// The end of a text, date or bracketed name that begins at `start`.
std::size_t end_of_quoted(std::string_view statement, std::size_t start) {
  const char closing = statement[start] == '[' ? ']' : statement[start];
  const std::size_t end = statement.find(closing, start + 1);
  return end == std::string_view::npos ? statement.size() : end + 1;
}

std::size_t end_of_word(std::string_view statement, std::size_t start) {
  std::size_t end = start;
  while (end < statement.size() && is_word_character(statement[end])) ++end;
  return end;
}

}  // namespace

std::string with_bracketed_words(std::string_view statement) {
  constexpr std::string_view quotes = "'\"#[";
  std::string text;
  std::string_view before;
  for (std::size_t place = 0; place < statement.size();) {
    const char character = statement[place];
    std::size_t end = place + 1;
    if (quotes.find(character) != std::string_view::npos) end = end_of_quoted(statement, place);
    if (is_word_character(character)) end = end_of_word(statement, place);
    const std::string_view token = statement.substr(place, end - place);
    const bool is_name = (support::equal_ignoring_case(token, "desc") && expects_expression(before)) ||
                         (support::equal_ignoring_case(token, "index") && expects_table(before));
    text += is_name ? "[" + std::string(token) + "]" : std::string(token);
    if (std::isspace(static_cast<unsigned char>(character)) == 0) before = token;
    place = end;
  }
  return text;
}

}  // namespace engine::automation
