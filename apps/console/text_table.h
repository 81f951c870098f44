// A table with aligned columns, for people to read. Line breaks and control characters in titles and cells are shown as
// escapes, so that each row stays one line and a stranger's text cannot control the terminal.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace console {

/// The text with its control characters as escapes of JSON ("\n", "\u001b") and malformed bytes as U+FFFD. A backslash
/// is not doubled, because paths are full of them; JSON output shows a text exactly.
std::string one_line(std::string_view text);

class TextTable {
 public:
  enum class Align { Left, Right };

  void add_column(std::string_view title, Align align = Align::Left);
  /// `cells` has one cell for each column.
  void add_row(std::vector<std::string> cells);
  void write(std::ostream& out) const;

 private:
  struct Column {
    std::string title;
    Align align;
    std::size_t width;
  };
  void write_row(std::ostream& out, const std::vector<std::string>& cells) const;

  std::vector<Column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace console
