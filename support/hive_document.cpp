#include "support/hive_document.h"

#include <fmt/core.h>

#include <algorithm>

#include "support/encoding.h"
#include "support/error.h"
#include "support/text.h"

namespace support {

namespace {

constexpr std::string_view file_header = "REGEDIT4";
constexpr std::string_view line_end = "\r\n";
constexpr int invalid_file_format = 321;
constexpr std::ptrdiff_t most_levels = 32;
constexpr std::string_view blanks = " \t\r";

/// Key paths without empty components.
std::string normal_path(std::string_view path) {
  std::string normal;
  while (!path.empty()) {
    const auto end = std::min(path.find('\\'), path.size());
    if (end > 0) normal.append(normal.empty() ? "" : "\\").append(path.substr(0, end));
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return normal;
}

std::string path_above(const std::string& path) {
  const auto end = path.rfind('\\');
  return end == std::string::npos ? std::string() : path.substr(0, end);
}

/// Length of the quoted text at the front, including the quotes; 0 if there is none.
std::size_t quoted_length(std::string_view text) {
  if (!text.starts_with('"')) return 0;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] == '"') return i + 1;
    if (text[i] == '\\' && (++i == text.size() || (text[i] != '\\' && text[i] != '"'))) return 0;
  }
  return 0;
}

std::string unquoted(std::string_view quoted) {
  std::string text;
  for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
    if (quoted[i] == '\\') ++i;
    text += quoted[i];
  }
  return text;
}

std::optional<std::uint32_t> hex_number(std::string_view digits, std::size_t most_digits) {
  return digits.size() <= most_digits ? parse_whole<std::uint32_t>(digits, 16) : std::nullopt;
}

bool is_known_data(std::string_view data) { return hive_text(data) || hive_number(data) || hive_bytes(data); }

}  // namespace

/// Reads line by line. Data in bytes may go on over several lines; all but the last of them end with a backslash.
class HiveDocument::Reader {
 public:
  Reader(std::string_view bytes, std::string_view file_name) : text_(utf8_from_cp1252(bytes)), file_name_(file_name) {}

  HiveDocument read() {
    rest_ = text_;
    if (!next_line() || line_ != file_header) fail("the first line is not REGEDIT4");
    while (next_line()) {
      if (line_.empty()) continue;
      if (line_.find('\0') != std::string_view::npos) fail("unreadable line");
      if (line_.starts_with(';')) {
        read_comment();
      } else if (line_.starts_with('[')) {
        read_key();
      } else {
        read_value();
      }
    }
    return std::move(document_);
  }

 private:
  bool next_line() {
    if (rest_.empty()) return false;
    const auto end = std::min(rest_.find('\n'), rest_.size());
    line_ = strip(rest_.substr(0, end), blanks);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    ++line_number_;
    return true;
  }

  [[noreturn]] void fail(const std::string& what) const {
    throw RuntimeError(invalid_file_format,
                       fmt::format("{}, line {}: {}", file_name_, std::max<std::size_t>(line_number_, 1), what));
  }

  void read_comment() {
    if (has_key_) {
      document_.keys_[key_].entries.push_back({{}, std::string(line_), true});
    } else {
      document_.opening_comments_.emplace_back(line_);
    }
  }

  void read_key() {
    const std::string path = normal_path(line_.substr(1, line_.size() - 2));
    if (!line_.ends_with(']') || path.empty() || path.front() == '-') fail("no key");
    if (std::count(path.begin(), path.end(), '\\') > most_levels) fail("a key with too many levels");
    key_ = static_cast<std::size_t>(&document_.list_key(path) - document_.keys_.data());
    has_key_ = true;
  }

  void read_value() {
    const std::size_t name_length = line_.starts_with('@') ? 1 : quoted_length(line_);
    const std::string_view behind_name = strip(line_.substr(name_length), blanks);
    if (!has_key_ || name_length == 0 || !behind_name.starts_with('=')) fail("unreadable line");
    const std::string name = line_.front() == '@' ? std::string() : unquoted(line_.substr(0, name_length));
    std::string data(strip(behind_name.substr(1), blanks));
    while (data.starts_with("hex") && data.ends_with('\\')) {
      if (!next_line()) fail("the file ends within a value");
      data.append(line_end).append("  ").append(line_);
    }
    if (!is_known_data(data)) fail("unreadable value");
    document_.set_entry(document_.keys_[key_], name, data);
  }

  std::string text_;
  std::string file_name_;
  std::string_view rest_;
  std::string_view line_;
  std::size_t line_number_ = 0;
  std::size_t key_ = 0;
  bool has_key_ = false;
  HiveDocument document_;
};

