// Numbers in texts that no user's locale touches: statements, file names, summaries.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <string>

namespace database {

/// The numbers by a pattern of printf, up to 399 characters.
template <typename... Numbers>
std::string formatted(const char* pattern, Numbers... numbers) {
  std::array<char, 400> text{};
  const int length = std::snprintf(text.data(), text.size(), pattern, numbers...);
  return {text.data(), static_cast<std::size_t>(length)};
}

}  // namespace database
