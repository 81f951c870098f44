// The content of a hive file: keys with their values in the order of the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace support {

class HiveDocument {
 public:
  /// Reads the bytes of a hive file. Raises 321, naming the line, if they are not those of a hive file. `file_name`
  /// appears in the message only.
  static HiveDocument parse(std::string_view bytes, std::string_view file_name);

  /// Full key paths begin with the root's name. A key exists if it is listed or a key below it is.
  bool key_exists(std::string_view key) const;
  /// Adds the key at the end; the keys above it keep their spelling. False if it existed.
  bool create_key(std::string_view key);

  /// The value's data, exactly as written behind "="; nothing if the key or the value is missing. An empty name means
  /// the key's own value.
  std::optional<std::string_view> data(std::string_view key, std::string_view name) const;
  /// Changes or adds a value. False if the data was the same already, or the key does not exist.
  bool set_data(std::string_view key, std::string_view name, std::string_view data);

  /// The file: CP1252, lines end with CR LF, one blank line before each key.
  std::string bytes() const;

 private:
  struct Entry {
    std::string name;
    std::string data;  // of a comment: the line
    bool is_comment = false;
  };
  struct Key {
    std::string path;
    std::vector<Entry> entries;
    std::map<std::string, std::size_t, std::less<>> places;  // of the values, by lower-case name
  };
  class Reader;

  Key& list_key(std::string_view key);
  static void set_entry(Key& key, std::string_view name, std::string_view data);

  std::vector<std::string> opening_comments_;
  std::vector<Key> keys_;
  // By lower-case path: the spelling of every listed key and of the keys above it, and the places of the listed keys.
  std::map<std::string, std::string, std::less<>> spellings_;
  std::map<std::string, std::size_t, std::less<>> places_;
};

/// A text as hive data: in quotes, with a backslash before each quote and backslash.
std::string hive_text_data(std::string_view text);
/// The text of such data; nothing if the data is no such text.
std::optional<std::string> hive_text(std::string_view data);

/// The bytes and the type of data like "hex(2):25,00" (type 3 if none is named); nothing if the data is not of this
/// form.
struct HiveBytes {
  std::uint32_t type = 3;
  std::string bytes;
};
std::optional<HiveBytes> hive_bytes(std::string_view data);

/// The number of data like "dword:0000001f".
std::optional<std::uint32_t> hive_number(std::string_view data);

}  // namespace support
