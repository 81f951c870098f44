// Texts trimmed, split and replaced. None raises.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// A decimal digit, whatever the locale.
constexpr bool is_digit(char character) noexcept { return character >= '0' && character <= '9'; }

/// Without outer blanks and characters below 20; empty where the text begins with NUL.
std::string trim(std::string_view text);

/// Without these characters at both ends.
std::string_view strip(std::string_view text, std::string_view characters) noexcept;

/// Splits at `delimiter` into `pieces` and returns the upper index (count less one). An empty text returns -1 and
/// leaves `pieces` as it was; a trailing delimiter yields no empty last piece.
std::int16_t Split(std::string_view text, std::vector<std::string>& pieces, std::string_view delimiter);

/// Replaces `wanted`, ignoring case (umlauts included), searching again from the first character after each replacement
/// until none is left, so runs collapse; linear in the text. Returns the number of replacements, at most 32767. An
/// empty `wanted`, and a replacement that holds `wanted` itself, are refused: 0, text unchanged. Never raises.
std::int16_t replace(std::string& text, std::string_view wanted, std::string_view replacement);

}  // namespace support
