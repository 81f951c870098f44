// String replacement (module "harbinox").
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace support {

/// Replaces `wanted`, ignoring case (umlauts included), searching again from the first character after each replacement
/// until none is left, so runs collapse; linear in the text. Returns the number of replacements, at most 32767. An
/// empty `wanted`, and a replacement that holds `wanted` itself, are refused: 0, text unchanged. Never raises.
std::int16_t replace(std::string& text, std::string_view wanted, std::string_view replacement);

}  // namespace support
