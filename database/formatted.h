// Numbers in texts that no user's locale touches: statements, file names, summaries.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

namespace database {

/// The numbers by a pattern of printf.
template <typename... Numbers>
std::string formatted(const char* pattern, Numbers... numbers) {
  const int length = std::snprintf(nullptr, 0, pattern, numbers...);
  std::string text(static_cast<std::size_t>(length), '\0');
  std::snprintf(text.data(), text.size() + 1, pattern, numbers...);
  return text;
}

}  // namespace database
