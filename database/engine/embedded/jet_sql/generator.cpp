#include "database/engine/embedded/jet_sql/generator.h"

#include <array>
#include <charconv>
#include <cmath>

#include "database/engine/embedded/jet_sql/sqlite_text.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

/// Aliases can make a short statement long.
constexpr std::size_t longest_output = 4 << 20;

}  // namespace

Generator& Generator::write(std::string_view text) {
  if (out_.size() + text.size() > longest_output) raise(error_number::too_complex);
  out_ += text;
  return *this;
}

void Generator::name(std::string_view name) { write(quoted_name(name)); }

void Generator::text_literal(std::string_view text) { write(quoted_text(text)); }

void Generator::number_literal(double number) {
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  std::string text(buffer.data(), end);
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  // "--" would begin a comment.
  if (std::signbit(number)) text = "(" + text + ")";
  write(text);
}

void Generator::whole_literal(std::int64_t number) {
  const std::string text = std::to_string(number);
  write(number < 0 ? "(" + text + ")" : text);
}

}  // namespace engine::embedded::jet_sql
