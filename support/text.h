// Texts trimmed, split and replaced. None raises.
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <vector>

namespace support {

/// A decimal digit, whatever the locale.
constexpr bool is_digit(char character) noexcept { return character >= '0' && character <= '9'; }

/// The number that the whole text is, as std::from_chars reads it: no blanks, no "+", "." whatever the locale; `base`
/// is for whole numbers. Nothing for anything else, for an empty text, and for what `Number` cannot hold.
template <typename Number>
std::optional<Number> parse_whole(std::string_view text, [[maybe_unused]] int base = 10) noexcept {
  Number number{};
  const char* const end = text.data() + text.size();
  std::from_chars_result result{};
  if constexpr (std::is_floating_point_v<Number>) {
    result = std::from_chars(text.data(), end, number);
  } else {
    result = std::from_chars(text.data(), end, number, base);
  }
  return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

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
