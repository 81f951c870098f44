// String replacement (module "harbinox").
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace support {

/// Replaces `wanted`, ignoring case, searching again from the first character after each replacement until none is left;
/// returns the number of replacements. A replacement that holds `wanted` itself is refused: 0, text unchanged.
std::int16_t replace(std::string& text, std::string_view wanted, std::string_view replacement);

}  // namespace support
