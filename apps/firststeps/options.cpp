#include "apps/firststeps/options.h"

#include <algorithm>
#include <array>

#include "support/text.h"

namespace firststeps {
namespace {

struct OptionRow {
  std::string_view name;
  std::string Options::*value;
};

constexpr std::array<OptionRow, 5> options = {{
    {"--program-dir", &Options::program_folder},
    {"--registry", &Options::hive},
    {"--report", &Options::report},
    {"--journal", &Options::journal},
    {"--colours", &Options::colours},
}};

void skip_blanks(std::string_view& text) { text.remove_prefix(std::min(text.find_first_not_of(' '), text.size())); }

/// The next word, or the text in quotes.
std::string_view take_word(std::string_view& text) {
  skip_blanks(text);
  const bool quoted = text.starts_with('"');
  if (quoted) text.remove_prefix(1);
  const std::size_t end = std::min(text.find(quoted ? '"' : ' '), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(std::min(text.size(), end + (quoted ? 1 : 0)));
  skip_blanks(text);
  return word;
}

/// The text without quotes around all of it: a command shell needs quotes around a "|".
std::string without_quotes(std::string text) {
  const bool quoted = text.size() > 1 && text.front() == '"' && text.find('"', 1) == text.size() - 1;
  return quoted ? text.substr(1, text.size() - 2) : text;
}

const OptionRow* option_at(std::string_view text) {
  const std::string_view name = text.substr(0, text.find(' '));
  for (const OptionRow& row : options) {
    if (row.name == name) return &row;
  }
  return nullptr;
}

}  // namespace

Options read_options(std::string_view command_line) {
  Options found;
  skip_blanks(command_line);
  while (const OptionRow* row = option_at(command_line)) {
    take_word(command_line);
    found.*row->value = std::string(take_word(command_line));
  }
  if (!found.program_folder.empty() && !found.program_folder.ends_with('\\')) found.program_folder += '\\';
  found.command_line = without_quotes(support::trim(command_line));
  return found;
}

}  // namespace firststeps
