#include "database/engine/embedded/jet_sql/sqlite_text.h"

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

}  // namespace engine::embedded
