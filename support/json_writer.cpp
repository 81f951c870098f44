#include "support/json_writer.h"

#include <array>
#include <charconv>
#include <cmath>

#include "support/encoding.h"

namespace support {
namespace {

template <typename Number>
std::string shortest(Number value) {
  if (!std::isfinite(value)) return "null";
  // Written without an exponent as long as all digits are significant.
  const double size = std::fabs(static_cast<double>(value));
  const bool full = size == 0 || (size >= 1e-5 && size < (sizeof(Number) == sizeof(float) ? 1e7 : 1e15));
  std::array<char, 40> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 full ? std::chars_format::fixed : std::chars_format::scientific)
                       .ptr;
  std::string text(digits.data(), end);
  return text == "-0" ? "0" : text;
}

void append_escaped(std::string& result, char character) {
  constexpr std::string_view short_escaped = "\"\\\n\r\t", short_names = "\"\\nrt", digits = "0123456789abcdef";
  const auto code = static_cast<unsigned char>(character);
  if (const std::size_t found = short_escaped.find(character); found != std::string_view::npos) {
    result.append({'\\', short_names[found]});
  } else if (code < 0x20 || code == 0x7F) {
    result.append("\\u00").append({digits[code >> 4], digits[code & 15]});
  } else {
    result += character;
  }
}

}  // namespace

std::string plain_number(double value) { return shortest(value); }
std::string plain_number(float value) { return shortest(value); }

std::string json_text(std::string_view text) {
  std::string json;
  append_json_text(json, text);
  return json;
}

void append_json_text(std::string& json, std::string_view text) {
  std::string mended;
  if (!is_utf8(text)) {
    mended = utf8_from_utf16(utf16_from_utf8(text));
    text = mended;
  }
  json += '"';
  for (const char character : text) append_escaped(json, character);
  json += '"';
}

void JsonWriter::separate() {
  if (comma_) out_ << ',';
  comma_ = false;
}

JsonWriter& JsonWriter::raw(std::string_view value) {
  separate();
  out_ << value;
  comma_ = true;
  return *this;
}

JsonWriter& JsonWriter::begin_object() {
  separate();
  out_ << '{';
  return *this;
}

JsonWriter& JsonWriter::end_object() {
  out_ << '}';
  comma_ = true;
  return *this;
}

JsonWriter& JsonWriter::begin_array() {
  separate();
  out_ << '[';
  return *this;
}

JsonWriter& JsonWriter::end_array() {
  out_ << ']';
  comma_ = true;
  return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
  separate();
  out_ << json_text(name) << ':';
  return *this;
}

JsonWriter& JsonWriter::text(std::string_view value) { return raw(json_text(value)); }
JsonWriter& JsonWriter::integer(std::int64_t value) { return raw(std::to_string(value)); }
JsonWriter& JsonWriter::number(double value) { return raw(plain_number(value)); }
JsonWriter& JsonWriter::number(float value) { return raw(plain_number(value)); }
JsonWriter& JsonWriter::boolean(bool value) { return raw(value ? "true" : "false"); }
JsonWriter& JsonWriter::null() { return raw("null"); }

}  // namespace support
