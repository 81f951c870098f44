// An ini file as a document: sections, keys and comments in their order, read and written as the platform's profile
// calls do it. Text is UTF-8 here. The file is CP1252, unless its byte order mark says UTF-8 or UTF-16 (little endian).
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace support {

class IniDocument {
 public:
  enum class Encoding { Cp1252, Utf8, Utf16 };

  /// Reads any bytes. A line that is no section, comment or "key=value" is kept but holds no value. A name or value
  /// ends at a NUL. `unmarked` is the encoding of a file without a byte order mark.
  static IniDocument parse(std::string_view bytes, Encoding unmarked = Encoding::Cp1252);

  /// False if the text holds a NUL: writing such a file back would lose what follows the NUL.
  bool is_text() const noexcept { return is_text_; }

  /// The value as written, with its quotes. Names are compared without outer blanks and without regard to case; the
  /// first section and the first key of a name count. Nothing if the value is missing or has no "=".
  std::optional<std::string_view> value(std::string_view section, std::string_view key) const;
  /// Key names of the first section of that name, in order; empty if there is none.
  std::vector<std::string_view> keys(std::string_view section) const;
  /// Calls `visitor(key, value)` for the keys of that section, including repeated ones.
  void each_value(std::string_view section,
                  const std::function<void(std::string_view key, std::string_view value)>& visitor) const;
  /// Section names in order, including repeated ones.
  std::vector<std::string_view> sections() const;

  /// Changes or adds one value; an existing key keeps its place and spelling. False if the value was the same already.
  bool set(std::string_view section, std::string_view key, std::string_view value);

  /// The file: lines end with CR LF, there are no blank lines and no blanks around "=", comments stay.
  std::string bytes() const;

 private:
  struct Line {
    std::string name;  // a comment or any other line without "=" stands here as it is
    std::string lower_name;
    std::optional<std::string> value;
  };
  struct Section {
    std::string name;
    std::string lower_name;
    std::vector<Line> lines;
  };

  void add_line(std::string_view text);
  std::string encoded(std::string_view text) const;

  Encoding encoding_ = Encoding::Cp1252;
  bool marked_ = false;
  bool is_text_ = true;
  // The first one has no heading; it holds the lines before the first heading.
  std::vector<Section> sections_ = {{}};
};

/// True if an entry reads back as it was written: it fits CP1252, holds no line break or NUL, and its names do not look
/// like syntax ("=" in a key, "]" in a section, a key that begins like a comment or heading).
bool is_writable_ini_entry(std::string_view section, std::string_view key, std::string_view value);

/// An ini file that is larger is taken for damaged: it reads as a missing file and is never written.
constexpr std::size_t most_ini_bytes = std::size_t{4} << 20U;

}  // namespace support
