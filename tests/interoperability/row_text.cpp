#include "tests/interoperability/row_text.h"

#include <array>
#include <charconv>

namespace interoperability {

std::string number_text(double number) {
  std::array<char, 40> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number);
  return {text.data(), end.ptr};
}

std::string quoted_text(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '\n' || c == '\r') {
      quoted += c == '\n' ? "\\n" : "\\r";
    } else {
      if (c == '"' || c == '\\') quoted += '\\';
      quoted += c;
    }
  }
  return quoted + "\"";
}

}  // namespace interoperability
