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
  /// Reads the bytes of a hive file. Raises 321 with the line where they are none; `file_name` is for its message only.
  static HiveDocument parse(std::string_view bytes, std::string_view file_name);

  /// Full key paths begin with the root's name. A key exists where it or one below it is listed.
  bool key_exists(std::string_view key) const;
  /// Adds the key at the end; the keys above it keep the spelling they have. False where it existed.
  bool create_key(std::string_view key);

  /// The value's data as it stands behind "="; nothing where key or value is missing. An empty name is the key's own
  /// value.
  std::optional<std::string_view> data(std::string_view key, std::string_view name) const;
  /// Changes or adds a value. False where the data is as it was, or the key does not exist.
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
  // By lower-case path: the spelling of every key and of those above, and the place of the listed ones.
  std::map<std::string, std::string, std::less<>> spellings_;
  std::map<std::string, std::size_t, std::less<>> places_;
};

/// Text to hive data and back: in quotes, with a backslash before quotes and backslashes.
std::string hive_text_data(std::string_view text);
/// Nothing where the data is no such text.
std::optional<std::string> hive_text(std::string_view data);

/// The bytes of data like "hex(2):25,00", beside its type (3 where none is named); nothing where it is none.
struct HiveBytes {
  std::uint32_t type = 3;
  std::string bytes;
};
std::optional<HiveBytes> hive_bytes(std::string_view data);

/// The number of data like "dword:0000001f".
std::optional<std::uint32_t> hive_number(std::string_view data);

}  // namespace support
