// An aligned table for people to read. Line breaks and control characters of a cell are shown as one blank, so that a
// row stays a line and a stranger's text cannot steer the terminal.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace console {

/// Each run of line breaks and other control characters as one blank, those at the ends left out.
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
