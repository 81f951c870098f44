#include "database/engine/embedded/jet_sql/sql_text.h"

#include <array>
#include <charconv>
#include <cmath>

#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded {
namespace {

std::string quoted(std::string_view content, char quote) {
  std::string text(1, quote);
  for (const char character : content) text.append(character == quote ? 2 : 1, character);
  return text += quote;
}

}  // namespace

std::string quoted_name(std::string_view name) { return quoted(name, '"'); }

std::string quoted_text(std::string_view text) { return quoted(text, '\''); }

namespace jet_sql {

namespace {

/// Aliases can make the text of a short statement long.
constexpr std::size_t longest_output = 4 << 20;

}  // namespace

SqlText& SqlText::write(std::string_view text) {
  if (text_.size() + text.size() > longest_output) raise(error_number::too_complex);
  text_ += text;
  return *this;
}

void SqlText::name(std::string_view name) { write(quoted_name(name)); }

void SqlText::text_literal(std::string_view text) { write(quoted_text(text)); }

void SqlText::number_literal(double number) {
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  std::string text(buffer.data(), end);
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  // "--" would begin a comment.
  if (std::signbit(number)) text = "(" + text + ")";
  write(text);
}

void SqlText::whole_literal(std::int64_t number) {
  const std::string text = std::to_string(number);
  write(number < 0 ? "(" + text + ")" : text);
}

}  // namespace jet_sql

}  // namespace engine::embedded
