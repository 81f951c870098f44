// Writes JSON as it goes: commas, quotes and escapes are the writer's business, the order of the calls the caller's.
// Texts are UTF-8; bytes that are none become U+FFFD, so that the output is always valid.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

namespace support {

class JsonWriter {
 public:
  explicit JsonWriter(std::ostream& out) : out_(out) {}

  JsonWriter& begin_object();
  JsonWriter& end_object();
  JsonWriter& begin_array();
  JsonWriter& end_array();
  JsonWriter& key(std::string_view name);

  JsonWriter& text(std::string_view value);
  JsonWriter& integer(std::int64_t value);
  /// The shortest text that reads back as the same number, without decimals for a whole one; null for no number.
  JsonWriter& number(double value);
  JsonWriter& number(float value);
  JsonWriter& boolean(bool value);
  JsonWriter& null();

 private:
  void separate();
  JsonWriter& raw(std::string_view value);

  std::ostream& out_;
  bool comma_ = false;
};

/// A text with its quotes, escaped.
std::string json_text(std::string_view text);
/// The same behind what `json` holds.
void append_json_text(std::string& json, std::string_view text);

/// The shortest text that reads back as the same number, with "." whatever the locale; "null" for no number.
std::string plain_number(double value);
std::string plain_number(float value);

}  // namespace support
