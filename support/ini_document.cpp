#include "support/ini_document.h"

#include <algorithm>

#include "support/encoding.h"
#include "support/text.h"

namespace support {

namespace {

constexpr std::string_view utf16_mark = "\xFF\xFE";
// The end-of-file mark of old editors (1A) counts as a blank.
constexpr std::string_view blank_characters = " \t\n\v\f\r\x1A";

std::string_view up_to_nul(std::string_view text) { return text.substr(0, text.find('\0')); }

/// Index of the first section or line of that name; the count if there is none.
template <typename Named>
std::size_t index_of(const std::vector<Named>& items, std::string_view name) {
  const std::string wanted = to_lower(strip(name, blank_characters));
  const auto found =
      std::find_if(items.begin(), items.end(), [&](const Named& item) { return item.lower_name == wanted; });
  return static_cast<std::size_t>(found - items.begin());
}

std::string utf8_from_utf16_bytes(std::string_view bytes) {
  std::u16string units;
  units.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const unsigned low = static_cast<unsigned char>(bytes[i]);
    const unsigned high = static_cast<unsigned char>(bytes[i + 1]);
    units += static_cast<char16_t>(low | (high << 8U));
  }
  return utf8_from_utf16(units);
}

std::string utf16_bytes_from_utf8(std::string_view text) {
  std::string bytes;
  for (const char16_t unit : utf16_from_utf8(text)) {
    bytes += static_cast<char>(static_cast<unsigned char>(unit & 0xFFU));
    bytes += static_cast<char>(static_cast<unsigned char>(unit >> 8U));
  }
  return bytes;
}

std::string utf8_text(std::string_view bytes, IniDocument::Encoding encoding) {
  switch (encoding) {
    case IniDocument::Encoding::Utf8:
      return std::string(bytes);
    case IniDocument::Encoding::Utf16:
      return utf8_from_utf16_bytes(bytes);
    case IniDocument::Encoding::Cp1252:
      break;
  }
  return utf8_from_cp1252(bytes);
}

}  // namespace

IniDocument IniDocument::parse(std::string_view bytes, Encoding unmarked) {
  IniDocument document;
  document.encoding_ = unmarked;
  if (bytes.starts_with(utf8_byte_order_mark) || bytes.starts_with(utf16_mark)) {
    document.marked_ = true;
    document.encoding_ = bytes.starts_with(utf8_byte_order_mark) ? Encoding::Utf8 : Encoding::Utf16;
    bytes.remove_prefix(document.encoding_ == Encoding::Utf8 ? utf8_byte_order_mark.size() : utf16_mark.size());
  }
  const std::string text = utf8_text(bytes, document.encoding_);
  document.is_text_ = text.find('\0') == std::string::npos;
  std::string_view rest = text;
  while (!rest.empty()) {
    const auto end = std::min(rest.find_first_of("\r\n"), rest.size());
    document.add_line(strip(rest.substr(0, end), blank_characters));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return document;
}

void IniDocument::add_line(std::string_view text) {
  const auto heading_end = text.starts_with('[') ? text.rfind(']') : std::string_view::npos;
  if (heading_end != std::string_view::npos) {
    const std::string_view name = strip(up_to_nul(text.substr(1, heading_end - 1)), blank_characters);
    sections_.push_back({std::string(name), to_lower(name), {}});
    return;
  }
  const auto equals = text.starts_with(';') ? std::string_view::npos : text.find('=');
  Line line;
  line.name = up_to_nul(strip(text.substr(0, equals), blank_characters));
  line.lower_name = to_lower(line.name);
  if (equals != std::string_view::npos) line.value = up_to_nul(strip(text.substr(equals + 1), blank_characters));
  if (!line.name.empty() || line.value) sections_.back().lines.push_back(std::move(line));
}

std::optional<std::string_view> IniDocument::value(std::string_view section, std::string_view key) const {
  const std::size_t section_index = index_of(sections_, section);
  if (section_index == sections_.size()) return std::nullopt;
  const auto& lines = sections_[section_index].lines;
  const std::size_t line_index = index_of(lines, key);
  if (line_index == lines.size() || !lines[line_index].value) return std::nullopt;
  return *lines[line_index].value;
}

std::vector<std::string_view> IniDocument::keys(std::string_view section) const {
  std::vector<std::string_view> names;
  each_value(section, [&names](std::string_view key, std::string_view /*value*/) { names.push_back(key); });
  return names;
}

void IniDocument::each_value(std::string_view section,
                             const std::function<void(std::string_view key, std::string_view value)>& visitor) const {
  const std::size_t section_index = index_of(sections_, section);
  if (section_index == sections_.size()) return;
  for (const Line& line : sections_[section_index].lines) {
    if (line.value) visitor(line.name, *line.value);
  }
}

std::vector<std::string_view> IniDocument::sections() const {
  std::vector<std::string_view> names;
  for (const Section& section : sections_) {
    if (!section.name.empty()) names.push_back(section.name);
  }
  return names;
}

bool IniDocument::set(std::string_view section, std::string_view key, std::string_view value) {
  const std::string new_value(value.substr(std::min(value.find_first_not_of(blank_characters), value.size())));
  const std::size_t section_index = index_of(sections_, section);
  if (section_index == sections_.size()) {
    const std::string_view name = strip(section, blank_characters);
    sections_.push_back({std::string(name), to_lower(name), {}});
  }
  auto& lines = sections_[section_index].lines;
  const std::size_t line_index = index_of(lines, key);
  if (line_index == lines.size()) {
    const std::string_view name = strip(key, blank_characters);
    lines.push_back({std::string(name), to_lower(name), new_value});
    return true;
  }
  if (lines[line_index].value == new_value) return false;
  lines[line_index].value = new_value;
  return true;
}

std::string IniDocument::encoded(std::string_view text) const {
  switch (encoding_) {
    case Encoding::Utf8:
      return std::string(marked_ ? utf8_byte_order_mark : std::string_view()).append(text);
    case Encoding::Utf16:
      return std::string(utf16_mark) + utf16_bytes_from_utf8(text);
    case Encoding::Cp1252:
      break;
  }
  return cp1252_from_utf8(text);
}

std::string IniDocument::bytes() const {
  constexpr std::string_view line_end = "\r\n";
  std::string text;
  for (const Section& section : sections_) {
    if (&section != &sections_.front()) text.append("[").append(section.name).append("]").append(line_end);
    for (const Line& line : section.lines) {
      text += line.name;
      if (line.value) text.append("=").append(*line.value);
      text += line_end;
    }
  }
  return encoded(text);
}

bool is_writable_ini_entry(std::string_view section, std::string_view key, std::string_view value) {
  constexpr std::string_view line_breaks("\r\n\0", 3);
  for (const std::string_view text : {section, key, value}) {
    if (!fits_cp1252(text) || text.find_first_of(line_breaks) != std::string_view::npos) return false;
  }
  const std::string_view name = strip(key, blank_characters);
  return !name.empty() && name.front() != ';' && name.front() != '[' && name.find('=') == std::string_view::npos &&
         section.find(']') == std::string_view::npos;
}

}  // namespace support
