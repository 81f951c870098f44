// An aligned table for people to read. Line breaks and control characters of titles and cells are shown as escapes, so
// that a row stays a line and a stranger's text cannot steer the terminal.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace console {

/// Control characters as the escapes of JSON ("\n", "\u001b"), a malformed byte as U+FFFD. A backslash stays one, since
/// paths are full of them: what a text holds exactly is told by JSON.
std::string one_line(std::string_view text);

class TextTable {
 public:
  enum class Align { Left, Right };

  void add_column(std::string_view title, Align align = Align::Left);
  /// As many cells as there are columns.
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
