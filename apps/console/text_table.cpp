#include "apps/console/text_table.h"

#include <algorithm>

#include "support/encoding.h"

namespace console {
namespace {

constexpr std::string_view gap = "  ";

/// True for the control characters of ASCII and those behind it: a terminal obeys both.
bool is_control(char16_t character) { return character < 0x20 || (character >= 0x7F && character <= 0x9F); }

std::u16string escape(char16_t control) {
  if (control == u'\n') return u"\\n";
  if (control == u'\r') return u"\\r";
  if (control == u'\t') return u"\\t";
  constexpr std::u16string_view digits = u"0123456789abcdef";
  return {u'\\', u'u', u'0', u'0', digits[control >> 4U], digits[control & 15U]};
}

}  // namespace

std::string one_line(std::string_view text) {
  std::u16string line;
  for (const char16_t character : support::utf16_from_utf8(text)) {
    is_control(character) ? line.append(escape(character)) : line.append(1, character);
  }
  return support::utf8_from_utf16(line);
}

void TextTable::add_column(std::string_view title, Align align) {
  std::string shown = one_line(title);
  const std::size_t width = support::character_count(shown);
  columns_.push_back({std::move(shown), align, width});
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
