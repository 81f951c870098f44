// Writes JSON piece by piece. The writer adds commas, quotes and escapes; the caller is responsible for the order of
// the calls. Texts are UTF-8; malformed bytes become U+FFFD, so that the output is always valid.
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
  /// The shortest text that reads back as the same number, without decimals for a whole one; null for NaN and
  /// infinities.
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
/// Appends the same to `json`.
void append_json_text(std::string& json, std::string_view text);

/// The shortest text that reads back as the same number, with "." in every locale; "null" for NaN and infinities.
std::string plain_number(double value);
std::string plain_number(float value);

}  // namespace support
