// How long a property test runs, and with which random sequences: in each run the same, unless told otherwise.
#pragma once

#include <chrono>
#include <cstdlib>

namespace engine::test {

inline unsigned number_in_environment(const char* name, unsigned otherwise) {
  const char* const text = std::getenv(name);
  return text != nullptr ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

/// Calls check(seed) with PROPERTY_SEED (default 1) and the following seeds, at least once, for PROPERTY_SECONDS. Ends
/// when it returns false. Returns how often it returned true.
template <typename Check>
unsigned try_seeds(unsigned seconds, Check&& check) {
  const auto end =
      std::chrono::steady_clock::now() + std::chrono::seconds{number_in_environment("PROPERTY_SECONDS", seconds)};
  unsigned held = 0;
  for (unsigned seed = number_in_environment("PROPERTY_SEED", 1); check(seed); ++seed) {
    ++held;
    if (std::chrono::steady_clock::now() >= end) break;
  }
  return held;
}

}  // namespace engine::test
