#include "apps/console/text_table.h"

#include <algorithm>

#include "support/encoding.h"

namespace console {
namespace {

constexpr std::string_view gap = "  ";

}  // namespace

std::string one_line(std::string_view text) {
  std::string line;
  bool blank_pending = false;
  for (const char character : text) {
    const auto code = static_cast<unsigned char>(character);
    const bool control = code < 0x20 || code == 0x7F;
    if (control) {
      blank_pending = true;
      continue;
    }
    if (blank_pending && !line.empty()) line += ' ';
    blank_pending = false;
    line += character;
  }
  return line;
}

void TextTable::add_column(std::string_view title, Align align) {
  columns_.push_back({std::string(title), align, support::character_count(title)});
}

void TextTable::add_row(std::vector<std::string> cells) {
  for (std::size_t i = 0; i < cells.size() && i < columns_.size(); ++i) {
    cells[i] = one_line(cells[i]);
    columns_[i].width = std::max(columns_[i].width, support::character_count(cells[i]));
  }
  rows_.push_back(std::move(cells));
}

void TextTable::write_row(std::ostream& out, const std::vector<std::string>& cells) const {
  std::string line;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const std::string padding(columns_[i].width - support::character_count(cells[i]), ' ');
    if (i > 0) line += gap;
    line += columns_[i].align == Align::Right ? padding + cells[i] : cells[i] + padding;
  }
  const std::size_t last = line.find_last_not_of(' ');
  out << line.substr(0, last == std::string::npos ? 0 : last + 1) << '\n';
}

void TextTable::write(std::ostream& out) const {
  std::vector<std::string> titles, rules;
  for (const Column& column : columns_) {
    titles.push_back(column.title);
    rules.emplace_back(column.width, '-');
  }
  write_row(out, titles);
  write_row(out, rules);
  for (const auto& row : rows_) write_row(out, row);
}

}  // namespace console
