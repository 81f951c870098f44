#include "database/transfer/delimited_text.h"

#include <fmt/core.h>

#include <optional>
#include <utility>

#include "support/encoding.h"
#include "support/error.h"
#include "support/host_path.h"

namespace transfer {
namespace {

constexpr int end_of_file = -1;
constexpr std::size_t part_size = 1 << 16;

}  // namespace

std::string_view encoding_name(TextEncoding encoding) {
  return encoding == TextEncoding::Utf8 ? "utf-8" : "windows-1252";
}

void append_cell(std::string& line, std::string_view text) {
  const bool plain = !text.empty() && text.find_first_of(",\"\r\n") == std::string_view::npos && text.front() != ' ' &&
                     text.back() != ' ';
  if (plain) {
    line += text;
    return;
  }
  line += '"';
  for (const char character : text) line.append(character == '"' ? 2 : 1, character);
  line += '"';
}

std::string delimited_row(const std::vector<std::string>& cells) {
  std::string line;
  for (const std::string& cell : cells) {
    if (&cell != cells.data()) line += ',';
    append_cell(line, cell);
  }
  return line + "\r\n";
}

DelimitedFile::DelimitedFile(const std::string& host_path, TextEncoding encoding)
    : name_(support::host_path_of(support::std_path(host_path).filename())), file_(host_path), encoding_(encoding) {
  if (!file_) throw support::RuntimeError(support::error_number::file_not_found, "File not found: " + host_path);
  if (!fill() || encoding != TextEncoding::Utf8) return;
  if (std::string_view(buffer_).starts_with(support::utf8_byte_order_mark)) {
    position_ = support::utf8_byte_order_mark.size();
  }
}

void DelimitedFile::refuse(std::string_view reason) const {
  throw support::RuntimeError(support::error_number::unknown_format,
                              fmt::format("{}, row {}: {}", name_, row_number_, reason));
}

bool DelimitedFile::fill() {
  buffer_.resize(part_size);
  const std::optional<std::size_t> count = file_.read(buffer_);
  buffer_.resize(count.value_or(0));
  position_ = 0;
  if (!count) refuse("cannot be read");
  return !buffer_.empty();
}

int DelimitedFile::peek() {
  if (position_ == buffer_.size() && !fill()) return end_of_file;
  return static_cast<unsigned char>(buffer_[position_]);
}

int DelimitedFile::take() {
  const int character = peek();
  if (character != end_of_file) ++position_;
  return character;
}

void DelimitedFile::read_quoted(Cell& cell) {
  for (;;) {
    const int character = take();
    if (character == end_of_file) refuse("a quote does not end");
    if (character != '"') {
      cell.text += static_cast<char>(character);
    } else if (peek() == '"') {
      cell.text += static_cast<char>(take());
    } else {
      return;
    }
  }
}

void DelimitedFile::end_cell(std::vector<Cell>& row, Cell& cell) const {
  if (encoding_ == TextEncoding::Cp1252) {
    cell.text = support::utf8_from_cp1252(cell.text);
  } else if (!support::is_utf8(cell.text)) {
    refuse("a text is not UTF-8");
  }
  row.push_back(std::exchange(cell, {{}, true}));
}

bool DelimitedFile::next(std::vector<Cell>& row) {
  row.clear();
  if (peek() == end_of_file) return false;
  ++row_number_;
  Cell cell{{}, true};
  for (bool quoted = false;;) {
    const int character = take();
    if (character == '\r') {
      if (peek() != '\n') refuse("a carriage return stands alone and without quotes");
      continue;
    }
    if (character == end_of_file || character == '\n' || character == ',') {
      end_cell(row, cell);
      quoted = false;
      if (character != ',') return true;
    } else if (character == '"' && cell.null) {
      cell.null = false;
      quoted = true;
      read_quoted(cell);
    } else {
      if (quoted || character == '"') refuse("a quote stands within a cell");
      cell.null = false;
      cell.text += static_cast<char>(character);
    }
  }
}

}  // namespace transfer
