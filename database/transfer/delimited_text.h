// Comma-separated values as other programs write and read them. A row ends with CRLF. A text is quoted where it holds a
// comma, a quote or a line break, or is empty. An empty cell without quotes is Null.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/host_stream.h"

namespace transfer {

enum class TextEncoding { Utf8, Cp1252 };

/// The name of `encoding` in files: "utf-8", "windows-1252".
std::string_view encoding_name(TextEncoding encoding);

/// Appends a text as a cell.
void append_cell(std::string& line, std::string_view text);
/// A row of these cells with its end.
std::string delimited_row(const std::vector<std::string>& cells);

struct Cell {
  std::string text;
  bool null = false;
};

/// Reads a file row by row. It keeps only one row in memory.
class DelimitedFile {
 public:
  /// Raises 3024 where it cannot be opened.
  DelimitedFile(const std::string& host_path, TextEncoding encoding);
  /// False behind the last row. An LF alone also ends a row. Raises 3343 with the file's name and the row's number for
  /// a quote that does not end or stands inside a cell, for a CR alone (other programs take it for the end of a row),
  /// and for a text that is not in the file's encoding.
  bool next(std::vector<Cell>& row);
  /// The number of the row that was read last; the first is 1.
  std::size_t row_number() const noexcept { return row_number_; }
  /// Raises 3343 with the names of file and row.
  [[noreturn]] void refuse(std::string_view reason) const;

 private:
  int take();
  int peek();
  bool fill();
  void read_quoted(Cell& cell);
  void end_cell(std::vector<Cell>& row, Cell& cell) const;

  std::string name_;
  support::HostFileReader file_;
  TextEncoding encoding_;
  std::string buffer_;
  std::size_t position_ = 0;
  std::size_t row_number_ = 0;
};

}  // namespace transfer