HiveDocument HiveDocument::parse(std::string_view bytes, std::string_view file_name) {
  return Reader(bytes, file_name).read();
}

bool HiveDocument::key_exists(std::string_view key) const { return spellings_.contains(to_lower(normal_path(key))); }

bool HiveDocument::create_key(std::string_view key) {
  if (key_exists(key)) return false;
  list_key(normal_path(key));
  return true;
}

std::optional<std::string_view> HiveDocument::data(std::string_view key, std::string_view name) const {
  const auto place = places_.find(to_lower(normal_path(key)));
  if (place == places_.end()) return std::nullopt;
  const Key& found = keys_[place->second];
  const auto value = found.places.find(to_lower(name));
  if (value == found.places.end()) return std::nullopt;
  return found.entries[value->second].data;
}

bool HiveDocument::set_data(std::string_view key, std::string_view name, std::string_view new_data) {
  if (!key_exists(key) || data(key, name) == new_data) return false;
  set_entry(list_key(normal_path(key)), name, new_data);
  return true;
}

void HiveDocument::set_entry(Key& key, std::string_view name, std::string_view data) {
  const auto [place, is_new] = key.places.try_emplace(to_lower(name), key.entries.size());
  if (is_new) {
    key.entries.push_back({std::string(name), std::string(data)});
  } else {
    key.entries[place->second].data = data;
  }
}

/// The key's section. A missing one is added at the end; the keys above it keep the spelling that is known for them.
HiveDocument::Key& HiveDocument::list_key(std::string_view key) {
  const std::string lower_path = to_lower(key);
  const auto place = places_.find(lower_path);
  if (place != places_.end()) return keys_[place->second];
  // A path is as long in lower case as it is spelled, so a part of one is the same part of the other.
  std::string path(key);
  for (std::string above = lower_path; !above.empty(); above = path_above(above)) {
    const auto known = spellings_.find(above);
    if (known != spellings_.end()) {
      path.replace(0, above.size(), known->second);
      break;
    }
  }
  for (std::string above = lower_path; !above.empty(); above = path_above(above)) {
    spellings_.try_emplace(above, path.substr(0, above.size()));
  }
  places_.emplace(lower_path, keys_.size());
  keys_.push_back({path, {}, {}});
  return keys_.back();
}

std::string HiveDocument::bytes() const {
  std::string text(file_header);
  text += line_end;
  for (const std::string& comment : opening_comments_) text.append(comment).append(line_end);
  for (const Key& key : keys_) {
    text.append(line_end).append("[").append(key.path).append("]").append(line_end);
    for (const Entry& entry : key.entries) {
      if (!entry.is_comment) text.append(entry.name.empty() ? "@" : hive_text_data(entry.name)).append("=");
      text.append(entry.data).append(line_end);
    }
  }
  return cp1252_from_utf8(text.append(line_end));
}

std::string hive_text_data(std::string_view text) {
  std::string data = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') data += '\\';
    data += character;
  }
  return data += '"';
}

std::optional<std::string> hive_text(std::string_view data) {
  const std::size_t length = quoted_length(data);
  if (length == 0 || length != data.size()) return std::nullopt;
  return unquoted(data);
}

std::optional<HiveBytes> hive_bytes(std::string_view data) {
  const auto colon = data.find(':');
  if (!data.starts_with("hex") || colon == std::string_view::npos) return std::nullopt;
  HiveBytes result;
  std::string_view type = data.substr(3, colon - 3);
  if (!type.empty()) {
    if (type.size() < 3 || !type.starts_with('(') || !type.ends_with(')')) return std::nullopt;
    const auto number = hex_number(type.substr(1, type.size() - 2), 8);
    if (!number) return std::nullopt;
    result.type = *number;
  }
  std::string digits(data.substr(colon + 1));
  std::erase_if(digits,
                [](char character) { return std::string_view("\\\r\n\t ").find(character) != std::string_view::npos; });
  for (std::string_view rest = digits; !rest.empty();) {
    const auto end = std::min(rest.find(','), rest.size());
    const auto byte = hex_number(rest.substr(0, end), 2);
    if (!byte) return std::nullopt;
    result.bytes += static_cast<char>(static_cast<unsigned char>(*byte));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return result;
}

std::optional<std::uint32_t> hive_number(std::string_view data) {
  constexpr std::string_view prefix_text = "dword:";
  if (!data.starts_with(prefix_text)) return std::nullopt;
  return hex_number(data.substr(prefix_text.size()), 8);
}

}  // namespace support
